// The one list of the system's modules.
#include "modules/exports.h"

#include "text/case_mapping.h"
#include "text/utf16.h"

namespace machine {

namespace {

// Ready before any module registers itself, in whatever order that happens.
constinit const SystemModule* firstModule = nullptr;

}  // namespace

SystemModule::SystemModule(std::string_view name, std::span<const Export> exports)
    : name_(name), exports_(exports), next_(firstModule) {
    firstModule = this;
}

FARPROC SystemModule::entryPoint(std::string_view name) const {
    for (const auto& entry : exports_) {
        if (entry.name == name) return entry.function;
    }
    return nullptr;
}

const SystemModule* systemModule(std::string_view name) {
    const auto wanted = fromUtf8(name);
    const auto* module = firstModule;
    while (module != nullptr && !equalIgnoringCase(fromUtf8(module->name_), wanted)) {
        module = module->next_;
    }
    return module;
}

}  // namespace machine
