// The calling thread's last error and the process's error mode.
#pragma once

#include "windef.h"

inline constexpr UINT SEM_FAILCRITICALERRORS = 0x0001;

WINBASEAPI DWORD WINAPI GetLastError();
WINBASEAPI void WINAPI SetLastError(DWORD code);
WINBASEAPI UINT WINAPI SetErrorMode(UINT mode);
