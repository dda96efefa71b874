// Functions on the text of paths. Buffers have MAX_PATH characters.
#pragma once

#include "windef.h"

inline constexpr UINT GCT_INVALID = 0x0000;
inline constexpr UINT GCT_LFNCHAR = 0x0001;
inline constexpr UINT GCT_SHORTCHAR = 0x0002;
inline constexpr UINT GCT_WILD = 0x0004;
inline constexpr UINT GCT_SEPARATOR = 0x0008;

WINBASEAPI UINT WINAPI PathGetCharTypeA(UCHAR character);
WINBASEAPI LPSTR WINAPI PathAddBackslashA(LPSTR path);
WINBASEAPI LPSTR WINAPI PathRemoveBackslashA(LPSTR path);
WINBASEAPI BOOL WINAPI PathCanonicalizeA(LPSTR target, LPCSTR path);
WINBASEAPI BOOL WINAPI PathStripToRootA(LPSTR path);
WINBASEAPI BOOL WINAPI PathIsSameRootW(LPCWSTR left, LPCWSTR right);
WINBASEAPI BOOL WINAPI PathIsUNCW(LPCWSTR path);
