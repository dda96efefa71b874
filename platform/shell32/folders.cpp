// Well-known folders, where the NT 6 line has them.
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>
#include <string_view>

#include "core/ansi.h"
#include "core/machine.h"
#include "core/script.h"
#include "host/host_errors.h"
#include "host/user.h"
#include "names/lookup.h"
#include "shlobj.h"
#include "text/utf16.h"
#include "winerror.h"

namespace {

enum class Base { User, Public, ProgramData, Windows, SystemDrive };

struct Folder {
    int id;
    Base base;
    std::string_view below;
};

constexpr Folder folders[] = {
    {CSIDL_DESKTOP, Base::User, "\\Desktop"},
    {CSIDL_PROGRAMS, Base::User, "\\AppData\\Roaming\\Microsoft\\Windows\\Start Menu\\Programs"},
    {CSIDL_PERSONAL, Base::User, "\\Documents"},
    {CSIDL_FAVORITES, Base::User, "\\Favorites"},
    {CSIDL_STARTUP, Base::User,
     "\\AppData\\Roaming\\Microsoft\\Windows\\Start Menu\\Programs\\Startup"},
    {CSIDL_RECENT, Base::User, "\\AppData\\Roaming\\Microsoft\\Windows\\Recent"},
    {CSIDL_SENDTO, Base::User, "\\AppData\\Roaming\\Microsoft\\Windows\\SendTo"},
    {CSIDL_STARTMENU, Base::User, "\\AppData\\Roaming\\Microsoft\\Windows\\Start Menu"},
    {CSIDL_MYMUSIC, Base::User, "\\Music"},
    {CSIDL_MYVIDEO, Base::User, "\\Videos"},
    {CSIDL_DESKTOPDIRECTORY, Base::User, "\\Desktop"},
    {CSIDL_NETHOOD, Base::User, "\\AppData\\Roaming\\Microsoft\\Windows\\Network Shortcuts"},
    {CSIDL_FONTS, Base::Windows, "\\Fonts"},
    {CSIDL_TEMPLATES, Base::User, "\\AppData\\Roaming\\Microsoft\\Windows\\Templates"},
    {CSIDL_COMMON_STARTMENU, Base::ProgramData, "\\Microsoft\\Windows\\Start Menu"},
    {CSIDL_COMMON_PROGRAMS, Base::ProgramData, "\\Microsoft\\Windows\\Start Menu\\Programs"},
    {CSIDL_COMMON_STARTUP, Base::ProgramData,
     "\\Microsoft\\Windows\\Start Menu\\Programs\\Startup"},
    {CSIDL_COMMON_DESKTOPDIRECTORY, Base::Public, "\\Desktop"},
    {CSIDL_APPDATA, Base::User, "\\AppData\\Roaming"},
    {CSIDL_PRINTHOOD, Base::User, "\\AppData\\Roaming\\Microsoft\\Windows\\Printer Shortcuts"},
    {CSIDL_LOCAL_APPDATA, Base::User, "\\AppData\\Local"},
    {CSIDL_COMMON_FAVORITES, Base::User, "\\Favorites"},
    {CSIDL_INTERNET_CACHE, Base::User,
     "\\AppData\\Local\\Microsoft\\Windows\\Temporary Internet Files"},
    {CSIDL_COOKIES, Base::User, "\\AppData\\Roaming\\Microsoft\\Windows\\Cookies"},
    {CSIDL_HISTORY, Base::User, "\\AppData\\Local\\Microsoft\\Windows\\History"},
    {CSIDL_COMMON_APPDATA, Base::ProgramData, ""},
    {CSIDL_WINDOWS, Base::Windows, ""},
    {CSIDL_SYSTEM, Base::Windows, "\\System32"},
    {CSIDL_PROGRAM_FILES, Base::SystemDrive, "\\Program Files"},
    {CSIDL_MYPICTURES, Base::User, "\\Pictures"},
    {CSIDL_PROFILE, Base::User, ""},
    {CSIDL_SYSTEMX86, Base::Windows, "\\SysWOW64"},
    {CSIDL_PROGRAM_FILESX86, Base::SystemDrive, "\\Program Files (x86)"},
    {CSIDL_PROGRAM_FILES_COMMON, Base::SystemDrive, "\\Program Files\\Common Files"},
    {CSIDL_PROGRAM_FILES_COMMONX86, Base::SystemDrive, "\\Program Files (x86)\\Common Files"},
    {CSIDL_COMMON_TEMPLATES, Base::ProgramData, "\\Microsoft\\Windows\\Templates"},
    {CSIDL_COMMON_DOCUMENTS, Base::Public, "\\Documents"},
    {CSIDL_COMMON_ADMINTOOLS, Base::ProgramData,
     "\\Microsoft\\Windows\\Start Menu\\Programs\\Administrative Tools"},
    {CSIDL_ADMINTOOLS, Base::User,
     "\\AppData\\Roaming\\Microsoft\\Windows\\Start Menu\\Programs\\Administrative Tools"},
    {CSIDL_COMMON_MUSIC, Base::Public, "\\Music"},
    {CSIDL_COMMON_PICTURES, Base::Public, "\\Pictures"},
    {CSIDL_COMMON_VIDEO, Base::Public, "\\Videos"},
    {CSIDL_RESOURCES, Base::Windows, "\\Resources"},
    {CSIDL_CDBURN_AREA, Base::User, "\\AppData\\Local\\Microsoft\\Windows\\Burn\\Burn"},
};

constexpr int folderMask = 0x00FF;

const Folder* folderOf(int id) {
    const auto* const found = std::find_if(std::begin(folders), std::end(folders),
                                           [id](const Folder& folder) { return folder.id == id; });
    return found == std::end(folders) ? nullptr : found;
}

std::string baseText(Base base) {
    const auto& windows = machine::current().windowsDirectory;
    const auto drive = windows.substr(0, 2);
    switch (base) {
        case Base::User:
            return drive + "\\Users\\" + machine::userName();
        case Base::Public:
            return drive + "\\Users\\Public";
        case Base::ProgramData:
            return drive + "\\ProgramData";
        case Base::Windows:
            return windows;
        case Base::SystemDrive:
            return drive;
    }
    return {};
}

// Makes the folder and those above it that are missing.
DWORD makeFolder(const machine::Path& path) {
    constexpr mode_t newDirectoryMode = 0777;
    const auto found = machine::findOnHost(path);
    if (found.exists()) return found.isDirectory() ? ERROR_SUCCESS : ERROR_DIRECTORY;
    if (path.isRoot()) return found.error;
    if (const DWORD code = makeFolder(machine::parentOf(path))) return code;
    const auto name = machine::findOnHost(path).path;
    const bool made = ::mkdir(name.c_str(), newDirectoryMode) == 0 || errno == EEXIST;
    return made ? ERROR_SUCCESS : machine::codeOfHostError(errno);
}

// What becomes of the folder under the flags.
HRESULT verify(const std::string& text, int flags) {
    if ((flags & CSIDL_FLAG_DONT_VERIFY) != 0) return S_OK;
    const auto path = machine::parsePath(machine::fromUtf8(text));
    if (const DWORD code = path.fileError()) return HRESULT_FROM_WIN32(code);
    const auto found = machine::findOnHost(path);
    if (found.exists() && found.isDirectory()) return S_OK;
    if ((flags & CSIDL_FLAG_CREATE) == 0) return S_FALSE;
    return HRESULT_FROM_WIN32(makeFolder(path));
}

}  // namespace

// The current and the default place of a folder are the same here.
HRESULT WINAPI SHGetFolderPathA(HWND owner, int folder, HANDLE token, DWORD type, LPSTR path) try {
    const auto scripted =
        machine::callForHresult<&SHGetFolderPathA>(owner, folder, token, type, path);
    if (scripted) return scripted.code();
    if (path == nullptr || type > SHGFP_TYPE_DEFAULT) return E_INVALIDARG;
    path[0] = '\0';
    const auto* const known = folderOf(folder & folderMask);
    if (known == nullptr) return E_INVALIDARG;
    const auto text = baseText(known->base).append(known->below);
    const HRESULT result = verify(text, folder);
    const auto ansi = machine::toAnsi(machine::fromUtf8(text));
    if (ansi.size() >= MAX_PATH) return E_FAIL;
    if (result == S_OK) std::memcpy(path, ansi.c_str(), ansi.size() + 1);
    return result;
} catch (const std::exception&) {
    return machine::outOfMemory(E_FAIL);
}
