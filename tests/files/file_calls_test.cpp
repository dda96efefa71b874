// Which platform calls the file and directory operations make, with which flags, in which order.
#include <jw32/directories.h>
#include <jw32/files.h>

#include <optional>

#include "support/calls.h"
#include "support/scratch_drives.h"
#include "support/triple.h"

namespace {

class FileCalls : public ScratchDrives {
  protected:
    FileCalls() {
        write(from, "content");
        script.emplace();
    }
    // The calls of the operations that are named, without quotes.
    std::string made(const std::string& names) const {
        auto result = callsOf(*script, names);
        std::erase(result, '"');
        return result;
    }

    const std::string from = c("file"), to = c("new");
    std::optional<machine::Script> script;
};

TEST_F(FileCalls, OpenWithTheCallersFlagsInThePlatformsOrder) {
    script->answer<&CreateFileW>(reinterpret_cast<HANDLE>(0x1234));
    EXPECT_EQ(Jw32FileCreate("name", 1, 2, 3, 4), reinterpret_cast<void*>(0x1234));
    EXPECT_EQ(made("CreateFileW"), "CreateFileW(name, 1, 4, null, 2, 3, null) ");
}

TEST_F(FileCalls, CloseTheFileWhoseSizeFailsAfterItsCodeWasRead) {
    script->fail("GetFileSize", ERROR_ACCESS_DENIED);
    script->fail("CloseHandle", ERROR_INVALID_HANDLE);
    const auto size = [this](auto... t) { return Jw32FileSize(from.c_str(), t...); };
    EXPECT_EQ(reported(size), Report(-1, ERROR_ACCESS_DENIED));
    EXPECT_EQ(made("CreateFileW GetFileSize CloseHandle"),
              "CreateFileW(" + from + ", 2147483648, 3, null, 3, 0, null) " +
                  "GetFileSize(pointer, null) CloseHandle(pointer) ");
}

TEST_F(FileCalls, TakeAShortCountOrAFarPositionForNoFailureOfThePlatform) {
    script->answer<&ReadFile>(-2);
    script->answer<&WriteFile>(-2);
    script->answer<&SetFilePointer>(0xFFFFFFFE);
    EXPECT_EQ(reported(Jw32FileRead, nullptr, nullptr, 4), Report(0));
    EXPECT_EQ(Jw32FileSeek(nullptr, 0) + Jw32FileSeekEnd(nullptr), 2);
    EXPECT_EQ(reported(Jw32FileWrite, nullptr, "text", 4), Report(0));
}

TEST_F(FileCalls, MoveOnOneDriveByRenamingAndRelativeNamesByCopying) {
    const auto first = to.substr(3), second = from.substr(3);  // C:\ is the current directory
    EXPECT_EQ(Jw32FileMove(from.c_str(), to.c_str()), 1);
    EXPECT_EQ(Jw32FileMove(first.c_str(), second.c_str()), 1);
    EXPECT_EQ(made("FindFirstFileW FindClose PathIsSameRootW MoveFileW CopyFileW DeleteFileW "
                   "SetFileAttributesW"),
              "FindFirstFileW(" + from + ", pointer) FindClose(pointer) PathIsSameRootW(" + from +
                  "\\, " + to + "\\) MoveFileW(" + from + ", " + to + ") FindFirstFileW(" + first +
                  ", pointer) FindClose(pointer) PathIsSameRootW(" + first + "\\, " + second +
                  "\\) CopyFileW(" + first + ", " + second + ", 0) DeleteFileW(" + first + ") ");
}

TEST_F(FileCalls, HideAFileByThatAttributeAlone) {
    EXPECT_EQ(Jw32FileHide(from.c_str()), 1);
    EXPECT_EQ(made("SetFileAttributesW"), "SetFileAttributesW(" + from + ", 2) ");
}

TEST_F(FileCalls, TryEveryLevelOfADirectory) {
    script->fail("CreateDirectoryW", ERROR_BAD_PATHNAME, machine::everyCall);
    for (const char* const path : {"C:\\a", "\\\\server\\share\\d", "C:\\a\\b\\", "dir\\sub\\x"}) {
        EXPECT_EQ(reported(Jw32DirectoryCreate, path), Report(0, ERROR_BAD_PATHNAME)) << path;
    }
    std::string tried;
    for (const auto& call : script->calls()) {
        if (call.name == "CreateDirectoryW") tried += call.arguments[0];
    }
    EXPECT_EQ(tried, R"("C:\a""\""\\server""\\server\share""\\server\share\d")"
                     R"("C:\a""C:\a\b""C:\a\b\""dir\sub""dir\sub\x")");
}

TEST_F(FileCalls, TakeAttributesOfADirectoryAwayBeforeTheyAddThem) {
    script->answer<&CreateDirectoryW>(TRUE);
    script->answer<&GetFileAttributesA>(0x35);
    for (const DWORD add : {0x06, 0}) Jw32DirectoryCreateAttr("C:\\a", add, 0x24);
    Jw32DirectoryCreateAttr("C:\\a", 0, 0);
    EXPECT_EQ(made("GetFileAttributesA SetFileAttributesA"),
              "GetFileAttributesA(C:\\a) SetFileAttributesA(C:\\a, 23) "
              "GetFileAttributesA(C:\\a) SetFileAttributesA(C:\\a, 17) ");
}

}  // namespace
