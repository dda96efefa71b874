// Where the system lies.
#include "machine/deliver.h"
#include "machine/host_errors.h"
#include "machine/machine.h"
#include "machine/script.h"
#include "machine/text.h"
#include "sysinfoapi.h"

UINT WINAPI GetSystemDirectoryA(LPSTR buffer, UINT size) try {
    if (const auto scripted = machine::call("GetSystemDirectoryA", size)) {
        return scripted.or_(UINT{0});
    }
    const auto directory = machine::current().windowsDirectory + "\\System32";
    return machine::deliver(machine::toAnsi(machine::fromUtf8(directory)), buffer, size);
} catch (const std::exception&) {
    return machine::outOfMemory(UINT{0});
}
