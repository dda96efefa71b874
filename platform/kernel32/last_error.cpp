// The calling thread's last error and the process's error mode.
#include <atomic>

#include "core/script.h"
#include "errhandlingapi.h"

namespace {
thread_local DWORD lastError = 0;
std::atomic<UINT> errorMode{0};
}  // namespace

DWORD WINAPI GetLastError() {
    if (const auto scripted = machine::query<&GetLastError>()) return scripted.value();
    return lastError;
}

void WINAPI SetLastError(DWORD code) {
    lastError = code;
}

UINT WINAPI SetErrorMode(UINT mode) {
    if (const auto scripted = machine::query<&SetErrorMode>(mode)) return scripted.value();
    return errorMode.exchange(mode);
}
