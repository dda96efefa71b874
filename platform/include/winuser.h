// Strings from a module's string table.
#pragma once

#include "windef.h"

WINBASEAPI int WINAPI LoadStringA(HINSTANCE module, UINT id, LPSTR buffer, int size);
