// The environment of the process.
#include "machine/environment.h"

#include <cstdlib>
#include <mutex>

#include "machine/text.h"

namespace machine {

namespace {

std::mutex mutex;

}  // namespace

std::optional<std::string> hostVariable(const std::string& name) {
    const std::lock_guard lock(mutex);
    const char* const value = std::getenv(name.c_str());
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

std::optional<std::string> environmentVariable(const std::string& name) {
    const auto value = hostVariable(name);
    return value ? std::optional(toAnsi(fromUtf8(*value))) : std::nullopt;
}

bool setEnvironmentVariable(const std::string& name, const std::optional<std::string>& value) {
    const std::lock_guard lock(mutex);
    if (!value) return ::unsetenv(name.c_str()) == 0;
    return ::setenv(name.c_str(), toUtf8(fromAnsi(*value)).c_str(), 1) == 0;
}

}  // namespace machine
