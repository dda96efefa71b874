// Room on the disk for bytes of a file, so that no access to a mapping of them fails later.
#pragma once

#include <cstdint>

namespace machine {

// Makes the file at least `size` bytes long, with room for the bytes from `from` on. What the host
// cannot set aside is written. Gives the host's error, or 0; after an error a part may be set aside.
int setAside(int file, std::uint64_t from, std::uint64_t size);

// The same for holes in what the file has; a file system that cannot fill them leaves them.
int fillHoles(int file, std::uint64_t size);

}  // namespace machine
