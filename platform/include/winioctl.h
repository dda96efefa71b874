// Control codes of devices and file systems.
#pragma once

#include "windef.h"

inline constexpr DWORD FSCTL_SET_REPARSE_POINT = 0x000900A4;
