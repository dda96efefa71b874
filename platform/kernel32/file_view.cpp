// Views: bytes of a mapping in the address space of the process.
#include <sys/mman.h>

#include "core/script.h"
#include "host/host_errors.h"
#include "memory/address_space.h"
#include "memory/mapping_object.h"
#include "memoryapi.h"
#include "winerror.h"

namespace {

using machine::failWith;
using machine::MappingObject;

constexpr LPVOID none = nullptr;

struct Piece {
    std::uint64_t offset, length;  // bytes; a length of 0 reaches to the end of the mapping
};

// Settles the length of a piece. Gives the code of what speaks against it, or 0.
DWORD settle(Piece& piece, const MappingObject& mapping) {
    if (piece.offset % machine::allocationGranularity != 0) return ERROR_MAPPED_ALIGNMENT;
    if (piece.offset >= mapping.size) return ERROR_INVALID_PARAMETER;
    const auto rest = mapping.size - piece.offset;
    if (piece.length > rest) return ERROR_ACCESS_DENIED;
    if (piece.length == 0) piece.length = rest;
    return ERROR_SUCCESS;
}

LPVOID map(const MappingObject& mapping, DWORD access, Piece piece) {
    const bool copies = access == FILE_MAP_COPY, writes = (access & FILE_MAP_WRITE) != 0;
    if (!copies && (access & (FILE_MAP_READ | FILE_MAP_WRITE)) == 0) {
        return failWith(ERROR_INVALID_PARAMETER, none);
    }
    if (writes && !mapping.canWrite) return failWith(ERROR_ACCESS_DENIED, none);
    if (const DWORD code = settle(piece, mapping)) return failWith(code, none);
    const int protection = writes || copies ? PROT_READ | PROT_WRITE : PROT_READ;
    void* const view =
        machine::mapPages(piece.length, protection, copies ? MAP_PRIVATE : MAP_SHARED,
                          mapping.descriptor.get(), static_cast<off_t>(piece.offset));
    if (view == nullptr) return failWith(ERROR_NOT_ENOUGH_MEMORY, none);
    machine::views().add(view, piece.length);
    return view;
}

}  // namespace

LPVOID WINAPI MapViewOfFile(HANDLE handle, DWORD access, DWORD offsetHigh, DWORD offsetLow,
                            SIZE_T length) try {
    if (const auto scripted =
            machine::call("MapViewOfFile", handle, access, offsetHigh, offsetLow, length)) {
        return scripted.or_(none);
    }
    const machine::Pinned<MappingObject> mapping(handle);
    if (!mapping) return failWith(ERROR_INVALID_HANDLE, none);
    return map(*mapping, access, {(std::uint64_t{offsetHigh} << 32) | offsetLow, length});
} catch (const std::exception&) {
    return machine::outOfMemory(none);
}

BOOL WINAPI UnmapViewOfFile(LPCVOID view) try {
    if (const auto scripted = machine::call("UnmapViewOfFile", view)) return scripted.or_(FALSE);
    const bool released = machine::views().release(const_cast<LPVOID>(view));
    return released ? TRUE : failWith(ERROR_INVALID_ADDRESS, FALSE);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
