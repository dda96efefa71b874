// Threads. A thread made here tells every module of its start and end, as the loader does.
#pragma once

#include "windef.h"

using LPTHREAD_START_ROUTINE = DWORD (*)(LPVOID);

WINBASEAPI HANDLE WINAPI CreateThread(LPSECURITY_ATTRIBUTES security, SIZE_T stackSize,
                                      LPTHREAD_START_ROUTINE start, LPVOID parameter, DWORD flags,
                                      LPDWORD threadId);
WINBASEAPI DWORD WINAPI GetCurrentThreadId();
WINBASEAPI DWORD WINAPI GetCurrentProcessId();
