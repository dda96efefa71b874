// Views: bytes of a mapping in the address space of the process.
#pragma once

#include <cstdint>

#include "memory/mapping_object.h"
#include "windef.h"

namespace machine {

struct Piece {
    std::uint64_t offset, length;  // bytes; a length of 0 reaches to the end of the mapping
};

// Without an address, the code says why.
struct MadeView {
    void* address;
    DWORD code;
};

// Makes a view with an access of MapViewOfFile, and adds it to the views in use.
MadeView makeView(const MappingObject& mapping, DWORD access, Piece piece);

}  // namespace machine
