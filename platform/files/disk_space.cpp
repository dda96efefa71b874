// The room on drives and shares.
#include "files/disk_space.h"

#include <fts.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <memory>

#include "host/host_errors.h"
#include "names/lookup.h"
#include "winerror.h"

namespace machine {

namespace {

constexpr std::uint32_t usualClusterSize = 4096;

// What cannot be read counts as empty, and links are not followed.
std::uint64_t sizeOfFilesIn(const std::string& folder) {
    auto root = folder;
    char* const roots[] = {root.data(), nullptr};
    const std::unique_ptr<FTS, int (*)(FTS*)> tree(
        ::fts_open(roots, FTS_PHYSICAL | FTS_NOCHDIR, nullptr), ::fts_close);
    std::uint64_t sum = 0;
    while (const auto* const entry = tree == nullptr ? nullptr : ::fts_read(tree.get())) {
        if (entry->fts_info == FTS_F) sum += static_cast<std::uint64_t>(entry->fts_statp->st_size);
    }
    return sum;
}

// Some file systems that have no limit tell counts whose bytes no number holds.
std::uint64_t bytesOf(std::uint64_t blocks, std::uint64_t blockSize) {
    constexpr auto most = static_cast<std::uint64_t>(INT64_MAX);
    return blocks > most / blockSize ? most : blocks * blockSize;
}

DiskSpace spaceOfCapacity(const Drive& drive) {
    const auto capacity = *drive.capacity;
    const auto free = capacity - std::min(capacity, sizeOfFilesIn(drive.folder));
    return {capacity, free, free, usualClusterSize};
}

}  // namespace

DWORD findDiskSpace(const Path& directory, DiskSpace& space) {
    if (const DWORD code = directory.fileError()) return code;
    const auto found = findOnHost(directory);
    if (!found.exists()) return directory.isRoot() ? ERROR_NOT_READY : ERROR_PATH_NOT_FOUND;
    if (!found.isDirectory()) return ERROR_DIRECTORY;
    if (directory.drive != nullptr && directory.drive->capacity) {
        space = spaceOfCapacity(*directory.drive);
        return ERROR_SUCCESS;
    }
    struct statvfs host {};
    if (::statvfs(found.path.c_str(), &host) != 0) return codeOfHostError(errno);
    const auto block =
        std::max<std::uint64_t>(host.f_frsize != 0 ? host.f_frsize : host.f_bsize, 1);
    space = {bytesOf(host.f_blocks, block), bytesOf(host.f_bfree, block),
             bytesOf(host.f_bavail, block), static_cast<std::uint32_t>(block)};
    return ERROR_SUCCESS;
}

}  // namespace machine
