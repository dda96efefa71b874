// Pages of memory straight from the host. They are had and given back as whole blocks.
#include <sys/mman.h>

#include "core/script.h"
#include "host/host_errors.h"
#include "memory/address_space.h"
#include "memoryapi.h"
#include "winerror.h"

using machine::failWith;

LPVOID WINAPI VirtualAlloc(LPVOID address, SIZE_T size, DWORD kind, DWORD protection) try {
    if (const auto scripted = machine::call("VirtualAlloc", static_cast<const void*>(address), size,
                                            kind, protection)) {
        return scripted.or_(LPVOID{nullptr});
    }
    const bool known = address == nullptr && (kind & ~MEM_RESERVE) == MEM_COMMIT &&
                       protection == PAGE_READWRITE && size != 0;
    if (!known) return failWith(ERROR_INVALID_PARAMETER, LPVOID{nullptr});
    void* const block =
        machine::mapPages(size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (block == nullptr) return failWith(ERROR_NOT_ENOUGH_MEMORY, LPVOID{nullptr});
    machine::virtualBlocks().add(block, size);
    return block;
} catch (const std::exception&) {
    return machine::outOfMemory(LPVOID{nullptr});
}

BOOL WINAPI VirtualFree(LPVOID address, SIZE_T size, DWORD kind) try {
    if (const auto scripted =
            machine::call("VirtualFree", static_cast<const void*>(address), size, kind)) {
        return scripted.or_(FALSE);
    }
    const bool released =
        kind == MEM_RELEASE && size == 0 && machine::virtualBlocks().release(address);
    return released ? TRUE : failWith(ERROR_INVALID_PARAMETER, FALSE);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
