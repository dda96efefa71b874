// Removing files and directories.
#include "tree/removal.h"

#include <unistd.h>

#include <cerrno>
#include <string>

#include "files/attributes.h"
#include "files/open_handles.h"
#include "host/host_errors.h"
#include "winerror.h"

namespace machine {

namespace {

DWORD removeLink(const std::string& path) {
    return ::unlink(path.c_str()) == 0 ? ERROR_SUCCESS : codeOfHostError(errno);
}

}  // namespace

DWORD removeFile(const HostName& found) {
    if (!found.exists()) return found.error;
    if (found.isDirectory() || isReadOnly(found.status)) return ERROR_ACCESS_DENIED;
    if (isDirectoryLink(found.path, found.status)) return ERROR_ACCESS_DENIED;
    if (const DWORD code = objectionToMoving(found)) return code;
    return ::unlink(found.path.c_str()) == 0 ? ERROR_SUCCESS : codeOfHostError(errno);
}

DWORD removeDirectory(const HostName& found) {
    if (!found.exists()) return found.error;
    if (isDirectoryLink(found.path, found.status)) return removeLink(found.path);
    if (!found.isDirectory()) return ERROR_DIRECTORY;
    if (isReadOnly(found.status)) return ERROR_ACCESS_DENIED;
    return ::rmdir(found.path.c_str()) == 0 ? ERROR_SUCCESS : codeOfHostError(errno);
}

}  // namespace machine
