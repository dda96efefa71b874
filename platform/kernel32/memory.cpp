// Blocks of the global heap, which are fixed so that their handle is their address, and pages.
#include <sys/mman.h>

#include <cstdlib>

#include "core/script.h"
#include "host/host_errors.h"
#include "memory/address_space.h"
#include "memoryapi.h"
#include "winbase.h"
#include "winerror.h"

namespace {

using machine::failWith;

}  // namespace

HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T size) try {
    if (const auto scripted = machine::call<&GlobalAlloc>(flags, size)) {
        return scripted.valueOr(nullptr);
    }
    if ((flags & ~GMEM_ZEROINIT) != 0) return failWith(ERROR_INVALID_PARAMETER, HGLOBAL{nullptr});
    const SIZE_T room = size != 0 ? size : 1;
    void* const block = (flags & GMEM_ZEROINIT) != 0 ? std::calloc(room, 1) : std::malloc(room);
    if (block == nullptr) return failWith(ERROR_NOT_ENOUGH_MEMORY, HGLOBAL{nullptr});
    machine::heapBlocks().add(block, room);
    return block;
} catch (const std::exception&) {
    return machine::outOfMemory(HGLOBAL{nullptr});
}

LPVOID WINAPI GlobalLock(HGLOBAL block) try {
    if (const auto scripted = machine::call<&GlobalLock>(block)) {
        return scripted.valueOr(nullptr);
    }
    const bool live = machine::heapBlocks().holds(block);
    return live ? block : failWith(ERROR_INVALID_HANDLE, LPVOID{nullptr});
} catch (const std::exception&) {
    return machine::outOfMemory(LPVOID{nullptr});
}

BOOL WINAPI GlobalUnlock(HGLOBAL block) {
    if (const auto scripted = machine::query<&GlobalUnlock>(block)) return scripted.value();
    const bool live = machine::heapBlocks().holds(block);
    return live ? TRUE : failWith(ERROR_INVALID_HANDLE, FALSE);
}

HGLOBAL WINAPI GlobalFree(HGLOBAL block) try {
    const auto free = [=] { return block == nullptr || machine::heapBlocks().release(block); };
    if (const auto scripted = machine::release<&GlobalFree>(free, block)) {
        return scripted.valueOr(block);
    }
    return free() ? nullptr : failWith(ERROR_INVALID_HANDLE, block);
} catch (const std::exception&) {
    return machine::outOfMemory(block);
}

LPVOID WINAPI VirtualAlloc(LPVOID address, SIZE_T size, DWORD kind, DWORD protection) try {
    if (const auto scripted = machine::call<&VirtualAlloc>(address, size, kind, protection)) {
        return scripted.valueOr(nullptr);
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
    const auto free = [=] {
        return kind == MEM_RELEASE && size == 0 && machine::virtualBlocks().release(address);
    };
    if (const auto scripted = machine::release<&VirtualFree>(free, address, size, kind)) {
        return scripted.valueOr(FALSE);
    }
    return free() ? TRUE : failWith(ERROR_INVALID_PARAMETER, FALSE);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
