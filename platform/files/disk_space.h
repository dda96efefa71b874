// The room on drives and shares.
#pragma once

#include <cstdint>

#include "names/paths.h"
#include "windef.h"

namespace machine {

struct DiskSpace {
    std::uint64_t total, free;  // bytes
    std::uint64_t available;    // bytes that the process may still fill: the rest is for others
    std::uint32_t clusterSize;  // bytes
};

// The room where the directory lies: what the host tells, or the drive's capacity less the sizes of
// its files. The result is 0 or the error's code.
DWORD findDiskSpace(const Path& directory, DiskSpace& space);

}  // namespace machine
