// The umbrella header of the Windows API: just what the library, its users and the tests call.
#pragma once

#include "windef.h"
#include "winerror.h"
#include "winnt.h"

#include "crtsecure.h"
#include "errhandlingapi.h"
#include "fileapi.h"
#include "handleapi.h"
#include "ioapiset.h"
#include "libloaderapi.h"
#include "memoryapi.h"
#include "processthreadsapi.h"
#include "stringapiset.h"
#include "synchapi.h"
#include "sysinfoapi.h"
#include "winbase.h"
#include "winnls.h"
#include "winuser.h"
