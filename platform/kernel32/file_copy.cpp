// Copying files.
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>

#include "core/script.h"
#include "file_moving.h"
#include "fileapi.h"
#include "files/attributes.h"
#include "files/file_object.h"
#include "files/sharing.h"
#include "host/descriptor.h"
#include "host/host_errors.h"
#include "host/size_limit.h"
#include "winbase.h"
#include "winerror.h"

namespace {

using machine::Descriptor;
using machine::failWith;
using machine::HostName;

// A file in the target's folder that goes away unless it was put in the target's place. It has no
// name as long as the host allows that, so that nothing of it stays when the process is killed.
class TemporaryNeighbour {
  public:
    TemporaryNeighbour(const std::string& target, mode_t mode)
        : folder_(target.substr(0, target.rfind('/') + 1)),
          file_(::open(folder_.c_str(), O_RDWR | O_TMPFILE | O_CLOEXEC, mode)) {
        if (file_) return;
        giveName([&] {
            file_ = Descriptor(::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode));
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
            if (!giveName([&] { return linkTo(path_); })) return false;
        }
        if (!renameTo(target, replace)) return false;
        path_.clear();
        return true;
    }

  private:
    // Finds a name beside the target that `make` can give to the file.
    template <class Make>
    bool giveName(Make make) {
        static std::atomic<unsigned> counter{0};
        do {
            path_ = folder_ + ".jw32-" + std::to_string(::getpid()) + "-" +
                    std::to_string(counter.fetch_add(1)) + ".tmp";
            if (make()) return true;
        } while (errno == EEXIST);
        path_.clear();
        return false;
    }
    bool linkTo(const std::string& name) const {
        const auto open = "/proc/self/fd/" + std::to_string(file_.get());
        return ::linkat(AT_FDCWD, open.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    }
    bool renameTo(const std::string& target, bool replace) const {
        const unsigned flags = replace ? 0 : RENAME_NOREPLACE;
        if (::renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, target.c_str(), flags) == 0) return true;
        if (replace || errno != EINVAL || ::link(path_.c_str(), target.c_str()) != 0) return false;
        ::unlink(path_.c_str());  // a file system without the flag
        return true;
    }

    const std::string folder_;
    Descriptor file_;
    std::string path_;  // of a file that has a name of its own
};

// Somebody may have made the name in another case while the content was copied.
bool placeCopy(TemporaryNeighbour& copy, const std::string& target, bool replace) {
    machine::NameLock lock;
    return copy.place(machine::keepName(target, lock), replace);
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

void copyStoredAttributes(int from, int to) {
    constexpr const char* name = "user.DOSATTRIB";
    std::array<char, 64> value;
    const auto length = ::fgetxattr(from, name, value.data(), value.size());
    if (length > 0) ::fsetxattr(to, name, value.data(), static_cast<std::size_t>(length), 0);
}

bool copyProperties(int from, int to, const struct stat& status) {
    copyStoredAttributes(from, to);
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
    const bool guards = (machine::attributesOf(to.path, to.status) & guarded) != 0;
    if (guards) return ERROR_ACCESS_DENIED;
    return objectionOfHandles(to, machine::sharingOf(GENERIC_WRITE, 0));
}

}  // namespace

DWORD copyHostFile(const HostName& from, const std::string& to, bool replace) {
    constexpr mode_t whileCopying = 0600;
    if (const DWORD code = objectionToSource(from)) return code;
    const Descriptor source(
        ::open(from.path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!source) return machine::codeOfHostError(errno);
    const auto reading = machine::sharingOf(GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
    const auto locks = machine::share(source.get(), reading);
    if (!locks) return ERROR_SHARING_VIOLATION;
    machine::answerSizeLimit();
    TemporaryNeighbour copy(to, whileCopying);
    const bool done = copy && copyContent(source.get(), copy.file()) &&
                      copyProperties(source.get(), copy.file(), from.status) &&
                      placeCopy(copy, to, replace);
    if (done) return ERROR_SUCCESS;
    return errno == EEXIST ? ERROR_FILE_EXISTS : machine::codeOfHostError(errno);
}

BOOL WINAPI CopyFileW(LPCWSTR from, LPCWSTR to, BOOL failIfExists) try {
    if (const auto scripted = machine::call("CopyFileW", from, to, failIfExists)) {
        return scripted.or_(FALSE);
    }
    const auto source = machine::parsePath(from), target = machine::parsePath(to);
    const DWORD pathError = source.fileError() != 0 ? source.fileError() : target.fileError();
    if (pathError != 0) return failWith(pathError, FALSE);
    if (target.isRoot()) return failWith(ERROR_ACCESS_DENIED, FALSE);
    const auto sourceName = machine::findOnHost(source), targetName = machine::findOnHost(target);
    if (!sourceName.exists()) return failWith(sourceName.error, FALSE);
    if (const DWORD code = objectionToSource(sourceName)) return failWith(code, FALSE);
    if (target.trailingSeparator && targetName.canBeMade())
        return failWith(ERROR_INVALID_NAME, FALSE);
    if (const DWORD code = objectionOf(sourceName, targetName, failIfExists != FALSE)) {
        return failWith(code, FALSE);
    }
    const DWORD code = copyHostFile(sourceName, targetName.path, failIfExists == FALSE);
    return code == ERROR_SUCCESS ? TRUE : failWith(code, FALSE);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
