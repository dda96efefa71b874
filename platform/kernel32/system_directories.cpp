// Where the system lies.
#include "core/ansi.h"
#include "core/machine.h"
#include "core/script.h"
#include "host/host_errors.h"
#include "sysinfoapi.h"
#include "text/stored_text.h"
#include "text/utf16.h"

UINT WINAPI GetSystemDirectoryA(LPSTR buffer, UINT size) try {
    if (const auto scripted = machine::call("GetSystemDirectoryA", size)) {
        return scripted.or_(UINT{0});
    }
    const auto directory = machine::current().windowsDirectory + "\\System32";
    return machine::deliver(machine::toAnsi(machine::fromUtf8(directory)), buffer, size);
} catch (const std::exception&) {
    return machine::outOfMemory(UINT{0});
}
