// Backslashes at the end of a path, and its root.
#include <cstring>

#include "core/script.h"
#include "host/host_errors.h"
#include "path_text.h"
#include "shlwapi.h"

LPSTR WINAPI PathAddBackslashA(LPSTR path) try {
    if (const auto scripted = machine::call<&PathAddBackslashA>(machine::Text{path})) {
        return scripted.valueOr(nullptr);
    }
    const auto length = path == nullptr ? MAX_PATH : std::strlen(path);
    if (length >= MAX_PATH) return nullptr;
    const auto places = backslashesOf(path);
    const bool isThere = !places.empty() && places.back() + 1 == length;
    if (isThere || length == 0) return path + length;
    if (length + 1 >= MAX_PATH) return nullptr;
    std::memcpy(path + length, "\\", 2);
    return path + length + 1;
} catch (const std::exception&) {
    return machine::outOfMemory(LPSTR{nullptr});
}

LPSTR WINAPI PathRemoveBackslashA(LPSTR path) try {
    if (const auto scripted = machine::call<&PathRemoveBackslashA>(machine::Text{path})) {
        return scripted.valueOr(nullptr);
    }
    if (path == nullptr) return nullptr;
    const auto places = backslashesOf(path);
    const auto length = std::strlen(path);
    if (places.empty() || places.back() + 1 != length) return path + length;
    if (rootLength(path) < length) path[places.back()] = '\0';
    return path + places.back();
} catch (const std::exception&) {
    return machine::outOfMemory(LPSTR{nullptr});
}

BOOL WINAPI PathStripToRootA(LPSTR path) try {
    if (const auto scripted = machine::call<&PathStripToRootA>(machine::Text{path}))
        return scripted.valueOr(FALSE);
    if (path == nullptr) return FALSE;
    if (const auto length = rootLength(path)) {
        path[length] = '\0';
        return TRUE;
    }
    const bool hasDrive = path[0] != '\0' && path[1] == ':';
    path[hasDrive ? 2 : 0] = '\0';
    return FALSE;
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
