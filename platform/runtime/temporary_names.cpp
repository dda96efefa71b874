// Names for temporary files.
#include <unistd.h>

#include <atomic>
#include <cstring>
#include <optional>
#include <random>
#include <string>

#include "crtsecure.h"
#include "machine/environment.h"
#include "machine/lookup.h"
#include "machine/script.h"
#include "machine/text.h"

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

std::string inBase36(std::uint64_t number) {
    constexpr char digits[] = "0123456789abcdefghijklmnopqrstuvwxyz";
    std::string text;
    for (; number != 0; number /= 36) text.insert(text.begin(), digits[number % 36]);
    return text;
}

// No two calls on this host give the same number: the process stands in its upper half. The count
// begins by chance, so that it does not meet what an earlier process of the same number left.
std::string uniqueNumber() {
    static std::atomic<std::uint32_t> counter{std::random_device{}()};
    const auto process = static_cast<std::uint64_t>(::getpid()) << 32;
    return inBase36(process | counter.fetch_add(1, std::memory_order_relaxed));
}

}  // namespace

char* _tempnam(const char* directory, const char* prefix) {
    if (const auto scripted = machine::call("_tempnam", directory, prefix)) {
        return scripted.or_(static_cast<char*>(nullptr));
    }
    auto stem = folderFor(directory);
    if (!stem) return nullptr;
    const char16_t last = machine::fromAnsi(*stem).back();  // a byte may be half a character
    if (last != u'\\' && last != u'/') *stem += '\\';
    if (prefix != nullptr) *stem += prefix;
    constexpr int attempts = 100;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const auto name = *stem + uniqueNumber();
        if (!find(name).exists()) return ::strdup(name.c_str());
    }
    return nullptr;
}
