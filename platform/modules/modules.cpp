// The modules of the process and the references to them.
#include "modules/modules.h"

#include <algorithm>
#include <list>
#include <memory>

#include "core/in_use.h"
#include "libloaderapi.h"
#include "modules/announced_module.h"
#include "modules/named_module.h"

namespace machine {

namespace {

struct Loaded {
    std::unique_ptr<Module> module;
    bool stays;  // without references too
    std::uint64_t references = 0;
};

// Recursive, and a list: a module's entry may look modules up and load others.
std::recursive_mutex mutex;
std::list<Loaded> loadedModules;

// Every process has this module, whoever asks for it or lets it go.
constexpr std::string_view alwaysLoaded = "kernel32.dll";

// Names of modules may come without their ".dll".
std::string withExtension(std::string_view name) {
    const bool bare = name.find('.') == std::string_view::npos;
    return std::string(name) + (bare ? ".dll" : "");
}

template <class Matches>
Loaded* findLoaded(Matches matches) {
    const auto found = std::ranges::find_if(
        loadedModules, [&](const Loaded& loaded) { return matches(*loaded.module); });
    return found == loadedModules.end() ? nullptr : &*found;
}

Loaded* byHandle(HMODULE handle) {
    return findLoaded([handle](const Module& module) { return module.handle() == handle; });
}

Loaded* byName(std::string_view name, bool asData) {
    return findLoaded([&](const Module& module) { return module.answersTo(name, asData); });
}

Loaded& add(std::unique_ptr<Module> module, bool stays) {
    loadedModules.push_back(Loaded{std::move(module), stays});
    return loadedModules.back();
}

Loaded& addNamed(const std::string& name, bool asData) {
    auto module = std::make_unique<NamedModule>(name, asData);
    const bool stays = module->answersTo(alwaysLoaded, false);
    return add(std::move(module), stays);
}

// A program that did not announce itself has no resources.
Loaded& program() {
    auto* const announced = byHandle(programHandle());
    if (announced != nullptr) return *announced;
    return add(std::make_unique<AnnouncedModule>(programHandle(), PlatformModule{}), true);
}

void unloadUnused() {
    std::erase_if(loadedModules,
                  [](const Loaded& loaded) { return loaded.references == 0 && !loaded.stays; });
}

std::uint64_t referenceCount() {
    const std::lock_guard lock(mutex);
    std::uint64_t sum = 0;
    for (const auto& loaded : loadedModules) sum += loaded.references;
    return sum;
}

const CountedTable counted("module references", referenceCount);

}  // namespace

void attachModule(HMODULE handle, const PlatformModule& module) {
    const std::lock_guard lock(mutex);
    add(std::make_unique<AnnouncedModule>(handle, module), true).module->notify(DLL_PROCESS_ATTACH);
}

void detachModule(HMODULE handle) {
    const std::lock_guard lock(mutex);
    const auto* const loaded = byHandle(handle);
    if (loaded == nullptr) return;
    loaded->module->notify(DLL_PROCESS_DETACH);
    std::erase_if(loadedModules,
                  [handle](const Loaded& other) { return other.module->handle() == handle; });
}

void notifyModules(DWORD reason) {
    const std::lock_guard lock(mutex);
    for (const auto& loaded : loadedModules) loaded.module->notify(reason);
}

HMODULE loadModule(std::string_view name, bool asData) {
    const auto full = withExtension(name);
    if (!NamedModule::exists(full)) return nullptr;
    const std::lock_guard lock(mutex);
    auto* loaded = byName(full, asData);
    if (loaded == nullptr) loaded = &addNamed(full, asData);
    ++loaded->references;
    return loaded->module->handle();
}

HMODULE findModule(std::string_view name) {
    const auto full = withExtension(name);
    const std::lock_guard lock(mutex);
    auto* loaded = byName(full, false);
    const NamedModule wanted(full, false);
    if (loaded == nullptr && wanted.answersTo(alwaysLoaded, false)) {
        loaded = &addNamed(full, false);
    }
    return loaded == nullptr ? nullptr : loaded->module->handle();
}

bool releaseModule(HMODULE handle) {
    const std::lock_guard lock(mutex);
    auto* const loaded = byHandle(handle);
    if (loaded == nullptr) return false;
    if (loaded->references > 0) --loaded->references;
    unloadUnused();
    return true;
}

UsedModule::UsedModule(HMODULE handle) : lock_(mutex) {
    const auto* const loaded = handle == nullptr ? &program() : byHandle(handle);
    module_ = loaded == nullptr ? nullptr : loaded->module.get();
}

}  // namespace machine

void platformAttachModule(HINSTANCE handle, const PlatformModule* module) {
    machine::attachModule(handle, *module);
}

void platformDetachModule(HINSTANCE handle) {
    machine::detachModule(handle);
}
