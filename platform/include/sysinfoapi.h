// Which system this is.
#pragma once

#include "winnt.h"

// The length of the path, or the room that it needs when it does not fit.
WINBASEAPI UINT WINAPI GetSystemDirectoryA(LPSTR buffer, UINT size);
WINBASEAPI BOOL WINAPI GetVersionExA(LPOSVERSIONINFOA version);
