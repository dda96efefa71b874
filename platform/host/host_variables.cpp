// The environment of the process.
#include "host/host_variables.h"

#include <cstdlib>
#include <mutex>

namespace machine {

namespace {

std::mutex mutex;

}  // namespace

std::optional<std::string> hostVariable(const std::string& name) {
    const std::lock_guard lock(mutex);
    const char* const value = std::getenv(name.c_str());
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

bool setHostVariable(const std::string& name, const std::optional<std::string>& value) {
    const std::lock_guard lock(mutex);
    if (!value) return ::unsetenv(name.c_str()) == 0;
    return ::setenv(name.c_str(), value->c_str(), 1) == 0;
}

}  // namespace machine
