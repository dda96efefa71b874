// The basic types of the Windows API, with the widths that they have there.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform_export.h"

static_assert(sizeof(wchar_t) == 2, "compile with -fshort-wchar: wide text is UTF-16 here");

using BYTE = unsigned char;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using ULONG = std::uint32_t;
using LONG = std::int32_t;
using INT = std::int32_t;
using BOOL = std::int32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using DWORDLONG = std::uint64_t;
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using DWORD_PTR = std::uintptr_t;
using SIZE_T = std::size_t;
using LANGID = WORD;
using LCID = DWORD;
using HRESULT = LONG;

using CHAR = char;
using UCHAR = unsigned char;
using WCHAR = wchar_t;
using LPSTR = char*;
using LPCSTR = const char*;
using LPWSTR = wchar_t*;
using LPCWSTR = const wchar_t*;
using PVOID = void*;
using LPVOID = void*;
using LPCVOID = const void*;
using LPBYTE = BYTE*;
using LPWORD = WORD*;
using LPDWORD = DWORD*;
using PDWORD = DWORD*;
using LPLONG = LONG*;
using PLONG = LONG*;
using LPBOOL = BOOL*;

using HANDLE = void*;
using LPHANDLE = HANDLE*;
struct HINSTANCE__;
using HINSTANCE = HINSTANCE__*;
using HMODULE = HINSTANCE;
using HGLOBAL = HANDLE;
struct HWND__;
using HWND = HWND__*;
using FARPROC = INT_PTR (*)();

inline constexpr BOOL FALSE = 0;
inline constexpr BOOL TRUE = 1;
inline constexpr DWORD MAX_PATH = 260;

struct FILETIME {
    DWORD dwLowDateTime;   // 100 ns units since 1601-01-01 UTC, low half
    DWORD dwHighDateTime;  // high half
};
using LPFILETIME = FILETIME*;

struct SECURITY_ATTRIBUTES {
    DWORD nLength;
    LPVOID lpSecurityDescriptor;
    BOOL bInheritHandle;
};
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;

struct OVERLAPPED;
using LPOVERLAPPED = OVERLAPPED*;
