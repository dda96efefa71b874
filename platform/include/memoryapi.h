// Pages of memory, and views of mappings.
#pragma once

#include "winnt.h"

inline constexpr DWORD FILE_MAP_COPY = 0x0001;
inline constexpr DWORD FILE_MAP_WRITE = 0x0002;
inline constexpr DWORD FILE_MAP_READ = 0x0004;
inline constexpr DWORD FILE_MAP_ALL_ACCESS = 0x000F001F;

WINBASEAPI LPVOID WINAPI VirtualAlloc(LPVOID address, SIZE_T size, DWORD kind, DWORD protection);
WINBASEAPI BOOL WINAPI VirtualFree(LPVOID address, SIZE_T size, DWORD kind);

WINBASEAPI LPVOID WINAPI MapViewOfFile(HANDLE mapping, DWORD access, DWORD offsetHigh,
                                       DWORD offsetLow, SIZE_T length);
WINBASEAPI BOOL WINAPI UnmapViewOfFile(LPCVOID view);
