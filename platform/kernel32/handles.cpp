// The end of a handle.
#include "core/handles.h"
#include "core/script.h"
#include "handleapi.h"
#include "host/host_errors.h"
#include "winerror.h"

BOOL WINAPI CloseHandle(HANDLE handle) try {
    const auto close = [=] { return machine::handles().close(handle); };
    if (const auto scripted = machine::release<&CloseHandle>(close, handle)) {
        return scripted.valueOr(FALSE);
    }
    return close() ? TRUE : machine::failWith(ERROR_INVALID_HANDLE, FALSE);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
