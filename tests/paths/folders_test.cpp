// Folders of modules and well-known folders, in both builds.
#include <gtest/gtest.h>
#include <jw32/directories.h>
#include <jw32/folders.h>
#include <jw32/frame.h>

// This order: the shell's header needs the system's.
#include <windows.h>

#include <shlobj.h>

#include <string>

namespace {

std::string programFolder() {
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string text(path);
    return text.substr(0, text.rfind('\\'));
}

TEST(ModulePath, IsTheFolderWithoutALastBackslash) {
    char buffer[MAX_PATH] = "";
    ASSERT_EQ(Jw32GetModulePath(nullptr, buffer, sizeof buffer), 1);
    EXPECT_EQ(buffer, programFolder());
    ASSERT_EQ(Jw32GetModulePath(Jw32GetResourceHandle(), buffer, sizeof buffer), 1);
    EXPECT_TRUE(Jw32DirectoryExist(buffer)) << buffer;
}

TEST(ModulePath, MustFitAsAWhole) {
    const auto folder = programFolder();
    const auto length = static_cast<unsigned>(folder.size());
    char buffer[MAX_PATH] = "text";
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, length), 0);
    EXPECT_STREQ(buffer, "");
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, length + 1), 1);
    EXPECT_EQ(buffer, folder);
}

TEST(ModulePath, NeedsAModuleAndABuffer) {
    char buffer[MAX_PATH] = "text";
    const auto none = static_cast<HINSTANCE>(INVALID_HANDLE_VALUE);
    EXPECT_EQ(Jw32GetModulePath(none, buffer, sizeof buffer), 0);
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, 0), 0);
    EXPECT_EQ(Jw32GetModulePath(nullptr, nullptr, sizeof buffer), 0);
    EXPECT_STREQ(buffer, "text");
    int stranger = 0;
    EXPECT_EQ(Jw32GetModulePath(reinterpret_cast<HINSTANCE>(&stranger), buffer, sizeof buffer), 0);
    EXPECT_STREQ(buffer, "");
}

TEST(FolderPath, EndsInABackslashAndExists) {
    for (const int folder : {CSIDL_PERSONAL, CSIDL_APPDATA, CSIDL_LOCAL_APPDATA, CSIDL_WINDOWS,
                             CSIDL_COMMON_APPDATA, CSIDL_COMMON_DOCUMENTS, CSIDL_FONTS}) {
        char buffer[MAX_PATH] = "";
        ASSERT_EQ(Jw32GetFolderPath(folder, buffer, sizeof buffer), 1) << folder;
        EXPECT_EQ(std::string(buffer).back(), '\\') << buffer;
        EXPECT_TRUE(Jw32DirectoryExist(buffer)) << buffer;
    }
}

TEST(FolderPath, NeedsAKnownFolderAndAFullBuffer) {
    char buffer[MAX_PATH] = "text";
    EXPECT_EQ(Jw32GetFolderPath(CSIDL_PERSONAL, buffer, MAX_PATH - 1), 0);
    EXPECT_STREQ(buffer, "text");
    EXPECT_EQ(Jw32GetFolderPath(0xFF, buffer, MAX_PATH), 0);
    EXPECT_EQ(Jw32GetFolderPath(CSIDL_DRIVES, buffer, MAX_PATH), 0);
}

}  // namespace
