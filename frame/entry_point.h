// Entry points that not every system has, looked up by name.
#pragma once

#include <windows.h>

/// The entry point of a module as a function of the given type; null where the module lacks it.
template <class Function>
Function* entryPoint(HMODULE module, const char* name) {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}
