// The entry points that the system's modules offer to a lookup by name. Each module folder holds a
// table of its own and registers it here:
//
//     const machine::Export entryPoints[] = {{"GetVersionExA", &GetVersionExA}};
//     const machine::SystemModule kernel32("kernel32.dll", entryPoints);
#pragma once

#include <span>
#include <string_view>

#include "windef.h"

namespace machine {

struct Export {
    template <class Function>
    Export(std::string_view exportName, Function* entryPoint)
        : name(exportName),
          function(reinterpret_cast<FARPROC>(reinterpret_cast<void*>(entryPoint))) {}

    std::string_view name;  // as it is written: lookups regard case
    FARPROC function;
};

// A module of the system. Making one puts it into the list of all; both it and its table last as
// long as the process.
class SystemModule {
  public:
    SystemModule(std::string_view name, std::span<const Export> exports);
    SystemModule(const SystemModule&) = delete;
    SystemModule& operator=(const SystemModule&) = delete;

    // Null: the module has no such entry point.
    FARPROC entryPoint(std::string_view name) const;

  private:
    friend const SystemModule* systemModule(std::string_view name);

    std::string_view name_;
    std::span<const Export> exports_;
    const SystemModule* next_;
};

// The module of that name, extension included, without regard to case; null: there is none.
const SystemModule* systemModule(std::string_view name);

}  // namespace machine
