// Copying files.
#include "tree/file_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "files/attributes.h"
#include "files/open_handles.h"
#include "files/sharing.h"
#include "host/descriptor.h"
#include "host/host_errors.h"
#include "host/size_limit.h"
#include "tree/temporary_neighbour.h"
#include "winbase.h"
#include "winerror.h"
#include "winnt.h"

namespace machine {

namespace {

// A file in the target's folder that goes away unless it was put in the target's place. It has no
// name as long as the host allows that, so that nothing of it stays when the process is killed.
class TemporaryNeighbour {
  public:
    TemporaryNeighbour(const std::string& target, mode_t mode)
        : folder_(target.substr(0, target.rfind('/') + 1)),
          file_(::open(folder_.c_str(), O_RDWR | O_TMPFILE | O_CLOEXEC, mode)) {
        if (file_) return;
        path_ = makeNeighbour(folder_, [&](const std::string& name) {
            file_ = Descriptor(::open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode));
            return static_cast<bool>(file_);
        });
    }
    ~TemporaryNeighbour() {
        if (!path_.empty()) ::unlink(path_.c_str());
    }
    TemporaryNeighbour(const TemporaryNeighbour&) = delete;
    TemporaryNeighbour& operator=(const TemporaryNeighbour&) = delete;

    explicit operator bool() const { return static_cast<bool>(file_); }
    int file() const { return file_.get(); }

    // In one step; without `replace`, an existing target makes it fail with EEXIST.
    bool place(const std::string& target, bool replace) {
        if (path_.empty()) {
            if (linkTo(target)) return true;
            if (!replace || errno != EEXIST) return false;
            path_ = makeNeighbour(target, [&](const std::string& name) { return linkTo(name); });
            if (path_.empty()) return false;
        }
        if (renameFile(path_, target, replace) != 0) return false;
        path_.clear();
        return true;
    }

  private:
    bool linkTo(const std::string& name) const {
        const auto open = "/proc/self/fd/" + std::to_string(file_.get());
        return ::linkat(AT_FDCWD, open.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    }

    const std::string folder_;
    Descriptor file_;
    std::string path_;  // of a file that has a name of its own
};

// Somebody may have made the name in another case while the content was copied.
bool placeCopy(TemporaryNeighbour& copy, const std::string& target, bool replace) {
    NameLock lock;
    return copy.place(keepName(target, lock), replace);
}

bool writeAll(int file, const char* data, std::size_t size) {
    while (size > 0) {
        const auto written = ::write(file, data, size);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        data += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool copyByHand(int from, int to) {
    std::array<char, 1 << 16> block;
    for (;;) {
        const auto count = ::read(from, block.data(), block.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return count == 0;
        if (!writeAll(to, block.data(), static_cast<std::size_t>(count))) return false;
    }
}

// The host copies inside the kernel where it can.
bool copyContent(int from, int to) {
    constexpr std::size_t most = std::size_t{1} << 30;
    bool any = false;
    for (;;) {
        const auto copied = ::copy_file_range(from, nullptr, to, nullptr, most, 0);
        if (copied > 0) {
            any = true;
        } else if (copied == 0) {
            return any || copyByHand(from, to);  // some file systems tell nothing of their files
        } else if (errno != EINTR) {
            return !any && errno != ENOSPC && errno != EDQUOT && errno != EFBIG &&
                   copyByHand(from, to);
        }
    }
}

bool copyProperties(int from, int to, const struct stat& status) {
    copyStoredAttributes(from, status, to);  // a copy without them is better than none
    const timespec times[] = {status.st_atim, status.st_mtim};
    return ::futimens(to, times) == 0 && ::fchmod(to, status.st_mode & 0777) == 0;
}

// Only a file can be copied, since a pipe or a device of the host may have no end. A link to nothing
// is not found.
DWORD objectionToSource(const HostName& name) {
    if (S_ISLNK(name.status.st_mode)) return ERROR_FILE_NOT_FOUND;
    return S_ISREG(name.status.st_mode) ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

// Why the target may not be replaced; 0: it may.
DWORD objectionOf(const HostName& from, const HostName& to, bool failIfExists) {
    if (!to.exists()) return to.canBeMade() ? ERROR_SUCCESS : to.error;
    if (failIfExists) return ERROR_FILE_EXISTS;
    if (S_ISLNK(to.status.st_mode)) return ERROR_FILE_NOT_FOUND;
    if (!S_ISREG(to.status.st_mode) && !S_ISFIFO(to.status.st_mode)) return ERROR_ACCESS_DENIED;
    const bool same =
        from.status.st_dev == to.status.st_dev && from.status.st_ino == to.status.st_ino;
    if (same) return ERROR_SHARING_VIOLATION;
    constexpr DWORD guarded =
        FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    const bool guards = (attributesOf(to.path, to.status) & guarded) != 0;
    if (guards) return ERROR_ACCESS_DENIED;
    return objectionOfHandles(to, sharingOf(GENERIC_WRITE, 0));
}

}  // namespace

DWORD copyHostFile(const HostName& from, const std::string& to, bool replace) {
    constexpr mode_t whileCopying = 0600;
    if (const DWORD code = objectionToSource(from)) return code;
    const Descriptor source(
        ::open(from.path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!source) return codeOfHostError(errno);
    const auto reading = sharingOf(GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
    const auto locks = share(source.get(), reading);
    if (!locks) return ERROR_SHARING_VIOLATION;
    answerSizeLimit();
    TemporaryNeighbour copy(to, whileCopying);
    const bool done = copy && copyContent(source.get(), copy.file()) &&
                      copyProperties(source.get(), copy.file(), from.status) &&
                      placeCopy(copy, to, replace);
    if (done) return ERROR_SUCCESS;
    return errno == EEXIST ? ERROR_FILE_EXISTS : codeOfHostError(errno);
}

DWORD copyFile(const Path& source, const Path& target, bool failIfExists) {
    if (target.isRoot()) return ERROR_ACCESS_DENIED;
    const auto from = findOnHost(source), to = findOnHost(target);
    if (!from.exists()) return from.error;
    if (const DWORD code = objectionToSource(from)) return code;
    if (target.trailingSeparator && to.canBeMade()) return ERROR_INVALID_NAME;
    if (const DWORD code = objectionOf(from, to, failIfExists)) return code;
    return copyHostFile(from, to.path, !failIfExists);
}

}  // namespace machine
