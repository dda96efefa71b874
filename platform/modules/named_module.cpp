// The system's modules and the machine's own texts, looked up in the tables that describe them.
#include "modules/named_module.h"

#include <algorithm>

#include "core/machine.h"
#include "core/script.h"
#include "modules/exports.h"
#include "text/case_mapping.h"
#include "text/utf16.h"
#include "winerror.h"

namespace machine {

namespace {

bool sameName(std::string_view left, std::string_view right) {
    return equalIgnoringCase(fromUtf8(left), fromUtf8(right));
}

// What the machine in force has under that name; null: nothing.
const DataModule* dataModule(std::string_view name) {
    const auto& modules = current().dataModules;
    const auto found = std::ranges::find_if(
        modules, [&](const DataModule& module) { return sameName(module.name, name); });
    return found == modules.end() ? nullptr : &*found;
}

std::u16string textOf(const std::vector<std::pair<std::uint32_t, std::string>>& texts,
                      std::uint32_t id) {
    const auto found =
        std::ranges::find_if(texts, [id](const auto& text) { return text.first == id; });
    return found == texts.end() ? std::u16string() : fromUtf8(found->second);
}

}  // namespace

bool NamedModule::exists(std::string_view name) {
    return systemModule(name) != nullptr || dataModule(name) != nullptr;
}

HMODULE NamedModule::handle() const {
    return reinterpret_cast<HMODULE>(const_cast<NamedModule*>(this));
}

std::u16string NamedModule::file() const {
    return fromUtf8(current().windowsDirectory + "\\System32\\" + name_);
}

FARPROC NamedModule::entryPoint(std::string_view name) const {
    const auto* const exports = systemModule(name_);
    if (exports == nullptr || detail::isMissing(name_, name)) return nullptr;
    return exports->entryPoint(name);
}

std::u16string NamedModule::string(UINT id, DWORD& error) const {
    const auto* const data = dataModule(name_);
    error = data == nullptr ? ERROR_RESOURCE_DATA_NOT_FOUND : ERROR_RESOURCE_NAME_NOT_FOUND;
    return data == nullptr ? std::u16string() : textOf(data->strings, id);
}

std::u16string NamedModule::message(DWORD id, LANGID) const {
    const auto* const data = dataModule(name_);
    return data == nullptr ? std::u16string() : textOf(data->messages, id);
}

bool NamedModule::answersTo(std::string_view name, bool asData) const {
    return asData == asData_ && sameName(name, name_);
}

}  // namespace machine
