// Conversions between code pages and wide text, and lengths of text.
#pragma once

#include "windef.h"

WINBASEAPI int WINAPI MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR source,
                                          int sourceLength, LPWSTR target, int targetSize);
WINBASEAPI int WINAPI WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR source,
                                          int sourceLength, LPSTR target, int targetSize,
                                          LPCSTR defaultCharacter, LPBOOL usedDefault);
WINBASEAPI int WINAPI lstrlenA(LPCSTR text);
WINBASEAPI int WINAPI lstrlenW(LPCWSTR text);
