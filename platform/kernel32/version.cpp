// Which system this is, as the machine's version record tells.
#include <cstring>

#include "core/machine.h"
#include "core/script.h"
#include "errhandlingapi.h"
#include "host/host_errors.h"
#include "sysinfoapi.h"
#include "winerror.h"

namespace {

void fillExtended(OSVERSIONINFOEXA& record, const machine::Version& version) {
    record.wServicePackMajor = version.servicePackMajor;
    record.wServicePackMinor = version.servicePackMinor;
    record.wSuiteMask = version.suiteMask;
    record.wProductType = version.productType;
    record.wReserved = 0;
}

}  // namespace

BOOL WINAPI GetVersionExA(LPOSVERSIONINFOA record) try {
    const DWORD size = record->dwOSVersionInfoSize;
    if (const auto scripted = machine::call("GetVersionExA", size)) return scripted.or_(FALSE);
    const auto& version = machine::current().version;
    const bool extended = size == sizeof(OSVERSIONINFOEXA) && version.knowsExtendedRecord;
    if (!extended && size != sizeof(OSVERSIONINFOA)) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return FALSE;
    }
    record->dwMajorVersion = version.major;
    record->dwMinorVersion = version.minor;
    record->dwBuildNumber = version.build;
    record->dwPlatformId = version.platform;
    std::memset(record->szCSDVersion, 0, sizeof record->szCSDVersion);
    version.servicePack.copy(record->szCSDVersion, sizeof record->szCSDVersion - 1);
    if (extended) fillExtended(*reinterpret_cast<OSVERSIONINFOEXA*>(record), version);
    return TRUE;
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
