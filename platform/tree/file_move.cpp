// Moving and renaming files and directories.
#include "tree/file_move.h"

#include <unistd.h>

#include <cerrno>
#include <string>

#include "files/open_handles.h"
#include "host/host_errors.h"
#include "names/lookup.h"
#include "text/utf16.h"
#include "tree/file_copy.h"
#include "tree/temporary_neighbour.h"
#include "winerror.h"

namespace machine {

namespace {

bool isSameFile(const HostName& left, const HostName& right) {
    return left.status.st_dev == right.status.st_dev && left.status.st_ino == right.status.st_ino;
}

// Between file systems: a copy that refuses an existing target, then the end of the source. If that
// cannot be, the copy goes again.
DWORD moveByCopy(const HostName& from, const std::string& to) {
    if (from.isDirectory()) return ERROR_NOT_SAME_DEVICE;
    const DWORD code = copyHostFile(from, to, false);
    if (code == ERROR_FILE_EXISTS) return ERROR_ALREADY_EXISTS;
    if (code != ERROR_SUCCESS) return code;
    if (::unlink(from.path.c_str()) == 0) return ERROR_SUCCESS;
    const DWORD reason = codeOfHostError(errno);
    ::unlink(to.c_str());
    return reason;
}

}  // namespace

DWORD moveFile(const Path& source, const Path& target) {
    if (source.isRoot() || target.isRoot()) return ERROR_ACCESS_DENIED;
    const auto from = findOnHost(source);
    if (!from.exists()) return from.error;
    if (target.trailingSeparator && !from.isDirectory()) return ERROR_DIRECTORY;
    NameLock lock;
    const auto to = findNewName(target, lock);
    // The same file under a name that differs by case only, or not at all.
    const bool same = to.exists() && isSameFile(from, to) && from.path == to.path;
    if (to.exists() && !same) return ERROR_ALREADY_EXISTS;
    if (!same && !to.canBeMade()) return to.error;
    if (const DWORD code = objectionToMoving(from)) return code;
    const auto folder = to.path.substr(0, to.path.rfind('/') + 1);
    const auto name = folder + toUtf8(target.components.back());
    const int renamed = renameFile(from.path, name, same);
    const DWORD code = renamed == 0 ? DWORD{ERROR_SUCCESS} : codeOfHostError(errno);
    if (code != ERROR_NOT_SAME_DEVICE) return code;
    lock.release();  // the copy keeps the name at its end
    return moveByCopy(from, name);
}

}  // namespace machine
