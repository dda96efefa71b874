// Names of the interface found on the host.
#include "names/lookup.h"

#include <fcntl.h>
#include <sys/sysmacros.h>

#include <cerrno>
#include <utility>

#include "host/descriptor.h"
#include "host/host_errors.h"
#include "names/folder_index.h"
#include "text/utf16.h"
#include "winerror.h"

namespace machine {

namespace {

timespec timeOf(const struct statx_timestamp& time) {
    return {time.tv_sec, time.tv_nsec};
}

struct stat statusOf(const struct statx& extended) {
    struct stat status {};
    status.st_dev = makedev(extended.stx_dev_major, extended.stx_dev_minor);
    status.st_rdev = makedev(extended.stx_rdev_major, extended.stx_rdev_minor);
    status.st_ino = extended.stx_ino;
    status.st_mode = extended.stx_mode;
    status.st_nlink = extended.stx_nlink;
    status.st_uid = extended.stx_uid;
    status.st_gid = extended.stx_gid;
    status.st_size = static_cast<off_t>(extended.stx_size);
    status.st_blksize = static_cast<blksize_t>(extended.stx_blksize);
    status.st_blocks = static_cast<blkcnt_t>(extended.stx_blocks);
    status.st_atim = timeOf(extended.stx_atime);
    status.st_mtim = timeOf(extended.stx_mtime);
    status.st_ctim = timeOf(extended.stx_ctime);
    return status;
}

// One call of the host, for a link two. The result is the host's error, or 0.
int look(const std::string& path, HostName& name) {
    constexpr unsigned wanted = STATX_BASIC_STATS | STATX_BTIME;
    struct statx found {};
    if (::statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW, wanted, &found) != 0) return errno;
    if (S_ISLNK(found.stx_mode)) {
        struct statx target {};
        const bool leads = ::statx(AT_FDCWD, path.c_str(), 0, wanted, &target) == 0;
        if (!leads && errno != ENOENT) return errno;
        if (leads) found = target;
    }
    name.status = statusOf(found);
    const bool hasBirth = (found.stx_mask & STATX_BTIME) != 0;
    name.birth = hasBirth ? std::optional(timeOf(found.stx_btime)) : std::nullopt;
    return 0;
}

Descriptor openFolder(const std::string& path) {
    return Descriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

std::string folderPath(const std::string& path) {
    return path.empty() ? "/" : path;
}

// A component of the folder, whose path `found` has, in whatever case. With a lock, the name is
// kept. Of a folder that may not be read, the names as they are given are known.
void findInFolder(HostName& found, Descriptor folder, const std::u16string& component,
                  NameLock* lock) {
    int failure = folder ? 0 : errno;
    const int descriptor = folder.get();
    auto name = toUtf8(component);
    if (folder) {
        if (lock != nullptr) lock->take(std::move(folder), component);
        const auto known = nameInFolder(descriptor, component);
        failure = !known ? errno : known->empty() ? ENOENT : 0;
        if (failure == 0) name = *known;
    }
    found.path += "/" + name;
    if (failure == 0 || failure == EACCES) failure = look(found.path, found);
    if (failure != 0) found.error = codeOfHostError(failure);
}

// Component by component, as each may be there in another case.
HostName findByComponents(const Path& path) {
    HostName found;
    found.path = path.hostRoot();
    if (const int error = look(folderPath(found.path), found)) {
        found.error = codeOfHostError(error);
    }
    for (const auto& component : path.components) {
        if (found.exists() && !found.isDirectory()) found.error = ERROR_PATH_NOT_FOUND;
        if (!found.exists()) return found;
        const auto exact = found.path + "/" + toUtf8(component);
        if (look(exact, found) == 0) {
            found.path = exact;
        } else {
            findInFolder(found, openFolder(folderPath(found.path)), component, nullptr);
        }
    }
    return found;
}

// The last name in whatever case, in a folder that mostly is there as it is given.
HostName findInAnyCase(const Path& path, NameLock* lock) {
    const auto parent = parentOf(path);
    HostName found;
    found.path = parent.isRoot() ? parent.hostRoot() : literalHostPath(parent);
    auto folder = openFolder(folderPath(found.path));
    if (!folder) {
        found = findByComponents(parent);
        if (found.exists() && !found.isDirectory()) found.error = ERROR_PATH_NOT_FOUND;
        if (found.error == ERROR_FILE_NOT_FOUND) found.error = ERROR_PATH_NOT_FOUND;
        if (!found.exists()) return found;
        folder = openFolder(folderPath(found.path));
    }
    findInFolder(found, std::move(folder), path.components.back(), lock);
    return found;
}

// A file with a separator behind its name is none.
HostName checked(HostName found, const Path& path) {
    const bool isFile = found.exists() && S_ISREG(found.status.st_mode);
    if (isFile && path.trailingSeparator) found.error = ERROR_INVALID_NAME;
    return found;
}

HostName find(const Path& path, NameLock* lock) {
    HostName found;
    found.path = literalHostPath(path);
    const int error = look(found.path, found);
    const bool mayDiffer = (error == ENOENT || error == ENOTDIR) && !path.isRoot();
    if (mayDiffer) return checked(findInAnyCase(path, lock), path);
    if (error != 0) found.error = path.isRoot() ? ERROR_PATH_NOT_FOUND : codeOfHostError(error);
    return checked(std::move(found), path);
}

}  // namespace

bool HostName::canBeMade() const {
    return error == ERROR_FILE_NOT_FOUND;
}

std::string literalHostPath(const Path& path) {
    auto result = path.hostRoot();
    for (const auto& component : path.components) {
        result += '/';
        result += toUtf8(component);
    }
    return result.empty() ? "/" : result;
}

Path parentOf(const Path& path) {
    auto parent = path;
    parent.components.pop_back();
    return parent;
}

HostName atHostPath(const std::string& path) {
    HostName name;
    name.path = path;
    if (const int error = look(path, name)) name.error = codeOfHostError(error);
    return name;
}

HostName findOnHost(const Path& path) {
    return find(path, nullptr);
}

HostName findToMake(const Path& path, NameLock& lock) {
    return find(path, &lock);
}

HostName findNewName(const Path& path, NameLock& lock) {
    return checked(findInAnyCase(path, &lock), path);
}

std::string keepName(const std::string& hostPath, NameLock& lock) {
    const auto slash = hostPath.rfind('/');
    const auto folder = hostPath.substr(0, slash);
    auto descriptor = openFolder(folderPath(folder));
    if (!descriptor) return hostPath;
    const int open = descriptor.get();
    const auto component = fromUtf8(hostPath.substr(slash + 1));
    lock.take(std::move(descriptor), component);
    const auto name = nameInFolder(open, component).value_or("");
    return name.empty() ? hostPath : folder + "/" + name;
}

}  // namespace machine
