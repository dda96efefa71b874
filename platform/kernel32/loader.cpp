// Loading of modules and lookup of their entry points.
#include "core/ansi.h"
#include "core/script.h"
#include "errhandlingapi.h"
#include "host/host_errors.h"
#include "libloaderapi.h"
#include "modules/modules.h"
#include "winerror.h"

namespace {

HMODULE loadOrReport(LPCSTR name, bool asData) {
    const HMODULE module = name != nullptr ? machine::loadModule(name, asData) : nullptr;
    if (module == nullptr) {
        SetLastError(name != nullptr ? ERROR_MOD_NOT_FOUND : ERROR_INVALID_PARAMETER);
    }
    return module;
}

}  // namespace

HMODULE WINAPI LoadLibraryA(LPCSTR name) try {
    if (const auto scripted = machine::call<&LoadLibraryA>(name)) {
        return scripted.valueOr(nullptr);
    }
    return loadOrReport(name, false);
} catch (const std::exception&) {
    return machine::outOfMemory(HMODULE{nullptr});
}

HMODULE WINAPI LoadLibraryExA(LPCSTR name, HANDLE reserved, DWORD flags) try {
    if (const auto scripted = machine::call<&LoadLibraryExA>(name, reserved, flags)) {
        return scripted.valueOr(nullptr);
    }
    return loadOrReport(name, (flags & LOAD_LIBRARY_AS_DATAFILE) != 0);
} catch (const std::exception&) {
    return machine::outOfMemory(HMODULE{nullptr});
}

BOOL WINAPI FreeLibrary(HMODULE module) try {
    const auto free = [=] { return machine::releaseModule(module); };
    if (const auto scripted = machine::release<&FreeLibrary>(free, module)) {
        return scripted.valueOr(FALSE);
    }
    return free() ? TRUE : machine::failWith(ERROR_MOD_NOT_FOUND, FALSE);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}

FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name) try {
    if (const auto scripted = machine::call<&GetProcAddress>(module, name)) {
        return scripted.valueOr(nullptr);
    }
    const machine::UsedModule used(module);
    const FARPROC function = used ? used->entryPoint(name) : nullptr;
    if (function == nullptr) SetLastError(ERROR_PROC_NOT_FOUND);
    return function;
} catch (const std::exception&) {
    return machine::outOfMemory(FARPROC{nullptr});
}

HMODULE WINAPI GetModuleHandleA(LPCSTR name) try {
    if (const auto scripted = machine::call<&GetModuleHandleA>(name)) {
        return scripted.valueOr(nullptr);
    }
    const HMODULE module =
        name != nullptr ? machine::findModule(name) : machine::UsedModule(nullptr)->handle();
    if (module == nullptr) SetLastError(ERROR_MOD_NOT_FOUND);
    return module;
} catch (const std::exception&) {
    return machine::outOfMemory(HMODULE{nullptr});
}

DWORD WINAPI GetModuleFileNameA(HMODULE module, LPSTR buffer, DWORD size) try {
    if (const auto scripted = machine::call<&GetModuleFileNameA>(module, buffer, size)) {
        return scripted.valueOr(0);
    }
    const machine::UsedModule used(module);
    const auto file = used ? machine::toAnsi(used->file()) : std::string();
    if (file.empty() || size == 0) {
        SetLastError(file.empty() ? ERROR_MOD_NOT_FOUND : ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    const auto stored = file.copy(buffer, size - 1);
    buffer[stored] = '\0';
    if (stored == file.size()) return static_cast<DWORD>(stored);
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return size;
} catch (const std::exception&) {
    return machine::outOfMemory(DWORD{0});
}
