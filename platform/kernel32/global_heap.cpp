// The global heap. Blocks are fixed, so that a block's handle is its address.
#include <cstdlib>

#include "core/script.h"
#include "host/host_errors.h"
#include "memory/address_space.h"
#include "winbase.h"
#include "winerror.h"

using machine::failWith;

HGLOBAL WINAPI GlobalAlloc(UINT flags, SIZE_T size) try {
    if (const auto scripted = machine::call("GlobalAlloc", flags, size)) {
        return scripted.or_(HGLOBAL{nullptr});
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
    if (const auto scripted = machine::call("GlobalLock", static_cast<const void*>(block))) {
        return scripted.or_(LPVOID{nullptr});
    }
    const bool live = machine::heapBlocks().holds(block);
    return live ? block : failWith(ERROR_INVALID_HANDLE, LPVOID{nullptr});
} catch (const std::exception&) {
    return machine::outOfMemory(LPVOID{nullptr});
}

BOOL WINAPI GlobalUnlock(HGLOBAL block) {
    if (const auto scripted = machine::query("GlobalUnlock", static_cast<const void*>(block))) {
        return scripted.or_(FALSE);
    }
    const bool live = machine::heapBlocks().holds(block);
    return live ? TRUE : failWith(ERROR_INVALID_HANDLE, FALSE);
}

HGLOBAL WINAPI GlobalFree(HGLOBAL block) try {
    if (const auto scripted = machine::call("GlobalFree", static_cast<const void*>(block))) {
        return scripted.or_(block);
    }
    const bool released = block == nullptr || machine::heapBlocks().release(block);
    return released ? nullptr : failWith(ERROR_INVALID_HANDLE, block);
} catch (const std::exception&) {
    return machine::outOfMemory(block);
}
