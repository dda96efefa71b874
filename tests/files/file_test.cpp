// Operations on files, in both builds.
#include <jw32/files.h>

#include "support/scratch_drives.h"
#include "support/triple.h"

namespace {

class File : public ScratchDrives {
  protected:
    File() { EXPECT_TRUE(Jw32FileWrite(open, std::string(100, 'h').data(), 100)); }
    ~File() override { CloseHandle(open); }

    const std::string path = c("file");
    const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE;
    void* open = Jw32FileOpen(path.c_str(), GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS, 0, share);
};

TEST_F(File, IsReadInTheWholeCountOrNot) {
    char target[100] = "";
    EXPECT_EQ(reported(Jw32FileSeek, open, 60), Report(1));
    EXPECT_EQ(reported(Jw32FileRead, open, target, 100), Report(0)) << "40 are left";
    EXPECT_EQ(std::string(target, 41), std::string(40, 'h') + '\0');
    EXPECT_EQ(reported(Jw32FileRead, open, target, 1), Report(0)) << "at the end";
    EXPECT_EQ(reported(Jw32FileRead, open, target, 0), Report(1));
    EXPECT_EQ(reported(Jw32FileSeek, open, 0), Report(1));
    EXPECT_EQ(reported(Jw32FileRead, open, target, 100), Report(1));
}

TEST_F(File, IsWrittenBehindItsEndButNotBeforeItsBeginning) {
    EXPECT_EQ(Jw32FileSeek(open, 200), 1);
    EXPECT_EQ(reported(Jw32FileWrite, open, "x", 1), Report(1));
    EXPECT_EQ(Jw32FileSeek(open, 10), 1);
    EXPECT_EQ(reported(Jw32FileSeekEnd, open), Report(1));
    EXPECT_EQ(Jw32FileWrite(open, "", 0), 1);
    EXPECT_EQ(Jw32FileWrite(open, "yz", 2), 1);
    EXPECT_EQ(Jw32FileSize(open), 203);
    EXPECT_EQ(reported(Jw32FileSeek, open, -1), Report(0, ERROR_NEGATIVE_SEEK));
}

TEST_F(File, TellsItsSizeWhileOthersUseIt) {
    const auto size = [](const std::string& name) {
        return reported([&](auto... t) { return Jw32FileSize(name.c_str(), t...); });
    };
    EXPECT_EQ(size(path), Report(100));
    EXPECT_EQ(size(c("missing")), Report(-1, ERROR_FILE_NOT_FOUND));
}

TEST_F(File, IsCreatedOrOpenedByTheDispositionAlone) {
    const auto opened = [](auto name, DWORD access, DWORD disposition) {
        return reported(Jw32FileOpen, name, access, disposition, FILE_ATTRIBUTE_HIDDEN, 0);
    };
    const auto none = INVALID_HANDLE_VALUE;
    EXPECT_EQ(opened(c("new"), GENERIC_READ, OPEN_EXISTING), Report(none, ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(opened(nullptr, GENERIC_WRITE, CREATE_NEW), Report(none, ERROR_PATH_NOT_FOUND));
    EXPECT_EQ(opened("", GENERIC_WRITE, CREATE_NEW), Report(none, ERROR_PATH_NOT_FOUND));
    EXPECT_TRUE(CloseHandle(opened(c("new"), GENERIC_WRITE, CREATE_NEW).result));
    EXPECT_TRUE(attributes(c("new")) & FILE_ATTRIBUTE_HIDDEN);
}

TEST_F(File, IsFoundWhereItIsNoDirectory) {
    EXPECT_EQ(reported(Jw32FileFind, path), Report(1));
    EXPECT_EQ(reported(Jw32FileFind, c("fi*")), Report(1));
    EXPECT_EQ(reported(Jw32FileFind, c()), Report(0)) << "a directory";
    EXPECT_EQ(reported(Jw32FileFind, path + "\\"), Report(0, ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(reported(Jw32FileFind, ""), Report(0));
    EXPECT_EQ(reported(Jw32FileFind, nullptr), Report(0));
    EXPECT_EQ(reported(Jw32FileFind, c("missing")), Report(0, ERROR_FILE_NOT_FOUND));
}

TEST_F(File, LosesItsOtherAttributesWhenItGetsHidden) {
    const DWORD hidden = FILE_ATTRIBUTE_HIDDEN, both = hidden | FILE_ATTRIBUTE_READONLY;
    for (const auto& [former, kept] : {std::pair(both - hidden, hidden), {both, both}}) {
        SetFileAttributesA(path.c_str(), former);
        EXPECT_EQ(reported(Jw32FileHide, path), Report(1));
        EXPECT_EQ(attributes(path) & both, kept);
    }
    EXPECT_EQ(reported(Jw32FileHide, c("missing")), Report(0, ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(reported(Jw32FileHide, nullptr), Report(0));
    EXPECT_EQ(reported(Jw32FileHide, ""), Report(0));
}

}  // namespace
