// The end of a handle of any kind but a search.
#include "handleapi.h"
#include "machine/handles.h"
#include "machine/host_errors.h"
#include "machine/script.h"
#include "winerror.h"

BOOL WINAPI CloseHandle(HANDLE handle) try {
    if (const auto scripted = machine::call("CloseHandle", handle)) return scripted.or_(FALSE);
    const bool isSearch = machine::kindOf(handle) == machine::ObjectKind::Search;
    if (!isSearch && machine::closeObject(handle)) return TRUE;
    return machine::failWith(ERROR_INVALID_HANDLE, FALSE);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
