// What a call of the platform told.
#pragma once

#include <windows.h>

// The last error of a call that failed, or 0; the next call starts without one.
inline DWORD codeOf(bool succeeded) {
    const DWORD code = succeeded ? 0 : GetLastError();
    SetLastError(0);
    return code;
}
