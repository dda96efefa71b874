// Reading and changing the environment.
#include <cstring>
#include <string>

#include "core/script.h"
#include "crtsecure.h"
#include "host/host_errors.h"
#include "processes/environment.h"

errno_t _dupenv_s(char** value, std::size_t* length, const char* name) try {
    if (const auto scripted = machine::callForCode<&_dupenv_s>(value, length, name)) {
        return scripted.code();
    }
    if (value == nullptr || name == nullptr) return EINVAL;
    *value = nullptr;
    if (length != nullptr) *length = 0;
    const auto found = machine::environmentVariable(name);
    if (!found) return 0;
    *value = ::strdup(found->c_str());
    if (*value == nullptr) return ENOMEM;
    if (length != nullptr) *length = found->size() + 1;
    return 0;
} catch (const std::exception&) {
    return machine::outOfMemory(ENOMEM);
}

int _putenv(const char* assignment) try {
    if (const auto scripted = machine::callForErrno<&_putenv>(assignment)) {
        return scripted.valueOr(-1);
    }
    const char* const sign = assignment == nullptr ? nullptr : std::strchr(assignment, '=');
    if (sign == nullptr || sign == assignment) return -1;
    const std::string name(assignment, sign);
    const std::string value(sign + 1);
    const bool set =
        machine::setEnvironmentVariable(name, value.empty() ? std::nullopt : std::optional(value));
    return set ? 0 : -1;
} catch (const std::exception&) {
    return machine::outOfMemory(-1);
}
