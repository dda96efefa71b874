// Well-known folders of the shell.
#pragma once

#include "windef.h"

inline constexpr int CSIDL_DESKTOP = 0x0000;
inline constexpr int CSIDL_PROGRAMS = 0x0002;
inline constexpr int CSIDL_PERSONAL = 0x0005;
inline constexpr int CSIDL_FAVORITES = 0x0006;
inline constexpr int CSIDL_STARTUP = 0x0007;
inline constexpr int CSIDL_RECENT = 0x0008;
inline constexpr int CSIDL_SENDTO = 0x0009;
inline constexpr int CSIDL_STARTMENU = 0x000B;
inline constexpr int CSIDL_MYMUSIC = 0x000D;
inline constexpr int CSIDL_MYVIDEO = 0x000E;
inline constexpr int CSIDL_DESKTOPDIRECTORY = 0x0010;
inline constexpr int CSIDL_DRIVES = 0x0011;
inline constexpr int CSIDL_NETHOOD = 0x0013;
inline constexpr int CSIDL_FONTS = 0x0014;
inline constexpr int CSIDL_TEMPLATES = 0x0015;
inline constexpr int CSIDL_COMMON_STARTMENU = 0x0016;
inline constexpr int CSIDL_COMMON_PROGRAMS = 0x0017;
inline constexpr int CSIDL_COMMON_STARTUP = 0x0018;
inline constexpr int CSIDL_COMMON_DESKTOPDIRECTORY = 0x0019;
inline constexpr int CSIDL_APPDATA = 0x001A;
inline constexpr int CSIDL_PRINTHOOD = 0x001B;
inline constexpr int CSIDL_LOCAL_APPDATA = 0x001C;
inline constexpr int CSIDL_COMMON_FAVORITES = 0x001F;
inline constexpr int CSIDL_INTERNET_CACHE = 0x0020;
inline constexpr int CSIDL_COOKIES = 0x0021;
inline constexpr int CSIDL_HISTORY = 0x0022;
inline constexpr int CSIDL_COMMON_APPDATA = 0x0023;
inline constexpr int CSIDL_WINDOWS = 0x0024;
inline constexpr int CSIDL_SYSTEM = 0x0025;
inline constexpr int CSIDL_PROGRAM_FILES = 0x0026;
inline constexpr int CSIDL_MYPICTURES = 0x0027;
inline constexpr int CSIDL_PROFILE = 0x0028;
inline constexpr int CSIDL_SYSTEMX86 = 0x0029;
inline constexpr int CSIDL_PROGRAM_FILESX86 = 0x002A;
inline constexpr int CSIDL_PROGRAM_FILES_COMMON = 0x002B;
inline constexpr int CSIDL_PROGRAM_FILES_COMMONX86 = 0x002C;
inline constexpr int CSIDL_COMMON_TEMPLATES = 0x002D;
inline constexpr int CSIDL_COMMON_DOCUMENTS = 0x002E;
inline constexpr int CSIDL_COMMON_ADMINTOOLS = 0x002F;
inline constexpr int CSIDL_ADMINTOOLS = 0x0030;
inline constexpr int CSIDL_COMMON_MUSIC = 0x0035;
inline constexpr int CSIDL_COMMON_PICTURES = 0x0036;
inline constexpr int CSIDL_COMMON_VIDEO = 0x0037;
inline constexpr int CSIDL_RESOURCES = 0x0038;
inline constexpr int CSIDL_CDBURN_AREA = 0x003B;

inline constexpr int CSIDL_FLAG_DONT_VERIFY = 0x4000;
inline constexpr int CSIDL_FLAG_CREATE = 0x8000;

enum SHGFP_TYPE { SHGFP_TYPE_CURRENT = 0, SHGFP_TYPE_DEFAULT = 1 };

// The folder's path in a buffer of MAX_PATH bytes. S_FALSE: the folder does not exist.
WINBASEAPI HRESULT WINAPI SHGetFolderPathA(HWND owner, int folder, HANDLE token, DWORD type,
                                           LPSTR path);
