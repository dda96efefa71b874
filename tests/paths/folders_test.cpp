// Folders, the temporary directory, temporary names and files, in both builds.
#include <gtest/gtest.h>
#include <jw32/folders.h>
#include <jw32/temporary_files.h>
#include <shlobj.h>

#include "support/scratch_drives.h"
#include "support/temporary_variables.h"
#include "support/triple.h"

namespace {

TEST(ModulePath, IsAWholeFolderWithoutALastBackslash) {
    char path[MAX_PATH] = "", buffer[MAX_PATH] = "text";
    EXPECT_EQ(Jw32GetModulePath(static_cast<HINSTANCE>(INVALID_HANDLE_VALUE), buffer, MAX_PATH), 0);
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, 0) + Jw32GetModulePath(nullptr, nullptr, 9), 0);
    EXPECT_STREQ(buffer, "text");
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    const auto folder = std::string(path).substr(0, std::string(path).rfind('\\'));
    const auto length = static_cast<unsigned>(folder.size());
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, length), 0);
    EXPECT_STREQ(buffer, "") << "it does not fit";
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, length + 1), 1);
    EXPECT_EQ(buffer, folder);
    EXPECT_EQ(Jw32GetModulePath(reinterpret_cast<HINSTANCE>(path), buffer, MAX_PATH), 0);
}

TEST(FolderPath, IsThatOfAKnownFolderWithALastBackslash) {
    char buffer[MAX_PATH] = "text";
    EXPECT_EQ(Jw32GetFolderPath(CSIDL_PERSONAL, buffer, MAX_PATH - 1), 0);
    EXPECT_STREQ(buffer, "text");
    EXPECT_EQ(Jw32GetFolderPath(CSIDL_PERSONAL, buffer, MAX_PATH), 1);
    EXPECT_EQ(std::string(buffer).back(), '\\') << buffer;
    EXPECT_TRUE(Jw32DirectoryExist(buffer)) << buffer;
    EXPECT_EQ(Jw32GetFolderPath(CSIDL_DRIVES, buffer, MAX_PATH), 0);
}

class Temporary : public ScratchDrives {
  protected:
    using Pair = std::pair<std::string, std::string>;  // of TMP and TEMP

    // The text that comes of the variables, and what they are afterwards.
    void gives(const Pair& before, const std::string& text, const Pair& after) {
        char buffer[600] = "";
        kept_.set(before.first, before.second);
        for (const char* const time : {"the first time", "the second time"}) {
            EXPECT_EQ(Jw32TempDirectory(buffer, sizeof buffer), text.size()) << time;
            EXPECT_EQ(buffer, text) << time;
            EXPECT_EQ(Pair(kept_.get("TMP"), kept_.get("TEMP")), after) << time;
        }
    }
    TemporaryVariables kept_;
};

TEST_F(Temporary, DirectoryCompletesTheEnvironment) {
    const auto longForm = c("A rather long name"), other = c("other");
    char shortForm[MAX_PATH] = "", system[MAX_PATH] = "";
    Jw32DirectoryCreate(longForm.c_str());
    ASSERT_GT(GetShortPathNameA(longForm.c_str(), shortForm, MAX_PATH), 0u);
    gives({shortForm, other}, longForm, {shortForm, other});
    gives({"", shortForm}, longForm, {shortForm, shortForm});
    const auto fits = "Q:\\" + std::string(513, 'a'), tooLong = fits + "b";
    gives({"", fits}, fits, {fits, fits});
    gives({"", tooLong}, tooLong, {"", tooLong});
    gives({tooLong + "cdefg", ""}, tooLong + "cde", {tooLong + "cdefg", ""});
    GetSystemDirectoryA(system, MAX_PATH);
    const auto own = system + std::string("\\~Temp");
    gives({"", ""}, own, {own, own});
    EXPECT_TRUE(exists(own));
    removeTree(own);
}

TEST_F(Temporary, TextsAreCutToTheBufferAndTheirLengthIsTold) {
    const std::string text = "Q:\\some\\where\\deep_";  // 19 bytes
    kept_.set(text, "");
    for (const DWORD size : {1u, 19u, 20u, 40u}) {
        std::string buffer(48, 'x'), expected = text.substr(0, size - 1);
        expected.resize(size);
        EXPECT_EQ(Jw32TempDirectory(buffer.data(), size), text.size());
        EXPECT_EQ(buffer, expected + std::string(48 - size, 'x')) << size;
    }
    kept_.set("", "");
    char cut[] = "former";
    EXPECT_GT(Jw32TempFilename(cut, 5, d().c_str(), "jwt"), d("jwt").size());
    EXPECT_EQ(kept_.get("TMP"), "") << "a given directory is no matter of the environment";
    EXPECT_EQ(Jw32TempDirectory(cut, 0) + Jw32TempDirectory(nullptr, 9), 0u);
    EXPECT_EQ(Jw32TempFilename(cut, 0, "", "") + Jw32TempFilename(nullptr, 9, "", ""), 0u);
    EXPECT_EQ(cut, d().substr(0, 4));
}

TEST_F(Temporary, FileIsMadeInTheTemporaryDirectory) {
    kept_.set("", c());
    const auto made = reported(Jw32CreateTempFile, nullptr, "jwt", GENERIC_WRITE, CREATE_NEW,
                               FILE_FLAG_DELETE_ON_CLOSE, 0);
    EXPECT_EQ(made, Report(made.result));
    EXPECT_EQ(Jw32FileFind(c("jwt*").c_str()), 1) << "it is elsewhere";
    CloseHandle(made.result);
    EXPECT_EQ(Jw32FileFind(c("jwt*").c_str()), 0) << "it stays";
}

}  // namespace
