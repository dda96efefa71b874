// Making mappings: the bytes of a file or of a block of memory, to be viewed.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "files/file_object.h"
#include "memory/mapping_object.h"
#include "windef.h"

namespace machine {

// Without a mapping, the code says why. With one, it is ERROR_ALREADY_EXISTS where a named block
// was there already, or 0.
struct MadeMapping {
    std::unique_ptr<MappingObject> mapping;
    DWORD code;
};

// A mapping of `size` bytes of the file, or of the whole of it for 0. A file that may be written
// grows to that size, with room on the disk for every byte.
MadeMapping mapFile(FileObject& file, bool writes, std::uint64_t size);

// Zeros of the process alone.
MadeMapping mapMemory(bool writes, std::uint64_t size);

// A named block that is made or joined, and one that must exist.
MadeMapping mapNewBlock(std::u16string_view name, std::uint64_t size);
MadeMapping mapExistingBlock(std::u16string_view name);

}  // namespace machine
