// Names for temporary files.
#include <cstring>
#include <optional>
#include <string>

#include "core/ansi.h"
#include "core/script.h"
#include "crtsecure.h"
#include "host/host_errors.h"
#include "host/temporary_names.h"
#include "names/lookup.h"
#include "processes/environment.h"

namespace {

machine::HostName find(const std::string& name) {
    const auto path = machine::parsePath(machine::fromAnsi(name));
    if (path.fileError() != 0) return {.path = {}, .error = path.fileError()};
    return machine::findOnHost(path);
}

bool isDirectory(const std::string& name) {
    const auto found = find(name);
    return found.exists() && found.isDirectory();
}

// The directory of TMP, else the one that is asked for, else the current one: the first that
// exists.
std::optional<std::string> folderFor(const char* wanted) {
    const auto variable = machine::environmentVariable("TMP");
    if (variable && isDirectory(*variable)) return variable;
    if (wanted != nullptr && isDirectory(wanted)) return wanted;
    const auto here = machine::currentDirectory();
    return here.fileError() == 0 ? std::optional(machine::toAnsi(here.text())) : std::nullopt;
}

}  // namespace

char* _tempnam(const char* directory, const char* prefix) try {
    if (const auto scripted = machine::callForErrno<&_tempnam>(directory, prefix)) {
        return scripted.valueOr(nullptr);
    }
    auto stem = folderFor(directory);
    if (!stem) return nullptr;
    const char16_t last = machine::fromAnsi(*stem).back();  // a byte may be half a character
    if (last != u'\\' && last != u'/') *stem += '\\';
    if (prefix != nullptr) *stem += prefix;
    constexpr int attempts = 100;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const auto number = machine::newTemporaryName();
        const auto name = *stem + number;
        if (number.empty()) return nullptr;
        if (!find(name).exists()) return ::strdup(name.c_str());
    }
    return nullptr;
} catch (const std::exception&) {
    return machine::outOfMemory(static_cast<char*>(nullptr));
}
