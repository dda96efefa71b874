// A mapping, as a handle holds it: the bytes of a file or of a block of memory, to be viewed.
#pragma once

#include <cstdint>
#include <utility>

#include "files/file_object.h"
#include "host/descriptor.h"

namespace machine {

struct MappingObject : HandleObject {
    MappingObject(Descriptor bytes, std::uint64_t length, bool mayWrite)
        : descriptor(std::move(bytes)), size(length), canWrite(mayWrite) {}

    const Descriptor descriptor;  // the mapping's own, so that it outlives the file's handle
    const std::uint64_t size;     // bytes
    const bool canWrite;          // whether views may write
};

}  // namespace machine
