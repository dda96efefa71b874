// Bounded copying and appending.
#include <cstring>

#include "core/script.h"
#include "crtsecure.h"
#include "host/host_errors.h"

char* _strdup(const char* text) try {
    if (const auto scripted = machine::callForErrno<&_strdup>(text)) {
        return scripted.valueOr(nullptr);
    }
    return text == nullptr ? nullptr : ::strdup(text);
} catch (const std::exception&) {
    return machine::outOfMemory(static_cast<char*>(nullptr));
}

errno_t strcpy_s(char* target, std::size_t size, const char* source) {
    if (target == nullptr || size == 0) return EINVAL;
    target[0] = '\0';
    if (source == nullptr) return EINVAL;
    const auto length = std::strlen(source);
    if (length >= size) return ERANGE;
    std::memcpy(target, source, length + 1);
    return 0;
}

errno_t strcat_s(char* target, std::size_t size, const char* source) {
    if (target == nullptr || size == 0) return EINVAL;
    const auto used = ::strnlen(target, size);
    if (used == size) return EINVAL;
    const auto result = strcpy_s(target + used, size - used, source);
    if (result != 0) target[0] = '\0';
    return result;
}
