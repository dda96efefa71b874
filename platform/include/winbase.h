// Message texts, and the file operations that work on whole files.
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
