// The modules of the process, their references and what can be looked up in them.
#include "modules/modules.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <vector>

#include "core/in_use.h"
#include "core/machine.h"
#include "core/script.h"
#include "libloaderapi.h"
#include "modules/exports.h"
#include "names/paths.h"
#include "text/case_mapping.h"
#include "text/utf16.h"

namespace machine {

namespace {

// A module that was asked for by name. Its address is its handle.
struct NamedModule {
    std::string name;
    bool asData;
    std::uint64_t references;
};

std::recursive_mutex mutex;  // recursive: a module's entry may look modules up
std::vector<SharedModule> sharedModules;
std::vector<std::unique_ptr<NamedModule>> namedModules;

// Every process has this module, whoever asks for it or lets it go.
constexpr std::string_view alwaysLoaded = "kernel32.dll";

bool sameName(std::string_view left, std::string_view right) {
    return equalIgnoringCase(fromUtf8(left), fromUtf8(right));
}

// Names of modules may come without their ".dll".
std::string withExtension(std::string_view name) {
    const bool bare = name.find('.') == std::string_view::npos;
    return std::string(name) + (bare ? ".dll" : "");
}

const DataModule* dataModule(std::string_view name) {
    const auto& modules = current().dataModules;
    const auto found = std::find_if(modules.begin(), modules.end(), [&](const DataModule& module) {
        return sameName(module.name, name);
    });
    return found == modules.end() ? nullptr : &*found;
}

HMODULE handleOf(NamedModule& module) {
    return reinterpret_cast<HMODULE>(&module);
}

NamedModule* named(HMODULE handle) {
    for (const auto& module : namedModules) {
        if (handleOf(*module) == handle) return module.get();
    }
    return nullptr;
}

NamedModule* named(std::string_view name, bool asData) {
    for (const auto& module : namedModules) {
        if (sameName(module->name, name) && module->asData == asData) return module.get();
    }
    return nullptr;
}

NamedModule& addNamed(const std::string& name, bool asData) {
    namedModules.push_back(std::make_unique<NamedModule>(NamedModule{name, asData, 0}));
    return *namedModules.back();
}

void unloadUnused() {
    std::erase_if(namedModules, [](const auto& module) {
        const bool stays = !module->asData && sameName(module->name, alwaysLoaded);
        return module->references == 0 && !stays;
    });
}

const SharedModule* shared(HMODULE handle) {
    for (const auto& module : sharedModules) {
        if (module.handle == handle) return &module;
    }
    return nullptr;
}

std::string textOf(const std::vector<std::pair<std::uint32_t, std::string>>& texts,
                   std::uint32_t id) {
    const auto found = std::find_if(texts.begin(), texts.end(),
                                    [&](const auto& text) { return text.first == id; });
    return found == texts.end() ? std::string() : found->second;
}

std::uint64_t referenceCount() {
    const std::lock_guard lock(mutex);
    std::uint64_t sum = 0;
    for (const auto& module : namedModules) sum += module->references;
    return sum;
}

const CountedTable counted("module references", referenceCount);

// The host's file as a path of the interface; empty: it lies on no drive.
std::u16string drivePath(const std::string& host) {
    const std::unique_ptr<char, void (*)(void*)> file(::realpath(host.c_str(), nullptr), std::free);
    const auto path = file == nullptr ? Path{} : pathOfHost(file.get());
    return path.kind == Path::Kind::File ? path.text() : std::u16string();
}

}  // namespace

void attachModule(const SharedModule& module) {
    const std::lock_guard lock(mutex);
    sharedModules.push_back(module);
    module.entry(module.handle, DLL_PROCESS_ATTACH, nullptr);
}

void detachModule(HINSTANCE handle) {
    const std::lock_guard lock(mutex);
    if (const auto* const module = shared(handle)) {
        module->entry(handle, DLL_PROCESS_DETACH, nullptr);
        std::erase_if(sharedModules, [&](const auto& other) { return other.handle == handle; });
    }
}

void notifyModules(DWORD reason) {
    const std::lock_guard lock(mutex);
    for (const auto& module : sharedModules) module.entry(module.handle, reason, nullptr);
}

HMODULE loadModule(std::string_view name, bool asData) {
    const auto full = withExtension(name);
    if (systemModule(full) == nullptr && dataModule(full) == nullptr) return nullptr;
    const std::lock_guard lock(mutex);
    auto* module = named(full, asData);
    if (module == nullptr) module = &addNamed(full, asData);
    ++module->references;
    return handleOf(*module);
}

HMODULE findModule(std::string_view name) {
    const auto full = withExtension(name);
    const std::lock_guard lock(mutex);
    auto* module = named(full, false);
    if (module == nullptr && sameName(full, alwaysLoaded)) module = &addNamed(full, false);
    return module == nullptr ? nullptr : handleOf(*module);
}

bool releaseModule(HMODULE handle) {
    const std::lock_guard lock(mutex);
    auto* const module = named(handle);
    if (module == nullptr) return false;
    if (module->references > 0) --module->references;
    unloadUnused();
    return true;
}

void releaseAllModules() {
    const std::lock_guard lock(mutex);
    for (const auto& module : namedModules) module->references = 0;
    unloadUnused();
}

std::u16string moduleFile(HMODULE handle) {
    if (handle == nullptr) return drivePath("/proc/self/exe");
    const std::lock_guard lock(mutex);
    if (const auto* const module = named(handle)) {
        return fromUtf8(current().windowsDirectory + "\\System32\\" + module->name);
    }
    Dl_info info{};
    const bool isShared = shared(handle) != nullptr && ::dladdr(handle, &info) != 0;
    return isShared ? drivePath(info.dli_fname) : std::u16string();
}

FARPROC entryPoint(HMODULE handle, const char* name) {
    const std::lock_guard lock(mutex);
    const auto* const module = named(handle);
    if (module == nullptr || detail::isMissing(module->name, name)) return nullptr;
    const auto* const exports = systemModule(module->name);
    return exports != nullptr ? exports->entryPoint(name) : nullptr;
}

std::string moduleString(HMODULE handle, std::uint32_t id) {
    const std::lock_guard lock(mutex);
    if (const auto* const module = named(handle)) {
        const auto* const data = dataModule(module->name);
        return data != nullptr ? textOf(data->strings, id) : std::string();
    }
    const auto* const module = shared(handle);
    if (module == nullptr) return {};
    const auto* const first = module->strings->first;
    const auto* const last = first + module->strings->count;
    const auto* const found =
        std::find_if(first, last, [&](const auto& string) { return string.id == id; });
    return found == last ? std::string() : std::string(found->text);
}

std::string moduleMessage(HMODULE handle, std::uint32_t id) {
    const std::lock_guard lock(mutex);
    const auto* const module = named(handle);
    const auto* const data = module != nullptr ? dataModule(module->name) : nullptr;
    return data != nullptr ? textOf(data->messages, id) : std::string();
}

}  // namespace machine

void platformAttachModule(HINSTANCE handle, const PlatformModuleStrings* strings,
                          BOOL (*entry)(HINSTANCE, DWORD, LPVOID)) {
    machine::attachModule({handle, entry, strings});
}

void platformDetachModule(HINSTANCE handle) {
    machine::detachModule(handle);
}
