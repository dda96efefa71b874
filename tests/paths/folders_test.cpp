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

TEST(ModulePath, IsTheFolderWithoutALastBackslashAsAWhole) {
    char path[MAX_PATH] = "", buffer[MAX_PATH] = "text";
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    const auto folder = std::string(path).substr(0, std::string(path).rfind('\\'));
    const auto length = static_cast<unsigned>(folder.size());
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, length), 0);
    EXPECT_STREQ(buffer, "") << "it does not fit";
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, length + 1), 1);
    EXPECT_EQ(buffer, folder);
    ASSERT_EQ(Jw32GetModulePath(Jw32GetResourceHandle(), buffer, sizeof buffer), 1);
    EXPECT_TRUE(Jw32DirectoryExist(buffer)) << buffer;
}

TEST(ModulePath, NeedsAModuleAndABuffer) {
    char buffer[MAX_PATH] = "text";
    EXPECT_EQ(Jw32GetModulePath(static_cast<HINSTANCE>(INVALID_HANDLE_VALUE), buffer, MAX_PATH), 0);
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, 0), 0);
    EXPECT_EQ(Jw32GetModulePath(nullptr, nullptr, MAX_PATH), 0);
    EXPECT_STREQ(buffer, "text");
    int stranger = 0;
    EXPECT_EQ(Jw32GetModulePath(reinterpret_cast<HINSTANCE>(&stranger), buffer, MAX_PATH), 0);
    EXPECT_STREQ(buffer, "");
}

TEST(FolderPath, IsThatOfAKnownFolderWithALastBackslash) {
    for (const int folder : {CSIDL_PERSONAL, CSIDL_WINDOWS, CSIDL_COMMON_DOCUMENTS, CSIDL_FONTS}) {
        char buffer[MAX_PATH] = "text";
        EXPECT_EQ(Jw32GetFolderPath(folder, buffer, MAX_PATH - 1), 0);
        EXPECT_STREQ(buffer, "text");
        ASSERT_EQ(Jw32GetFolderPath(folder, buffer, MAX_PATH), 1) << folder;
        EXPECT_EQ(std::string(buffer).back(), '\\') << buffer;
        EXPECT_TRUE(Jw32DirectoryExist(buffer)) << buffer;
        EXPECT_EQ(Jw32GetFolderPath(CSIDL_DRIVES, buffer, MAX_PATH), 0);
    }
}

}  // namespace
