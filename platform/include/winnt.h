// Records and constants shared by several system modules.
#pragma once

#include "windef.h"

inline constexpr DWORD GENERIC_READ = 0x80000000;
inline constexpr DWORD GENERIC_WRITE = 0x40000000;
inline constexpr DWORD DELETE = 0x00010000;

inline constexpr DWORD FILE_SHARE_READ = 0x00000001;
inline constexpr DWORD FILE_SHARE_WRITE = 0x00000002;
inline constexpr DWORD FILE_SHARE_DELETE = 0x00000004;

inline constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x00000001;
inline constexpr DWORD FILE_ATTRIBUTE_HIDDEN = 0x00000002;
inline constexpr DWORD FILE_ATTRIBUTE_SYSTEM = 0x00000004;
inline constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x00000010;
inline constexpr DWORD FILE_ATTRIBUTE_ARCHIVE = 0x00000020;
inline constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x00000080;
inline constexpr DWORD FILE_ATTRIBUTE_TEMPORARY = 0x00000100;
inline constexpr DWORD FILE_ATTRIBUTE_REPARSE_POINT = 0x00000400;

inline constexpr DWORD FILE_SUPPORTS_REPARSE_POINTS = 0x00000080;
inline constexpr DWORD IO_REPARSE_TAG_MOUNT_POINT = 0xA0000003;

inline constexpr DWORD PAGE_NOACCESS = 0x01;
inline constexpr DWORD PAGE_READONLY = 0x02;
inline constexpr DWORD PAGE_READWRITE = 0x04;
inline constexpr DWORD MEM_COMMIT = 0x00001000;
inline constexpr DWORD MEM_RESERVE = 0x00002000;
inline constexpr DWORD MEM_RELEASE = 0x00008000;

inline constexpr DWORD VER_PLATFORM_WIN32s = 0;
inline constexpr DWORD VER_PLATFORM_WIN32_WINDOWS = 1;
inline constexpr DWORD VER_PLATFORM_WIN32_NT = 2;
inline constexpr WORD VER_SUITE_TERMINAL = 0x0010;
inline constexpr WORD VER_SUITE_SINGLEUSERTS = 0x0100;
inline constexpr BYTE VER_NT_WORKSTATION = 1;

union _ULARGE_INTEGER {
    __extension__ struct {
        DWORD LowPart;
        DWORD HighPart;
    };
    struct {
        DWORD LowPart;
        DWORD HighPart;
    } u;
    ULONGLONG QuadPart;
};
using ULARGE_INTEGER = _ULARGE_INTEGER;
using PULARGE_INTEGER = _ULARGE_INTEGER*;

struct OSVERSIONINFOA {
    DWORD dwOSVersionInfoSize;
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
    CHAR szCSDVersion[128];
};
using LPOSVERSIONINFOA = OSVERSIONINFOA*;

struct OSVERSIONINFOEXA {
    DWORD dwOSVersionInfoSize;
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
    CHAR szCSDVersion[128];
    WORD wServicePackMajor;
    WORD wServicePackMinor;
    WORD wSuiteMask;
    BYTE wProductType;
    BYTE wReserved;
};

constexpr LANGID MAKELANGID(WORD primary, WORD sub) {
    return static_cast<LANGID>((sub << 10) | primary);
}
