// The room on drives and shares.
#include "machine/disk_space.h"

#include <sys/statvfs.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "machine/host_errors.h"
#include "machine/lookup.h"
#include "winerror.h"

namespace machine {

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t usualClusterSize = 4096;

// What cannot be read counts as empty, and links are not followed.
std::uint64_t sizeOfFilesIn(const std::string& folder) {
    constexpr auto options = fs::directory_options::skip_permission_denied;
    std::uint64_t sum = 0;
    std::error_code error;
    for (fs::recursive_directory_iterator at(folder, options, error), end; !error && at != end;
         at.increment(error)) {
        std::error_code ignored;
        if (at->is_symlink(ignored) || !at->is_regular_file(ignored)) continue;
        const auto size = at->file_size(ignored);
        if (!ignored) sum += size;
    }
    return sum;
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
    const std::uint64_t block = host.f_frsize;
    space = {block * host.f_blocks, block * host.f_bfree, block * host.f_bavail,
             static_cast<std::uint32_t>(block)};
    return ERROR_SUCCESS;
}

}  // namespace machine
