// Strings from a module's string table.
#include <algorithm>

#include "core/script.h"
#include "errhandlingapi.h"
#include "host/host_errors.h"
#include "modules/modules.h"
#include "winerror.h"
#include "winuser.h"

int WINAPI LoadStringA(HINSTANCE module, UINT id, LPSTR buffer, int size) try {
    if (const auto scripted = machine::call<&LoadStringA>(module, id, buffer, size)) {
        return scripted.valueOr(0);
    }
    if (buffer == nullptr || size <= 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const auto text = machine::moduleString(module, id);
    if (text.empty()) SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
    const auto length =
        text.copy(buffer, std::min(text.size(), static_cast<std::size_t>(size) - 1));
    buffer[length] = '\0';
    return static_cast<int>(length);
} catch (const std::exception&) {
    return machine::outOfMemory(0);
}
