// Handles of every kind.
#pragma once

#include "windef.h"

// All bits set, as a value that no handle has.
inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(static_cast<INT_PTR>(-1));

WINBASEAPI BOOL WINAPI CloseHandle(HANDLE handle);
