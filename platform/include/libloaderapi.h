// Modules, their entry points and their strings.
#pragma once

#include "windef.h"

inline constexpr DWORD LOAD_LIBRARY_AS_DATAFILE = 0x00000002;
inline constexpr DWORD DLL_PROCESS_DETACH = 0;
inline constexpr DWORD DLL_PROCESS_ATTACH = 1;
inline constexpr DWORD DLL_THREAD_ATTACH = 2;
inline constexpr DWORD DLL_THREAD_DETACH = 3;

WINBASEAPI HMODULE WINAPI LoadLibraryA(LPCSTR name);
WINBASEAPI HMODULE WINAPI LoadLibraryExA(LPCSTR name, HANDLE reserved, DWORD flags);
WINBASEAPI BOOL WINAPI FreeLibrary(HMODULE module);
WINBASEAPI FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name);
WINBASEAPI HMODULE WINAPI GetModuleHandleA(LPCSTR name);
// Null stands for the program. A path that does not fit is cut, with ERROR_INSUFFICIENT_BUFFER.
WINBASEAPI DWORD WINAPI GetModuleFileNameA(HMODULE module, LPSTR buffer, DWORD size);
