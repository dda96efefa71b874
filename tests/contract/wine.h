// Whether the Windows build runs on Wine, for the tests' known differences between it and Windows.
#pragma once

#include <windows.h>

inline bool onWine() {
    const HMODULE module = GetModuleHandleA("ntdll.dll");
    return module != nullptr && GetProcAddress(module, "wine_get_version") != nullptr;
}
