// Removing files.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "file_moving.h"
#include "fileapi.h"
#include "machine/attributes.h"
#include "machine/file_object.h"
#include "machine/host_errors.h"
#include "machine/links.h"
#include "machine/script.h"
#include "machine/sharing.h"
#include "winerror.h"

namespace {

DWORD deleteFile(const machine::HostName& found) {
    if (!found.exists()) return found.error;
    if (found.isDirectory() || machine::isReadOnly(found.status)) return ERROR_ACCESS_DENIED;
    if (machine::isDirectoryLink(found.path, found.status)) return ERROR_ACCESS_DENIED;
    if (const DWORD code = objectionToMove(found.path)) return code;
    return ::unlink(found.path.c_str()) == 0 ? ERROR_SUCCESS : machine::codeOfHostError(errno);
}

}  // namespace

DWORD objectionToMove(const std::string& hostPath) {
    const machine::Descriptor file(::open(hostPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file && (errno == EMFILE || errno == ENFILE || errno == ENOMEM)) {
        return machine::codeOfHostError(errno);
    }
    if (!file) return ERROR_SUCCESS;  // a file that cannot be asked is the host's to decide
    constexpr DWORD all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const bool shared = machine::couldShare(file.get(), machine::sharingOf(DELETE, all));
    return shared ? ERROR_SUCCESS : ERROR_SHARING_VIOLATION;
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
