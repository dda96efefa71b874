// Removing files.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "core/script.h"
#include "file_moving.h"
#include "fileapi.h"
#include "files/attributes.h"
#include "files/file_object.h"
#include "files/links.h"
#include "files/sharing.h"
#include "host/descriptor.h"
#include "host/host_errors.h"
#include "winerror.h"

namespace {

DWORD deleteFile(const machine::HostName& found) {
    if (!found.exists()) return found.error;
    if (found.isDirectory() || machine::isReadOnly(found.status)) return ERROR_ACCESS_DENIED;
    if (machine::isDirectoryLink(found.path, found.status)) return ERROR_ACCESS_DENIED;
    if (const DWORD code = objectionToMoving(found)) return code;
    return ::unlink(found.path.c_str()) == 0 ? ERROR_SUCCESS : machine::codeOfHostError(errno);
}

// Opened just to ask who has the file open, for which either kind of access does.
machine::Descriptor openToAsk(const std::string& path) {
    constexpr int common = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    machine::Descriptor file(::open(path.c_str(), O_RDONLY | common));
    if (!file && errno == EACCES) {
        file = machine::Descriptor(::open(path.c_str(), O_WRONLY | common));
    }
    return file;
}

}  // namespace

DWORD objectionOfHandles(const machine::HostName& name, const machine::Sharing& sharing) {
    if (!S_ISREG(name.status.st_mode)) return ERROR_SUCCESS;
    const auto file = openToAsk(name.path);
    if (file) {
        const bool could = machine::couldShare(file.get(), sharing);
        return could ? ERROR_SUCCESS : ERROR_SHARING_VIOLATION;
    }
    const bool lacksRoom = errno == EMFILE || errno == ENFILE || errno == ENOMEM;
    return lacksRoom ? machine::codeOfHostError(errno) : ERROR_SUCCESS;  // else the host decides
}

DWORD objectionToMoving(const machine::HostName& name) {
    constexpr DWORD all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return objectionOfHandles(name, machine::sharingOf(DELETE, all));
}

BOOL WINAPI DeleteFileW(LPCWSTR name) try {
    if (const auto scripted = machine::call("DeleteFileW", name)) return scripted.or_(FALSE);
    const auto path = machine::parsePath(name);
    if (const DWORD code = path.fileError()) return machine::failWith(code, FALSE);
    const DWORD code = deleteFile(machine::findOnHost(path));
    return code == ERROR_SUCCESS ? TRUE : machine::failWith(code, FALSE);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
