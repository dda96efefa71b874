// Opening and creating files.
#include "files/file_open.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <string>
#include <utility>

#include "files/attributes.h"
#include "files/sharing.h"
#include "host/descriptor.h"
#include "host/host_errors.h"
#include "host/temporary_names.h"
#include "names/lookup.h"
#include "winerror.h"

namespace machine {

namespace {

// What a call asks for, with its rights taken apart.
struct Request {
    DWORD disposition, flags;
    Sharing sharing;

    bool wantsWrite() const { return sharing.uses.write; }
    bool replaces() const {
        return disposition == CREATE_ALWAYS || disposition == TRUNCATE_EXISTING;
    }
    bool creates() const {
        return disposition == CREATE_NEW || disposition == CREATE_ALWAYS ||
               disposition == OPEN_ALWAYS;
    }
    bool wantsDirectory() const { return (flags & FILE_FLAG_BACKUP_SEMANTICS) != 0; }
    bool wantsLink() const { return (flags & FILE_FLAG_OPEN_REPARSE_POINT) != 0; }
};

OpenedFile refuse(DWORD code) {
    return {nullptr, code};
}

// A write-only handle gets a descriptor that can read as well, since its share of the file is told
// by read locks; the handle itself knows what it may do. No pipe or terminal of the host holds the
// open up.
Descriptor openDescriptor(const std::string& path, bool write, int flags) {
    constexpr mode_t newFileMode = 0666, ownFileMode = 0600;
    const bool isOwn = (flags & O_CREAT) != 0 && isTemporaryName(path);
    const mode_t mode = isOwn ? ownFileMode : newFileMode;
    const int common = O_CLOEXEC | O_NONBLOCK | O_NOCTTY | flags;
    Descriptor file(::open(path.c_str(), common | (write ? O_RDWR : O_RDONLY), mode));
    if (!file && write && errno == EACCES) {
        file = Descriptor(::open(path.c_str(), common | O_WRONLY, mode));
    }
    return file;
}

// An empty path: what is open never ends with its handle.
OpenedFile makeObject(Descriptor file, SharingLocks locks, const Request& request,
                      const std::string& path) {
    auto object = std::make_unique<FileObject>(std::move(file), std::move(locks),
                                               request.sharing.uses.read, request.wantsWrite());
    if ((request.flags & FILE_FLAG_DELETE_ON_CLOSE) != 0) object->removeOnClose(path);
    return {std::move(object), ERROR_SUCCESS};
}

// Reading and writing wait for what is no file.
bool makeWaiting(int file) {
    const int flags = ::fcntl(file, F_GETFL);
    return flags >= 0 && ::fcntl(file, F_SETFL, flags & ~O_NONBLOCK) == 0;
}

// Empties a file; pipes and devices have nothing to lose.
bool empty(int file, const struct stat& status) {
    return !S_ISREG(status.st_mode) || ::ftruncate(file, 0) == 0;
}

// Whether the path still leads to the file. Another process may have moved it after the open.
bool leadsTo(const std::string& path, const struct stat& status) {
    struct stat named {};
    return ::stat(path.c_str(), &named) == 0 && named.st_dev == status.st_dev &&
           named.st_ino == status.st_ino;
}

// Why an existing file cannot be had in the way that is asked for; 0: it can.
DWORD objection(const Request& request, const std::string& path, const struct stat& status) {
    if (S_ISDIR(status.st_mode)) {
        if (request.disposition == CREATE_NEW) return ERROR_FILE_EXISTS;
        const bool suits = request.wantsDirectory() && !request.replaces();
        return suits ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
    }
    if (request.disposition == CREATE_NEW) return ERROR_FILE_EXISTS;
    if (S_ISSOCK(status.st_mode) || S_ISBLK(status.st_mode)) return ERROR_ACCESS_DENIED;
    const bool changes = request.wantsWrite() || request.replaces();
    if (changes && isReadOnly(status)) return ERROR_ACCESS_DENIED;
    if (request.disposition == CREATE_ALWAYS) {
        constexpr DWORD kept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
        const DWORD present = attributesOf(path, status) & kept;
        if ((present & ~request.flags) != 0) return ERROR_ACCESS_DENIED;
    }
    return ERROR_SUCCESS;
}

// The steps after the host's open, in the order in which a failure leaves the least behind.
OpenedFile finishExisting(Descriptor file, const Request& request, const std::string& path) {
    struct stat status {};
    if (::fstat(file.get(), &status) != 0) return refuse(codeOfHostError(errno));
    if (const DWORD code = objection(request, path, status)) return refuse(code);
    const bool isPlain = S_ISREG(status.st_mode) || S_ISDIR(status.st_mode);
    if (!isPlain && !makeWaiting(file.get())) return refuse(codeOfHostError(errno));
    auto locks = share(file.get(), request.sharing);
    if (!locks) return refuse(ERROR_SHARING_VIOLATION);
    if (request.replaces() && !leadsTo(path, status)) return refuse(ERROR_SHARING_VIOLATION);
    if (request.replaces() && !empty(file.get(), status)) {
        return refuse(codeOfHostError(errno));
    }
    if (request.disposition == CREATE_ALWAYS && S_ISREG(status.st_mode)) {
        const DWORD wanted = request.flags & settableAttributes;
        if (wanted != 0) setAttributes(path, status, wanted | FILE_ATTRIBUTE_ARCHIVE);
    }
    auto opened = makeObject(std::move(file), std::move(*locks), request, path);
    if (request.creates()) opened.code = ERROR_ALREADY_EXISTS;
    return opened;
}

OpenedFile openExisting(const Request& request, const HostName& name) {
    // A link to nothing is not found, and nothing is made where it leads.
    if (S_ISLNK(name.status.st_mode)) return refuse(ERROR_FILE_NOT_FOUND);
    // Attributes are looked at before the open too: a read-only file refuses writers even where the
    // host would let them in, and a directory cannot be opened for writing.
    if (const DWORD code = objection(request, name.path, name.status)) return refuse(code);
    const bool write = !name.isDirectory() && (request.wantsWrite() || request.replaces());
    auto file = openDescriptor(name.path, write, 0);
    if (!file) return refuse(codeOfHostError(errno));
    return finishExisting(std::move(file), request, name.path);
}

OpenedFile createFile(const Request& request, const HostName& name) {
    auto file = openDescriptor(name.path, true, O_CREAT | O_EXCL);
    if (!file && errno == EEXIST) {
        // Another process was faster: what it made is now an existing file.
        HostName made{name.path};
        if (::stat(name.path.c_str(), &made.status) == 0) return openExisting(request, made);
        errno = EEXIST;
    }
    if (!file) return refuse(codeOfHostError(errno));
    auto locks = share(file.get(), request.sharing);
    if (!locks) return refuse(ERROR_SHARING_VIOLATION);  // somebody was faster with the new file
    const DWORD wanted = request.flags & settableAttributes & ~FILE_ATTRIBUTE_ARCHIVE;
    struct stat status {};
    if (wanted != 0 && ::fstat(file.get(), &status) == 0) {
        setAttributes(name.path, status, wanted | FILE_ATTRIBUTE_ARCHIVE);
    }
    return makeObject(std::move(file), std::move(*locks), request, name.path);
}

// The link itself: what is asked of the handle is not asked of the target.
OpenedFile openLink(const Request& request, const HostName& name) {
    if (request.disposition == CREATE_NEW) return refuse(ERROR_FILE_EXISTS);
    if (!request.wantsDirectory() || request.replaces()) return refuse(ERROR_ACCESS_DENIED);
    Descriptor link(::open(name.path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    return link ? makeObject(std::move(link), SharingLocks(), request, name.path)
                : refuse(codeOfHostError(errno));
}

OpenedFile openNullDevice(const Request& request) {
    auto device = openDescriptor("/dev/null", true, 0);
    if (!device) return refuse(codeOfHostError(errno));
    auto opened = makeObject(std::move(device), SharingLocks(), request, {});
    if (request.disposition == OPEN_ALWAYS) opened.code = ERROR_ALREADY_EXISTS;
    return opened;
}

// The usual case: a file that exists under exactly this name is opened without a look before it.
std::optional<OpenedFile> openAsGiven(const Request& request, const Path& path) {
    if (request.disposition != OPEN_EXISTING || path.trailingSeparator) return std::nullopt;
    if (request.wantsLink()) return std::nullopt;
    const auto name = literalHostPath(path);
    auto file = openDescriptor(name, request.wantsWrite(), 0);
    return file ? std::optional(finishExisting(std::move(file), request, name)) : std::nullopt;
}

HostName findName(const Request& request, const Path& path, NameLock& lock) {
    if (!request.creates()) return findOnHost(path);
    const bool isNew = request.disposition == CREATE_NEW && !path.isRoot();
    return isNew ? findNewName(path, lock) : findToMake(path, lock);
}

OpenedFile openPath(const Request& request, const Path& path) {
    if (path.kind == Path::Kind::Invalid) return refuse(path.error);
    if (path.kind == Path::Kind::NullDevice) return openNullDevice(request);
    if (auto opened = openAsGiven(request, path)) return std::move(*opened);
    NameLock lock;
    const auto name = findName(request, path, lock);
    if (name.exists() && request.wantsLink() && isDirectoryLink(name.path, name.status)) {
        return openLink(request, name);
    }
    if (name.exists()) return openExisting(request, name);
    if (!request.creates() || !name.canBeMade()) return refuse(name.error);
    return path.trailingSeparator ? refuse(ERROR_INVALID_NAME) : createFile(request, name);
}

bool isSound(const Request& request) {
    if (request.disposition < CREATE_NEW || request.disposition > TRUNCATE_EXISTING) return false;
    return request.disposition != TRUNCATE_EXISTING || request.wantsWrite();
}

}  // namespace

OpenedFile openFile(const Path& path, const OpenRequest& wanted) {
    const Request request{wanted.disposition, wanted.flags, sharingOf(wanted.access, wanted.share)};
    return isSound(request) ? openPath(request, path) : refuse(ERROR_INVALID_PARAMETER);
}

}  // namespace machine
