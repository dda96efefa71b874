// Control of devices and file systems.
#pragma once

#include "minwinbase.h"

WINBASEAPI BOOL WINAPI DeviceIoControl(HANDLE device, DWORD code, LPVOID input, DWORD inputSize,
                                       LPVOID output, DWORD outputSize, LPDWORD stored,
                                       LPOVERLAPPED overlapped);
