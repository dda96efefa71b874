// What the library expects of the calls for modules and well-known folders.
#include <gtest/gtest.h>
#include <jw32/directories.h>
#include <windows.h>

#include <shlobj.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "contract/wine.h"
#include "support/last_error.h"
#include "support/vectors.h"
#include "support/wide.h"

namespace {

std::string lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

TEST(ModuleContract, APathIsThatOfTheFileAndCutWhereItDoesNotFit) {
    char path[MAX_PATH] = "", cut[MAX_PATH] = "", system[MAX_PATH] = "";
    const DWORD length = GetModuleFileNameA(nullptr, path, MAX_PATH);
    EXPECT_EQ(length, std::strlen(path));
    EXPECT_NE(GetFileAttributesA(path), INVALID_FILE_ATTRIBUTES) << path;
    EXPECT_EQ(GetModuleFileNameA(nullptr, cut, 5), 5u);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
    // Known difference: Wine does not terminate a path that it cuts.
    EXPECT_EQ(cut, std::string(path).substr(0, onWine() ? 5 : 4));
    const auto stranger = reinterpret_cast<HMODULE>(&cut);
    EXPECT_EQ(codeOf(GetModuleFileNameA(stranger, path, MAX_PATH)), DWORD{ERROR_MOD_NOT_FOUND});

    EXPECT_EQ(GetSystemDirectoryA(system, MAX_PATH), 19u);
    EXPECT_EQ(GetSystemDirectoryA(cut, 5), 20u) << "the room that it needs";
    EXPECT_EQ(lower(system), "c:\\windows\\system32");
    GetModuleFileNameA(GetModuleHandleA("KERNEL32.DLL"), path, MAX_PATH);
    EXPECT_EQ(lower(path), "c:\\windows\\system32\\kernel32.dll");
}

std::string pathOf(int folder, DWORD type) {
    char path[MAX_PATH] = "";
    const HRESULT result =
        SHGetFolderPathA(nullptr, folder | CSIDL_FLAG_CREATE, nullptr, type, path);
    EXPECT_EQ(result, S_OK);
    EXPECT_TRUE(Jw32DirectoryExist(path)) << path;
    return lower(path);
}

// The number of a folder; $P stands for that of the user's profile.
std::string folder(const Words& words) {
    const int number = std::stoi(words.at(0), nullptr, 16);
    const auto path = pathOf(number, SHGFP_TYPE_CURRENT), profile = pathOf(CSIDL_PROFILE, 0);
    EXPECT_EQ(pathOf(number, SHGFP_TYPE_DEFAULT), path);
    return path.starts_with(profile) ? "$P" + path.substr(profile.size()) : path;
}

TEST(FolderContract, EveryFolderIsMadeWhereItBelongs) {
    holdVectors({{"folder", folder}}, onWine());
}

// Known difference: of a folder that is known but missing, S_FALSE is documented; Wine says
// ERROR_FILE_NOT_FOUND.
TEST(FolderContract, AMissingFolderIsToldApartFromAnUnknownOne) {
    char path[MAX_PATH] = "", other[MAX_PATH] = "";
    const auto ask = [](int folder, char* target, DWORD type = SHGFP_TYPE_CURRENT) {
        return SHGetFolderPathA(nullptr, folder, nullptr, type, target);
    };
    EXPECT_EQ(ask(CSIDL_PRINTHOOD | CSIDL_FLAG_CREATE, path), S_OK);
    ASSERT_TRUE(RemoveDirectoryW(Wide(path))) << path;
    const HRESULT missing = onWine() ? HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND) : S_FALSE;
    EXPECT_EQ(ask(CSIDL_PRINTHOOD, other), missing);
    EXPECT_STREQ(other, "");
    for (const int flag : {CSIDL_FLAG_DONT_VERIFY, CSIDL_FLAG_CREATE, 0}) {
        EXPECT_EQ(ask(CSIDL_PRINTHOOD | flag, other), S_OK) << flag;
        EXPECT_STREQ(other, path);
    }
    for (const int unknown : {0x0C, 0x3F, 0xFF, CSIDL_DRIVES}) {
        EXPECT_EQ(ask(unknown, other), E_INVALIDARG) << unknown;
        EXPECT_STREQ(other, "");
    }
    EXPECT_EQ(ask(CSIDL_PRINTHOOD, other, 2), E_INVALIDARG);
}

}  // namespace
