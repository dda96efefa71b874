// Message texts, file operations that work on whole files, the global heap, and mappings.
#pragma once

#include <cstdarg>

#include "windef.h"

inline constexpr DWORD FORMAT_MESSAGE_IGNORE_INSERTS = 0x00000200;
inline constexpr DWORD FORMAT_MESSAGE_FROM_HMODULE = 0x00000800;
inline constexpr DWORD FORMAT_MESSAGE_FROM_SYSTEM = 0x00001000;

WINBASEAPI DWORD WINAPI FormatMessageA(DWORD flags, LPCVOID source, DWORD messageId,
                                       DWORD languageId, LPSTR buffer, DWORD size,
                                       va_list* arguments);

WINBASEAPI BOOL WINAPI CopyFileW(LPCWSTR from, LPCWSTR to, BOOL failIfExists);
WINBASEAPI BOOL WINAPI MoveFileW(LPCWSTR from, LPCWSTR to);

inline constexpr UINT GMEM_FIXED = 0x0000;
inline constexpr UINT GMEM_ZEROINIT = 0x0040;

WINBASEAPI HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T size);
WINBASEAPI LPVOID WINAPI GlobalLock(HGLOBAL block);
WINBASEAPI BOOL WINAPI GlobalUnlock(HGLOBAL block);
WINBASEAPI HGLOBAL WINAPI GlobalFree(HGLOBAL block);

WINBASEAPI HANDLE WINAPI CreateFileMappingA(HANDLE file, LPSECURITY_ATTRIBUTES security,
                                            DWORD protection, DWORD sizeHigh, DWORD sizeLow,
                                            LPCSTR name);
WINBASEAPI HANDLE WINAPI OpenFileMappingA(DWORD access, BOOL inherit, LPCSTR name);
