// Which system this is, and what it is made of.
#pragma once

#include "winnt.h"

// The length of the path, or the room that it needs when it does not fit.
WINBASEAPI UINT WINAPI GetSystemDirectoryA(LPSTR buffer, UINT size);
WINBASEAPI BOOL WINAPI GetVersionExA(LPOSVERSIONINFOA version);

struct SYSTEM_INFO {
    WORD wProcessorArchitecture;
    WORD wReserved;
    DWORD dwPageSize;
    LPVOID lpMinimumApplicationAddress;
    LPVOID lpMaximumApplicationAddress;
    DWORD_PTR dwActiveProcessorMask;
    DWORD dwNumberOfProcessors;
    DWORD dwProcessorType;
    DWORD dwAllocationGranularity;
    WORD wProcessorLevel;
    WORD wProcessorRevision;
};
using LPSYSTEM_INFO = SYSTEM_INFO*;

WINBASEAPI void WINAPI GetSystemInfo(LPSYSTEM_INFO info);
