// Named blocks of shared memory, for all processes of a user.
//
// A block is a file in a folder of the user's own. Each handle holds a read lock on it; a
// file that nobody locks is the rest of processes that were killed, and counts as gone. Making,
// finding and ending blocks is serialised by a lock on the folder, so that no process ever sees a
// half-made block. The host gives both kinds of locks back when a process ends, however it ends.
#pragma once

#include <unistd.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "files/file_object.h"
#include "host/descriptor.h"
#include "memory/mapping_object.h"

namespace machine {

struct NamedBlock {
    Descriptor file{};       // with the lock of this handle; empty: not had
    std::uint64_t size = 0;  // bytes
    std::string path{};      // on the host
    DWORD error = 0;         // why it was not had, or ERROR_ALREADY_EXISTS for a block that stood
};

// Joins the block of that name, or fails with ERROR_FILE_NOT_FOUND.
NamedBlock openBlock(std::u16string_view name);

// Makes a block of zeros, or joins the one that stands, of whatever size.
NamedBlock createBlock(std::u16string_view name, std::uint64_t size);

// A mapping of a named block. The name goes with the last handle of all processes. What a fork has
// copied is no handle: a child that ends it leaves the block to its parent.
struct NamedMappingObject : MappingObject {
    explicit NamedMappingObject(NamedBlock block)
        : MappingObject(std::move(block.file), block.size, true), path(std::move(block.path)) {}
    ~NamedMappingObject() override;

    const std::string path;
    const pid_t process = ::getpid();  // whose handle it is
};

}  // namespace machine
