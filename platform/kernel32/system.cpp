// Which system this is, and what it is made of.
#include <unistd.h>

#include <cstring>
#include <thread>

#include "core/machine.h"
#include "core/script.h"
#include "errhandlingapi.h"
#include "host/host_errors.h"
#include "memory/address_space.h"
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
    if (const auto scripted = machine::call<&GetVersionExA>(record)) return scripted.valueOr(FALSE);
    const DWORD size = record->dwOSVersionInfoSize;
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

void WINAPI GetSystemInfo(LPSYSTEM_INFO info) {
    constexpr WORD amd64 = 9;  // PROCESSOR_ARCHITECTURE_AMD64
    constexpr DWORD amd64Type = 8664;
    if (machine::query<&GetSystemInfo>(info)) return;
    const auto processors = std::thread::hardware_concurrency();
    *info = {};
    info->wProcessorArchitecture = amd64;
    info->dwPageSize = static_cast<DWORD>(::sysconf(_SC_PAGESIZE));
    info->lpMinimumApplicationAddress = reinterpret_cast<LPVOID>(machine::allocationGranularity);
    info->lpMaximumApplicationAddress = reinterpret_cast<LPVOID>(DWORD_PTR{0x7FFFFFFEFFFF});
    info->dwNumberOfProcessors = processors != 0 ? processors : 1;
    info->dwActiveProcessorMask =
        processors >= 64 ? ~DWORD_PTR{0} : (DWORD_PTR{1} << info->dwNumberOfProcessors) - 1;
    info->dwProcessorType = amd64Type;
    info->dwAllocationGranularity = machine::allocationGranularity;
}
