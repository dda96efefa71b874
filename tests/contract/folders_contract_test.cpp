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

// Folders, each with its name, are made under paths that end so, whichever type is asked for.
template <class... More>
void lie(const std::string& above, int folder, const std::string& name, const More&... more) {
    for (const DWORD type : {SHGFP_TYPE_CURRENT, SHGFP_TYPE_DEFAULT}) {
        char path[MAX_PATH] = "";
        folder |= CSIDL_FLAG_CREATE;
        EXPECT_EQ(SHGetFolderPathA(nullptr, folder, nullptr, type, path), S_OK) << above + name;
        EXPECT_TRUE(lower(path).ends_with(above + name)) << path << " is not " << above + name;
        EXPECT_TRUE(Jw32DirectoryExist(path)) << path;
    }
    if constexpr (sizeof...(more) > 0) lie(above, more...);
}

// The folder of the browser's files and that of its cookies are called differently from system to
// system, and the folders of programs depend on the kind of the process: of them the name is not
// asked for.
TEST(FolderContract, EveryFolderIsMadeWhereItBelongs) {
    const std::string own = "\\appdata\\roaming\\microsoft\\windows\\", data = "c:\\programdata\\";
    const std::string menu = own + "start menu\\",
                      allMenu = data + "microsoft\\windows\\start menu\\";
    lie("\\", CSIDL_DESKTOP, "desktop", CSIDL_PERSONAL, "documents", CSIDL_FAVORITES, "favorites",
        CSIDL_MYMUSIC, "music", CSIDL_MYVIDEO, "videos", CSIDL_MYPICTURES, "pictures",
        CSIDL_DESKTOPDIRECTORY, "desktop", CSIDL_COMMON_FAVORITES, "favorites");
    lie(own, CSIDL_RECENT, "recent", CSIDL_SENDTO, "sendto", CSIDL_STARTMENU, "start menu",
        CSIDL_TEMPLATES, "templates", CSIDL_NETHOOD, "network shortcuts", CSIDL_PRINTHOOD,
        "printer shortcuts");
    lie(menu + "programs\\", CSIDL_STARTUP, "startup", CSIDL_ADMINTOOLS, "administrative tools");
    lie(allMenu + "programs\\", CSIDL_COMMON_STARTUP, "startup", CSIDL_COMMON_ADMINTOOLS,
        "administrative tools");
    lie("", CSIDL_PROGRAMS, menu + "programs", CSIDL_COMMON_PROGRAMS, allMenu + "programs",
        CSIDL_COMMON_APPDATA, "c:\\programdata", CSIDL_WINDOWS, "c:\\windows", CSIDL_PROGRAM_FILES,
        "", CSIDL_INTERNET_CACHE, "", CSIDL_COOKIES, "", CSIDL_PROFILE, "");
    lie("\\appdata\\", CSIDL_APPDATA, "roaming", CSIDL_LOCAL_APPDATA, "local", CSIDL_HISTORY,
        "local\\microsoft\\windows\\history");
    lie(data + "microsoft\\windows\\", CSIDL_COMMON_STARTMENU, "start menu", CSIDL_COMMON_TEMPLATES,
        "templates");
    lie("c:\\users\\public\\", CSIDL_COMMON_MUSIC, "music", CSIDL_COMMON_VIDEO, "videos",
        CSIDL_COMMON_PICTURES, "pictures", CSIDL_COMMON_DOCUMENTS, "documents",
        CSIDL_COMMON_DESKTOPDIRECTORY, "desktop");
    lie("c:\\windows\\", CSIDL_FONTS, "fonts", CSIDL_SYSTEM, "system32", CSIDL_SYSTEMX86,
        "syswow64", CSIDL_RESOURCES, "resources");
    lie("\\program files (x86)", CSIDL_PROGRAM_FILESX86, "", CSIDL_PROGRAM_FILES_COMMONX86,
        "\\common files");
    lie("\\common files", CSIDL_PROGRAM_FILES_COMMON, "");
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
