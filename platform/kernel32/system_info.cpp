// What the system is made of.
#include <unistd.h>

#include <thread>

#include "core/script.h"
#include "memory/address_space.h"
#include "sysinfoapi.h"

void WINAPI GetSystemInfo(LPSYSTEM_INFO info) {
    constexpr WORD amd64 = 9;  // PROCESSOR_ARCHITECTURE_AMD64
    constexpr DWORD amd64Type = 8664;
    if (machine::query("GetSystemInfo", static_cast<const void*>(info))) return;
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
