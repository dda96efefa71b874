// What the library expects of the calls for modules and well-known folders.
#include <gtest/gtest.h>
#include <windows.h>

#include <shlobj.h>

#include <cctype>
#include <string>

#include "contract/wine.h"

namespace {

std::string lower(std::string text) {
    for (char& character : text) {
        character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    }
    return text;
}

bool endsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() &&
           text.compare(text.size() - end.size(), end.size(), end) == 0;
}

TEST(ModuleContract, ThePathOfTheProgramIsThatOfAFile) {
    char path[MAX_PATH] = "";
    const DWORD length = GetModuleFileNameA(nullptr, path, MAX_PATH);
    EXPECT_EQ(length, std::string(path).size());
    EXPECT_EQ(std::string(path).substr(1, 2), ":\\");
    EXPECT_NE(GetFileAttributesA(path), INVALID_FILE_ATTRIBUTES);
}

// Known difference: Wine does not terminate a path that it cuts.
TEST(ModuleContract, APathThatDoesNotFitIsCut) {
    char path[MAX_PATH] = "", cut[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    SetLastError(0);
    EXPECT_EQ(GetModuleFileNameA(nullptr, cut, 5), 5u);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
    EXPECT_EQ(cut, std::string(path).substr(0, onWine() ? 5 : 4));
}

TEST(ModuleContract, AStrangersPathIsNotFound) {
    int stranger = 0;
    char path[MAX_PATH] = "";
    SetLastError(0);
    EXPECT_EQ(GetModuleFileNameA(reinterpret_cast<HMODULE>(&stranger), path, MAX_PATH), 0u);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_MOD_NOT_FOUND});
}

TEST(ModuleContract, ASystemModuleLiesInTheSystemDirectory) {
    char path[MAX_PATH] = "", system[MAX_PATH] = "";
    const HMODULE module = LoadLibraryA("KERNEL32.DLL");
    ASSERT_NE(module, nullptr);
    GetModuleFileNameA(module, path, MAX_PATH);
    FreeLibrary(module);
    const UINT length = GetSystemDirectoryA(system, MAX_PATH);
    EXPECT_EQ(length, std::string(system).size());
    EXPECT_EQ(lower(path), lower(system) + "\\kernel32.dll");
}

TEST(ModuleContract, TheSystemDirectoryTellsTheRoomItNeeds) {
    char system[MAX_PATH] = "", small[8] = "";
    const UINT length = GetSystemDirectoryA(system, MAX_PATH);
    EXPECT_EQ(GetSystemDirectoryA(small, 8), length + 1);
    EXPECT_STREQ(small, "");
    EXPECT_TRUE(endsWith(lower(system), "\\windows\\system32")) << system;
    EXPECT_EQ(GetFileAttributesA(system) & FILE_ATTRIBUTE_DIRECTORY,
              DWORD{FILE_ATTRIBUTE_DIRECTORY});
}

TEST(FolderContract, TheCallIsFoundInBothModules) {
    for (const char* const name : {"Shell32.dll", "SHFolder.dll"}) {
        const HMODULE module = LoadLibraryA(name);
        ASSERT_NE(module, nullptr) << name;
        EXPECT_NE(GetProcAddress(module, "SHGetFolderPathA"), nullptr) << name;
        FreeLibrary(module);
    }
}

