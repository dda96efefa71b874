// What a shared object or a program brings along to count as a module: its entry and its resources.
//
// The CMake function jw32_target_resources adds what makes the module known when it is loaded, and
// calls its entry, as the loader of Windows does. The entry, DllMain, may be left out.
#pragma once

#include "windef.h"

struct PlatformModule {
    // Resources as a resource compiler writes them, one file after the other; they last as long as
    // the module. Null: there are none.
    const void* resources;
    std::size_t resourceSize;                       // bytes
    BOOL(WINAPI* entry)(HINSTANCE, DWORD, LPVOID);  // null: nobody is called
};

// Called by the module's constructor and destructor. The handle is the module's base address.
WINBASEAPI void platformAttachModule(HINSTANCE handle, const PlatformModule* module);
WINBASEAPI void platformDetachModule(HINSTANCE handle);
