// Which platform calls the file and directory operations make, with which flags, in which order.
#include <gmock/gmock.h>
#include <jw32/directories.h>
#include <jw32/files.h>

#include "machine/testing.h"
#include "support/scratch_drives.h"
#include "support/triple.h"

namespace {

using testing::ElementsAre;

class FileCalls : public ScratchDrives {
  protected:
    // The recorded calls that a pattern of names tells, as text.
    std::vector<std::string> made(const std::vector<std::string>& names) const {
        std::vector<std::string> result;
        for (const auto& call : script->calls()) {
            if (std::find(names.begin(), names.end(), call.name) != names.end()) {
                result.push_back(call.text());
            }
        }
        return result;
    }
    static std::string quoted(const std::string& path) { return "\"" + path + "\""; }

    void SetUp() override {
        write(c("file"), "content");
        script.emplace();
    }
    void TearDown() override {
        script.reset();
        machine::reclaimAll();
    }

    Triple triple;
    std::optional<machine::Script> script;
};

TEST_F(FileCalls, OpenWithTheCallersFlagsInThePlatformsOrder) {
    script->answer("CreateFileW", 0x1234);
    EXPECT_EQ(Jw32FileCreate("name", 1, 2, 3, 4), reinterpret_cast<void*>(0x1234));
    EXPECT_THAT(made({"CreateFileW"}),
                ElementsAre("CreateFileW(\"name\", 1, 4, null, 2, 3, null)"));
}

TEST_F(FileCalls, CloseTheFileWhoseSizeFailsAfterItsCodeWasRead) {
    script->fail("GetFileSize", ERROR_ACCESS_DENIED);
    script->fail("CloseHandle", ERROR_INVALID_HANDLE);
    EXPECT_EQ(Jw32FileSize(c("file").c_str(), &triple.code, triple.text, triple.size), -1);
    EXPECT_TRUE(triple.tells(ERROR_ACCESS_DENIED)) << triple;
    EXPECT_THAT(
        made({"CreateFileW", "GetFileSize", "CloseHandle"}),
        ElementsAre("CreateFileW(" + quoted(c("file")) + ", 2147483648, 3, null, 3, 0, null)",
                    "GetFileSize(pointer, null)", "CloseHandle(pointer)"));
}

TEST_F(FileCalls, TakeAShortCountForNoFailureOfThePlatform) {
    script->answer("WriteFile", TRUE);
    EXPECT_EQ(triple.of(Jw32FileWrite, nullptr, "text", 4), 0);
    EXPECT_TRUE(triple.isClear()) << triple;
}

TEST_F(FileCalls, MoveOnOneDriveByRenaming) {
    EXPECT_EQ(Jw32FileMove(c("file").c_str(), c("new").c_str()), 1);
    EXPECT_THAT(
        made({"FindFirstFileW", "FindClose", "PathIsSameRootW", "MoveFileW", "CopyFileW"}),
        ElementsAre("FindFirstFileW(" + quoted(c("file")) + ")", "FindClose(pointer)",
                    "PathIsSameRootW(" + quoted(c("file\\")) + ", " + quoted(c("new\\")) + ")",
                    "MoveFileW(" + quoted(c("file")) + ", " + quoted(c("new")) + ")"));
}

TEST_F(FileCalls, MoveRelativeNamesByCopying) {
    const auto from = c("file").substr(3), to = c("new").substr(3);  // C:\ is the current directory
    EXPECT_EQ(Jw32FileMove(from.c_str(), to.c_str()), 1);
    EXPECT_THAT(made({"MoveFileW", "CopyFileW", "DeleteFileW", "SetFileAttributesW"}),
                ElementsAre("CopyFileW(" + quoted(from) + ", " + quoted(to) + ", 0)",
                            "DeleteFileW(" + quoted(from) + ")"));
}

TEST(DirectoryWalk, TriesEveryLevel) {
    const std::pair<const char*, const char*> rows[] = {
        {"C:\\a", R"("C:\a")"},
        {"C:\\a\\b\\c", R"("C:\a""C:\a\b""C:\a\b\c")"},
        {"\\\\server\\share\\d", R"("\""\\server""\\server\share""\\server\share\d")"},
        {"C:\\a\\b\\", R"("C:\a""C:\a\b""C:\a\b\")"},
        {"dir\\sub\\x", R"("dir\sub""dir\sub\x")"},
    };
    for (const auto& [path, levels] : rows) {
        machine::Script script;
        script.fail("CreateDirectoryW", ERROR_BAD_PATHNAME, 0);
        Triple triple;
        EXPECT_EQ(triple.of(Jw32DirectoryCreate, path), 0);
        EXPECT_TRUE(triple.tells(ERROR_BAD_PATHNAME)) << triple;
        std::string tried;
        for (const auto& call : script.calls()) {
            if (call.name == "CreateDirectoryW") tried += call.arguments[0];
        }
        EXPECT_EQ(tried, levels);
    }
}

TEST(DirectoryAttributes, AreTakenAwayBeforeTheyAreAdded) {
    machine::Script script;
    script.answer("CreateDirectoryW", TRUE);
    script.answer("GetFileAttributesA", 0x35);
    EXPECT_EQ(Jw32DirectoryCreateAttr("C:\\a", 0x06, 0x24), 1);
    EXPECT_EQ(script.calls().back().text(), "SetFileAttributesA(\"C:\\a\", 23)");
    EXPECT_EQ(Jw32DirectoryCreateAttr("C:\\a", 0, 0), 1);
    EXPECT_EQ(script.count("GetFileAttributesA"), 1u);
}

}  // namespace
