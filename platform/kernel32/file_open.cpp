// Opening and creating files.
#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>

#include "fileapi.h"
#include "machine/ansi.h"
#include "machine/attributes.h"
#include "machine/file_object.h"
#include "machine/host_errors.h"
#include "machine/links.h"
#include "machine/lookup.h"
#include "machine/script.h"
#include "machine/sharing.h"
#include "machine/temporary_names.h"
#include "winerror.h"

namespace {

using machine::Descriptor;
using machine::failWith;
using machine::HostName;
using machine::isDirectoryLink;

// What a call of CreateFileW asks for.
struct Request {
    DWORD disposition, flags;
    machine::Sharing sharing;

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

HANDLE refuse(DWORD code) {
    return failWith(code, INVALID_HANDLE_VALUE);
}

// A write-only handle gets a descriptor that can read as well, since its share of the file is told
// by read locks; the handle itself knows what it may do.
Descriptor openDescriptor(const std::string& path, bool write, int flags) {
    constexpr mode_t newFileMode = 0666, ownFileMode = 0600;
    const bool isOwn = (flags & O_CREAT) != 0 && machine::isTemporaryName(path);
    const mode_t mode = isOwn ? ownFileMode : newFileMode;
    const int common = O_CLOEXEC | O_NONBLOCK | flags;  // opening a pipe waits for nobody
    Descriptor file(::open(path.c_str(), common | (write ? O_RDWR : O_RDONLY), mode));
    if (!file && write && errno == EACCES) {
        file = Descriptor(::open(path.c_str(), common | O_WRONLY, mode));
    }
    return file;
}

// From here on, reading and writing a pipe wait for its other end.
void waitForBytes(int pipe) {
    const int flags = ::fcntl(pipe, F_GETFL);
    if (flags >= 0) ::fcntl(pipe, F_SETFL, flags & ~O_NONBLOCK);
}

HANDLE makeHandle(Descriptor file, const Request& request) {
    auto object = std::make_unique<machine::FileObject>(std::move(file), request.sharing.uses.read,
                                                        request.wantsWrite());
    object->removedOnClose = (request.flags & FILE_FLAG_DELETE_ON_CLOSE) != 0;
    const HANDLE handle = machine::insertObject(std::move(object));
    if (handle == nullptr) return refuse(ERROR_TOO_MANY_OPEN_FILES);
    SetLastError(ERROR_SUCCESS);
    return handle;
}

// Why an existing file cannot be had in the way that is asked for; 0: it can.
DWORD objection(const Request& request, const std::string& path, const struct stat& status) {
    if (S_ISDIR(status.st_mode)) {
        if (request.disposition == CREATE_NEW) return ERROR_FILE_EXISTS;
        const bool suits = request.wantsDirectory() && !request.replaces();
        return suits ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
    }
    if (request.disposition == CREATE_NEW) return ERROR_FILE_EXISTS;
    const bool changes = request.wantsWrite() || request.replaces();
    if (changes && machine::isReadOnly(status)) return ERROR_ACCESS_DENIED;
    if (request.disposition == CREATE_ALWAYS) {
        constexpr DWORD kept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
        const DWORD present = machine::attributesOf(path, status) & kept;
        if ((present & ~request.flags) != 0) return ERROR_ACCESS_DENIED;
    }
    return ERROR_SUCCESS;
}

// The steps behind the host's open, in the order in which a failure leaves the least behind.
HANDLE finishExisting(Descriptor file, const Request& request, const std::string& path) {
    struct stat status {};
    if (::fstat(file.get(), &status) != 0) return refuse(machine::codeOfHostError(errno));
    if (const DWORD code = objection(request, path, status)) return refuse(code);
    if (S_ISFIFO(status.st_mode)) waitForBytes(file.get());
    if (!machine::share(file.get(), request.sharing)) return refuse(ERROR_SHARING_VIOLATION);
    if (request.replaces() && ::ftruncate(file.get(), 0) != 0) {
        return refuse(machine::codeOfHostError(errno));
    }
    if (request.disposition == CREATE_ALWAYS) {
        const DWORD wanted = request.flags & machine::settableAttributes;
        if (wanted != 0) machine::setAttributes(path, status, wanted | FILE_ATTRIBUTE_ARCHIVE);
    }
    const HANDLE handle = makeHandle(std::move(file), request);
    if (handle != INVALID_HANDLE_VALUE && request.creates()) SetLastError(ERROR_ALREADY_EXISTS);
    return handle;
}

HANDLE openExisting(const Request& request, const HostName& name) {
    // Attributes are looked at before the open too: a read-only file refuses writers even where the
    // host would let them in, and a directory cannot be opened for writing.
    if (const DWORD code = objection(request, name.path, name.status)) return refuse(code);
    const bool write = !name.isDirectory() && (request.wantsWrite() || request.replaces());
    auto file = openDescriptor(name.path, write, 0);
    if (!file) return refuse(machine::codeOfHostError(errno));
    return finishExisting(std::move(file), request, name.path);
}

HANDLE createFile(const Request& request, const HostName& name) {
    auto file = openDescriptor(name.path, true, O_CREAT | O_EXCL);
    if (!file && errno == EEXIST) {
        // Another process was faster: what it made is now an existing file.
        HostName made{name.path};
        if (::stat(name.path.c_str(), &made.status) == 0) return openExisting(request, made);
        errno = EEXIST;
    }
    if (!file) return refuse(machine::codeOfHostError(errno));
    if (!machine::share(file.get(), request.sharing)) return refuse(ERROR_SHARING_VIOLATION);
    const DWORD wanted = request.flags & machine::settableAttributes & ~FILE_ATTRIBUTE_ARCHIVE;
    struct stat status {};
    if (wanted != 0 && ::fstat(file.get(), &status) == 0) {
        machine::setAttributes(name.path, status, wanted | FILE_ATTRIBUTE_ARCHIVE);
    }
    return makeHandle(std::move(file), request);
}

// The link itself: what is asked of the handle is not asked of the target.
HANDLE openLink(const Request& request, const HostName& name) {
    if (request.disposition == CREATE_NEW) return refuse(ERROR_FILE_EXISTS);
    if (!request.wantsDirectory() || request.replaces()) return refuse(ERROR_ACCESS_DENIED);
    Descriptor link(::open(name.path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    return link ? makeHandle(std::move(link), request) : refuse(machine::codeOfHostError(errno));
}

HANDLE openNullDevice(const Request& request) {
    const HANDLE handle = makeHandle(openDescriptor("/dev/null", true, 0), request);
    const bool opened = handle != INVALID_HANDLE_VALUE;
    if (opened && request.disposition == OPEN_ALWAYS) SetLastError(ERROR_ALREADY_EXISTS);
    return handle;
}

// The usual case: a file that exists under exactly this name is opened without a look before it.
HANDLE openAsItStands(const Request& request, const machine::Path& path) {
    if (request.disposition != OPEN_EXISTING || path.trailingSeparator) return nullptr;
    if (request.wantsLink()) return nullptr;
    const auto name = machine::literalHostPath(path);
    auto file = openDescriptor(name, request.wantsWrite(), 0);
    return file ? finishExisting(std::move(file), request, name) : nullptr;
}

HANDLE openPath(const Request& request, const machine::Path& path) {
    if (path.kind == machine::Path::Kind::Invalid) return refuse(path.error);
    if (path.kind == machine::Path::Kind::NullDevice) return openNullDevice(request);
    if (const HANDLE handle = openAsItStands(request, path)) return handle;
    machine::NameLock lock;
    const auto name =
        request.creates() ? machine::findToMake(path, lock) : machine::findOnHost(path);
    if (name.exists() && request.wantsLink() && isDirectoryLink(name.path, name.status)) {
        return openLink(request, name);
    }
    if (name.exists() && S_ISLNK(name.status.st_mode)) return refuse(ERROR_FILE_NOT_FOUND);
    if (name.exists()) return openExisting(request, name);
    if (!request.creates() || !name.canBeMade()) return refuse(name.error);
    return path.trailingSeparator ? refuse(ERROR_INVALID_NAME) : createFile(request, name);
}

bool isSound(const Request& request) {
    if (request.disposition < CREATE_NEW || request.disposition > TRUNCATE_EXISTING) return false;
    return request.disposition != TRUNCATE_EXISTING || request.wantsWrite();
}

HANDLE open(LPCWSTR name, DWORD access, DWORD share, DWORD disposition, DWORD flags) {
    const Request request{disposition, flags, machine::sharingOf(access, share)};
    const auto path = machine::parsePath(name);
    return isSound(request) ? openPath(request, path) : refuse(ERROR_INVALID_PARAMETER);
}

}  // namespace

HANDLE WINAPI CreateFileW(LPCWSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                          DWORD disposition, DWORD flags, HANDLE templateFile) try {
    if (const auto scripted =
            machine::call("CreateFileW", name, access, share, static_cast<const void*>(security),
                          disposition, flags, templateFile)) {
        return scripted.or_(INVALID_HANDLE_VALUE);
    }
    return open(name, access, share, disposition, flags);
} catch (const std::exception&) {
    return machine::outOfMemory(INVALID_HANDLE_VALUE);
}

HANDLE WINAPI CreateFileA(LPCSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                          DWORD disposition, DWORD flags, HANDLE templateFile) try {
    if (const auto scripted =
            machine::call("CreateFileA", name, access, share, static_cast<const void*>(security),
                          disposition, flags, templateFile)) {
        return scripted.or_(INVALID_HANDLE_VALUE);
    }
    return open(machine::WideArgument(name), access, share, disposition, flags);
} catch (const std::exception&) {
    return machine::outOfMemory(INVALID_HANDLE_VALUE);
}
