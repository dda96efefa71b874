// Which system this is.
#pragma once

#include "winnt.h"

WINBASEAPI BOOL WINAPI GetVersionExA(LPOSVERSIONINFOA version);