// The folder of the browser's files and that of its cookies are called differently from system to
// system, and the folders of programs depend on the kind of the process: of them the name is not
// asked for.
TEST(FolderContract, EveryFolderIsMadeWhereItBelongs) {
    struct {
        int folder;
        const char* end;
    } const rows[] = {
        {CSIDL_DESKTOP, "\\desktop"},
        {CSIDL_PROGRAMS, "\\appdata\\roaming\\microsoft\\windows\\start menu\\programs"},
        {CSIDL_PERSONAL, "\\documents"},
        {CSIDL_FAVORITES, "\\favorites"},
        {CSIDL_STARTUP, "\\appdata\\roaming\\microsoft\\windows\\start menu\\programs\\startup"},
        {CSIDL_RECENT, "\\appdata\\roaming\\microsoft\\windows\\recent"},
        {CSIDL_SENDTO, "\\appdata\\roaming\\microsoft\\windows\\sendto"},
        {CSIDL_STARTMENU, "\\appdata\\roaming\\microsoft\\windows\\start menu"},
        {CSIDL_MYMUSIC, "\\music"},
        {CSIDL_MYVIDEO, "\\videos"},
        {CSIDL_DESKTOPDIRECTORY, "\\desktop"},
        {CSIDL_NETHOOD, "\\appdata\\roaming\\microsoft\\windows\\network shortcuts"},
        {CSIDL_FONTS, "c:\\windows\\fonts"},
        {CSIDL_TEMPLATES, "\\appdata\\roaming\\microsoft\\windows\\templates"},
        {CSIDL_COMMON_STARTMENU, "c:\\programdata\\microsoft\\windows\\start menu"},
        {CSIDL_COMMON_PROGRAMS, "c:\\programdata\\microsoft\\windows\\start menu\\programs"},
        {CSIDL_COMMON_STARTUP,
         "c:\\programdata\\microsoft\\windows\\start menu\\programs\\startup"},
        {CSIDL_COMMON_DESKTOPDIRECTORY, "c:\\users\\public\\desktop"},
        {CSIDL_APPDATA, "\\appdata\\roaming"},
        {CSIDL_PRINTHOOD, "\\appdata\\roaming\\microsoft\\windows\\printer shortcuts"},
        {CSIDL_LOCAL_APPDATA, "\\appdata\\local"},
        {CSIDL_COMMON_FAVORITES, "\\favorites"},
        {CSIDL_INTERNET_CACHE, ""},
        {CSIDL_COOKIES, ""},
        {CSIDL_HISTORY, "\\appdata\\local\\microsoft\\windows\\history"},
        {CSIDL_COMMON_APPDATA, "c:\\programdata"},
        {CSIDL_WINDOWS, "c:\\windows"},
        {CSIDL_SYSTEM, "c:\\windows\\system32"},
        {CSIDL_PROGRAM_FILES, ""},
        {CSIDL_MYPICTURES, "\\pictures"},
        {CSIDL_PROFILE, ""},
        {CSIDL_SYSTEMX86, "c:\\windows\\syswow64"},
        {CSIDL_PROGRAM_FILESX86, "c:\\program files (x86)"},
        {CSIDL_PROGRAM_FILES_COMMON, "\\common files"},
        {CSIDL_PROGRAM_FILES_COMMONX86, "c:\\program files (x86)\\common files"},
        {CSIDL_COMMON_TEMPLATES, "c:\\programdata\\microsoft\\windows\\templates"},
        {CSIDL_COMMON_DOCUMENTS, "c:\\users\\public\\documents"},
        {CSIDL_COMMON_ADMINTOOLS,
         "c:\\programdata\\microsoft\\windows\\start menu\\programs\\administrative tools"},
        {CSIDL_ADMINTOOLS,
         "\\appdata\\roaming\\microsoft\\windows\\start menu\\programs\\administrative tools"},
        {CSIDL_COMMON_MUSIC, "c:\\users\\public\\music"},
        {CSIDL_COMMON_PICTURES, "c:\\users\\public\\pictures"},
        {CSIDL_COMMON_VIDEO, "c:\\users\\public\\videos"},
        {CSIDL_RESOURCES, "c:\\windows\\resources"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.folder);
        for (const DWORD type : {SHGFP_TYPE_CURRENT, SHGFP_TYPE_DEFAULT}) {
            char path[MAX_PATH] = "";
            EXPECT_EQ(
                SHGetFolderPathA(nullptr, row.folder | CSIDL_FLAG_CREATE, nullptr, type, path),
                S_OK);
            EXPECT_TRUE(endsWith(lower(path), row.end)) << path;
            const DWORD attributes = GetFileAttributesA(path);
            EXPECT_NE(attributes, INVALID_FILE_ATTRIBUTES) << path;
            EXPECT_NE(attributes & FILE_ATTRIBUTE_DIRECTORY, 0u) << path;
        }
    }
}

// Known difference: of a folder that is known but missing, S_FALSE is documented; Wine says
// ERROR_FILE_NOT_FOUND.
TEST(FolderContract, AMissingFolderIsToldApartFromAnUnknownOne) {
    char path[MAX_PATH] = "";
    constexpr int folder = CSIDL_PRINTHOOD;
    ASSERT_EQ(SHGetFolderPathA(nullptr, folder | CSIDL_FLAG_CREATE, nullptr, 0, path), S_OK);
    wchar_t wide[MAX_PATH];
    MultiByteToWideChar(CP_ACP, 0, path, -1, wide, MAX_PATH);
    ASSERT_TRUE(RemoveDirectoryW(wide)) << path;
    char other[MAX_PATH] = "";
    EXPECT_EQ(SHGetFolderPathA(nullptr, folder, nullptr, 0, other),
              onWine() ? HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND) : S_FALSE);
    EXPECT_STREQ(other, "");
    EXPECT_EQ(SHGetFolderPathA(nullptr, folder | CSIDL_FLAG_DONT_VERIFY, nullptr, 0, other), S_OK);
    EXPECT_STREQ(other, path);
    EXPECT_EQ(SHGetFolderPathA(nullptr, folder | CSIDL_FLAG_CREATE, nullptr, 0, other), S_OK);
    EXPECT_STREQ(other, path);
    for (const int unknown : {0x0C, 0x3F, 0xFF, CSIDL_DRIVES}) {
        EXPECT_EQ(SHGetFolderPathA(nullptr, unknown, nullptr, 0, other), E_INVALIDARG) << unknown;
        EXPECT_STREQ(other, "");
    }
    EXPECT_EQ(SHGetFolderPathA(nullptr, folder, nullptr, 2, other), E_INVALIDARG);
}

}  // namespace
