// The modules of the process, by handle and by name, and the references that callers hold.
#pragma once

#include <cstdint>
#include <mutex>
#include <string_view>

#include "modules/module.h"
#include "platform_module.h"

namespace machine {

void attachModule(HMODULE handle, const PlatformModule& module);
void detachModule(HMODULE handle);

// Calls the entry of every attached module with DLL_THREAD_ATTACH or DLL_THREAD_DETACH.
void notifyModules(DWORD reason);

// A reference to a module by name, data modules included; null: no such module.
HMODULE loadModule(std::string_view name, bool asData);
// The same without a reference, of modules that are loaded already.
HMODULE findModule(std::string_view name);
bool releaseModule(HMODULE module);  // false: not a module's handle

// A module that stays loaded while the object lives.
class UsedModule {
  public:
    explicit UsedModule(HMODULE handle);  // null: the program

    explicit operator bool() const { return module_ != nullptr; }  // false: not a module's handle
    const Module* operator->() const { return module_; }

  private:
    std::unique_lock<std::recursive_mutex> lock_;
    const Module* module_;
};

}  // namespace machine
