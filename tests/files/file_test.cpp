// Operations on files, in both builds.
#include <gmock/gmock.h>
#include <jw32/files.h>

#include "support/scratch_drives.h"
#include "support/triple.h"

namespace {

class File : public ScratchDrives {
  protected:
    // A file on C: with 100 bytes, open.
    void* open(DWORD access = GENERIC_READ | GENERIC_WRITE) {
        const std::string path = c("hundred");
        write(path, std::string(100, 'h'));
        handle_ = Jw32FileOpen(path.c_str(), access, OPEN_EXISTING, 0,
                               FILE_SHARE_READ | FILE_SHARE_WRITE);
        EXPECT_NE(handle_, INVALID_HANDLE_VALUE);
        return handle_;
    }
    ~File() override { CloseHandle(handle_); }

    Triple triple;

  private:
    void* handle_ = INVALID_HANDLE_VALUE;
};

TEST_F(File, ReadsTheWholeCountOrSaysNo) {
    void* const file = open();
    char target[100] = "";
    EXPECT_EQ(Jw32FileSeek(file, 60, &triple.code, triple.text, triple.size), 1);
    EXPECT_TRUE(triple.isClear()) << triple;
    triple = {};
    EXPECT_EQ(Jw32FileRead(file, target, 100, &triple.code, triple.text, triple.size), 0);
    EXPECT_TRUE(triple.isClear()) << triple;
    EXPECT_EQ(std::string(target, 41), std::string(40, 'h') + '\0');
    EXPECT_EQ(Jw32FileRead(file, target, 1, &triple.code), 0);
    EXPECT_EQ(triple.code, 0u);
    EXPECT_EQ(Jw32FileRead(file, target, 0), 1);
    EXPECT_EQ(Jw32FileSeek(file, 0), 1);
    EXPECT_EQ(Jw32FileRead(file, target, 100), 1);
}

TEST_F(File, SeeksBehindItsEndButNotBeforeItsBeginning) {
    void* const file = open();
    EXPECT_EQ(Jw32FileSeek(file, 200), 1);
    EXPECT_EQ(Jw32FileWrite(file, "x", 1), 1);
    EXPECT_EQ(Jw32FileSize(file), 201);
    EXPECT_EQ(Jw32FileSeek(file, 10), 1);
    EXPECT_EQ(Jw32FileSeekEnd(file), 1);
    EXPECT_EQ(Jw32FileWrite(file, "", 0), 1);
    EXPECT_EQ(Jw32FileWrite(file, "yz", 2), 1);
    EXPECT_EQ(Jw32FileSize(file), 203);
    EXPECT_EQ(Jw32FileSeek(file, -1, &triple.code, triple.text, triple.size), 0);
    EXPECT_TRUE(triple.tells(ERROR_NEGATIVE_SEEK)) << triple;
}

TEST_F(File, TellsItsSizeWhileOthersUseIt) {
    open();
    EXPECT_EQ(Jw32FileSize(c("hundred").c_str(), &triple.code, triple.text, triple.size), 100);
    EXPECT_TRUE(triple.isClear()) << triple;
    EXPECT_EQ(Jw32FileSize(c("missing").c_str(), &triple.code, triple.text, triple.size), -1);
    EXPECT_TRUE(triple.tells(ERROR_FILE_NOT_FOUND)) << triple;
}

TEST_F(File, ReportsAHandleThatIsNone) {
    const auto none = INVALID_HANDLE_VALUE;
    char byte = 0;
    EXPECT_EQ(Jw32FileRead(none, &byte, 1, &triple.code, triple.text, triple.size), 0);
    EXPECT_TRUE(triple.tells(ERROR_INVALID_HANDLE)) << triple;
    EXPECT_EQ(Jw32FileSize(none, &triple.code, triple.text, triple.size), -1);
    EXPECT_TRUE(triple.tells(ERROR_INVALID_HANDLE)) << triple;
}

TEST_F(File, IsCreatedOrOpenedByTheDispositionAlone) {
    int files = 0;
    for (const auto operation : {Jw32FileCreate, Jw32FileOpen}) {
        const std::string path = c("new" + std::to_string(++files));
        EXPECT_EQ(operation(path.c_str(), GENERIC_READ, OPEN_EXISTING, 0, 0, &triple.code,
                            triple.text, triple.size),
                  INVALID_HANDLE_VALUE);
        EXPECT_TRUE(triple.tells(ERROR_FILE_NOT_FOUND)) << triple;
        void* const file = operation(path.c_str(), GENERIC_WRITE, CREATE_NEW, FILE_ATTRIBUTE_HIDDEN,
                                     0, &triple.code, triple.text, triple.size);
        EXPECT_NE(file, INVALID_HANDLE_VALUE);
        EXPECT_TRUE(triple.isClear()) << triple;
        EXPECT_TRUE(attributes(path) & FILE_ATTRIBUTE_HIDDEN);
        CloseHandle(file);
    }
}

TEST_F(File, CannotBeCreatedWithoutAName) {
    for (const char* const name : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_EQ(Jw32FileCreate(name, GENERIC_WRITE, CREATE_ALWAYS, 0, 0, &triple.code,
                                 triple.text, triple.size),
                  INVALID_HANDLE_VALUE);
        EXPECT_TRUE(triple.tells(ERROR_PATH_NOT_FOUND)) << triple;
    }
}

TEST_F(File, IsFoundWhereItIsNoDirectory) {
    write(c("file"), "");
    struct {
        std::string name;
        int found;
        DWORD code;
    } const rows[] = {
        {c("file"), 1, 0},
        {c("fi*"), 1, 0},
        {c(), 0, 0},
        {"", 0, 0},
        {c("missing"), 0, ERROR_FILE_NOT_FOUND},
    };
    for (const auto& row : rows) {
        triple = {};
        EXPECT_EQ(Jw32FileFind(row.name.c_str(), &triple.code, triple.text, triple.size),
                  row.found);
        EXPECT_TRUE(row.code ? triple.tells(row.code) : triple.isClear()) << row.name << triple;
    }
    EXPECT_EQ(Jw32FileFind(nullptr, &triple.code), 0);
}

TEST_F(File, LosesItsOtherAttributesWhenItGetsHidden) {
    const std::string path = c("file");
    write(path, "");
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(Jw32FileHide(path.c_str(), &triple.code, triple.text, triple.size), 1);
    EXPECT_TRUE(triple.isClear()) << triple;
    EXPECT_EQ(attributes(path) & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY),
              DWORD{FILE_ATTRIBUTE_HIDDEN});
}

TEST_F(File, KeepsItsAttributesWhenItIsHiddenAlready) {
    const std::string path = c("file");
    const DWORD both = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY;
    write(path, "");
    SetFileAttributesA(path.c_str(), both);
    EXPECT_EQ(Jw32FileHide(path.c_str()), 1);
    EXPECT_EQ(attributes(path) & both, both);
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(Jw32FileHide(c("missing").c_str(), &triple.code, triple.text, triple.size), 0);
    EXPECT_TRUE(triple.tells(ERROR_FILE_NOT_FOUND)) << triple;
    for (const char* const name : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_EQ(Jw32FileHide(name, &triple.code, triple.text, triple.size), 0);
        EXPECT_TRUE(triple.isClear()) << triple;
    }
}

}  // namespace
