// The end of a handle of any kind but a search.
#include "core/handles.h"
#include "core/script.h"
#include "handleapi.h"
#include "host/host_errors.h"
#include "winerror.h"

BOOL WINAPI CloseHandle(HANDLE handle) try {
    if (const auto scripted = machine::call<&CloseHandle>(handle)) return scripted.valueOr(FALSE);
    const bool isSearch = machine::kindOf(handle) == machine::ObjectKind::Search;
    if (!isSearch && machine::closeObject(handle)) return TRUE;
    return machine::failWith(ERROR_INVALID_HANDLE, FALSE);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
