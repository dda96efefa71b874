// What a shared object brings along to count as a module: its entry and its string table.
//
// A shared object that links jw32_platform_module gets a constructor that makes the module known
// and calls its entry, as the loader does with a DLL. It defines these two itself.
#pragma once

#include "windef.h"

struct PlatformModuleString {
    UINT id;
    const char* text;  // UTF-8
};

struct PlatformModuleStrings {
    const PlatformModuleString* first;
    std::size_t count;
};

extern "C" {
BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID reserved);
extern const PlatformModuleStrings platformModuleStrings;
}

// Called by the module's constructor and destructor.
WINBASEAPI void platformAttachModule(HINSTANCE handle, const PlatformModuleStrings* strings,
                                     BOOL (*entry)(HINSTANCE, DWORD, LPVOID));
WINBASEAPI void platformDetachModule(HINSTANCE handle);
