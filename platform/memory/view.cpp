// Views: bytes of a mapping in the address space of the process.
#include "memory/view.h"

#include <sys/mman.h>

#include "memory/address_space.h"
#include "memoryapi.h"
#include "winerror.h"

namespace machine {

namespace {

MadeView refuse(DWORD code) {
    return {nullptr, code};
}

// Settles the length of a piece. Gives the code of what speaks against it, or 0.
DWORD settle(Piece& piece, const MappingObject& mapping) {
    if (piece.offset % allocationGranularity != 0) return ERROR_MAPPED_ALIGNMENT;
    if (piece.offset >= mapping.size) return ERROR_INVALID_PARAMETER;
    const auto rest = mapping.size - piece.offset;
    if (piece.length > rest) return ERROR_ACCESS_DENIED;
    if (piece.length == 0) piece.length = rest;
    return ERROR_SUCCESS;
}

}  // namespace

MadeView makeView(const MappingObject& mapping, DWORD access, Piece piece) {
    const bool copies = access == FILE_MAP_COPY, writes = (access & FILE_MAP_WRITE) != 0;
    if (!copies && (access & (FILE_MAP_READ | FILE_MAP_WRITE)) == 0) {
        return refuse(ERROR_INVALID_PARAMETER);
    }
    if (writes && !mapping.canWrite) return refuse(ERROR_ACCESS_DENIED);
    if (const DWORD code = settle(piece, mapping)) return refuse(code);
    const int protection = writes || copies ? PROT_READ | PROT_WRITE : PROT_READ;
    void* const view = mapPages(piece.length, protection, copies ? MAP_PRIVATE : MAP_SHARED,
                                mapping.descriptor.get(), static_cast<off_t>(piece.offset));
    if (view == nullptr) return refuse(ERROR_NOT_ENOUGH_MEMORY);
    views().add(view, piece.length);
    return {view, ERROR_SUCCESS};
}

}  // namespace machine
