// Code pages and locales.
#pragma once

#include "windef.h"

inline constexpr UINT CP_ACP = 0;
inline constexpr UINT CP_THREAD_ACP = 3;
inline constexpr UINT CP_UTF8 = 65001;

inline constexpr LCID LOCALE_SYSTEM_DEFAULT = 0x0800;
inline constexpr LCID LOCALE_USER_DEFAULT = 0x0400;
inline constexpr LANGID LANG_USER_DEFAULT = 0x0400;
inline constexpr DWORD NORM_IGNORECASE = 0x00000001;
inline constexpr int CSTR_LESS_THAN = 1;
inline constexpr int CSTR_EQUAL = 2;
inline constexpr int CSTR_GREATER_THAN = 3;

WINBASEAPI UINT WINAPI GetACP();
WINBASEAPI int WINAPI CompareStringA(LCID locale, DWORD flags, LPCSTR left, int leftLength,
                                     LPCSTR right, int rightLength);
