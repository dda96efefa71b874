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
    EXPECT_EQ(triple.of(Jw32FileSeek, file, 60), 1);
    EXPECT_TRUE(triple.isClear()) << triple;
    EXPECT_EQ(triple.of(Jw32FileRead, file, target, 100), 0);
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
    EXPECT_EQ(triple.of(Jw32FileSeek, file, -1), 0);
    EXPECT_TRUE(triple.tells(ERROR_NEGATIVE_SEEK)) << triple;
}

TEST_F(File, TellsItsSizeWhileOthersUseIt) {
    open();
    EXPECT_EQ(Jw32FileSize(c("hundred").c_str(), &triple.code, triple.text, triple.size), 100);
    EXPECT_TRUE(triple.isClear()) << triple;
    EXPECT_EQ(Jw32FileSize(c("missing").c_str(), &triple.code, triple.text, triple.size), -1);
    EXPECT_TRUE(triple.tells(ERROR_FILE_NOT_FOUND)) << triple;
}

TEST_F(File, IsCreatedOrOpenedByTheDispositionAlone) {
    int files = 0;
    for (const auto operation : {Jw32FileCreate, Jw32FileOpen}) {
        const std::string path = c("new" + std::to_string(++files));
        EXPECT_EQ(triple.of(operation, path.c_str(), GENERIC_READ, OPEN_EXISTING, 0, 0),
                  INVALID_HANDLE_VALUE);
        EXPECT_TRUE(triple.tells(ERROR_FILE_NOT_FOUND)) << triple;
        void* const file =
            triple.of(operation, path.c_str(), GENERIC_WRITE, CREATE_NEW, FILE_ATTRIBUTE_HIDDEN, 0);
        EXPECT_NE(file, INVALID_HANDLE_VALUE);
        EXPECT_TRUE(triple.isClear()) << triple;
        EXPECT_TRUE(attributes(path) & FILE_ATTRIBUTE_HIDDEN);
        CloseHandle(file);
    }
}

TEST_F(File, CannotBeCreatedWithoutAName) {
    for (const char* const name : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_EQ(triple.of(Jw32FileCreate, name, GENERIC_WRITE, CREATE_ALWAYS, 0, 0),
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
        EXPECT_EQ(triple.of(Jw32FileFind, row.name.c_str()), row.found);
        EXPECT_TRUE(row.code ? triple.tells(row.code) : triple.isClear()) << row.name << triple;
    }
    EXPECT_EQ(Jw32FileFind(nullptr, &triple.code), 0);
}

TEST_F(File, LosesItsOtherAttributesWhenItGetsHidden) {
    const std::string path = c("file");
    const DWORD readOnly = FILE_ATTRIBUTE_READONLY, both = FILE_ATTRIBUTE_HIDDEN | readOnly;
    write(path, "");
    for (const auto& [set, kept] :
         {std::pair{readOnly, DWORD{FILE_ATTRIBUTE_HIDDEN}}, {both, both}}) {
        SetFileAttributesA(path.c_str(), set);
        EXPECT_EQ(triple.of(Jw32FileHide, path.c_str()), 1);
        EXPECT_TRUE(triple.isClear()) << triple;
        EXPECT_EQ(attributes(path) & both, kept);
    }
    EXPECT_EQ(triple.of(Jw32FileHide, c("missing").c_str()), 0);
    EXPECT_TRUE(triple.tells(ERROR_FILE_NOT_FOUND)) << triple;
    for (const char* const name : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_EQ(triple.of(Jw32FileHide, name), 0);
        EXPECT_TRUE(triple.isClear()) << triple;
    }
}

}  // namespace
