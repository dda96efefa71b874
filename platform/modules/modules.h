// The modules of the process: shared objects that announced themselves, the system's own modules,
// and modules loaded as data.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform_module.h"

namespace machine {

using ModuleEntry = BOOL (*)(HINSTANCE, DWORD, LPVOID);

// A shared object becomes a module; its base address is its handle, its entry hears of threads.
struct SharedModule {
    HINSTANCE handle;
    ModuleEntry entry;
    const PlatformModuleStrings* strings;
};
void attachModule(const SharedModule& module);
void detachModule(HINSTANCE handle);

// Calls the entry of every attached module with DLL_THREAD_ATTACH or DLL_THREAD_DETACH.
void notifyModules(DWORD reason);

// A reference to a module by name, data modules included; null: no such module.
HMODULE loadModule(std::string_view name, bool asData);
HMODULE findModule(std::string_view name);
bool releaseModule(HMODULE module);  // false: not a module's handle
void releaseAllModules();

// The path of a module's file, null standing for the program; empty: not a module's handle, or a
// file that lies on no drive.
std::u16string moduleFile(HMODULE module);

// Lookups in one module; null or an empty result: not there.
FARPROC entryPoint(HMODULE module, const char* name);
std::string moduleString(HMODULE module, std::uint32_t id);
std::string moduleMessage(HMODULE module, std::uint32_t id);

}  // namespace machine
