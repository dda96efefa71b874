// Strings from a module's string table.
#include <algorithm>

#include "core/ansi.h"
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
    const machine::UsedModule used(module);
    DWORD error = ERROR_RESOURCE_DATA_NOT_FOUND;
    const auto text = used ? machine::toAnsi(used->string(id, error)) : std::string();
    if (text.empty()) SetLastError(error);
    const auto length =
        text.copy(buffer, std::min(text.size(), static_cast<std::size_t>(size) - 1));
    buffer[length] = '\0';
    return static_cast<int>(length);
} catch (const std::exception&) {
    return machine::outOfMemory(0);
}
