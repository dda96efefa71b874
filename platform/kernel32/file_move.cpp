// Moving and renaming files and directories.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "core/script.h"
#include "file_moving.h"
#include "host/host_errors.h"
#include "text/utf16.h"
#include "winbase.h"
#include "winerror.h"

namespace {

using machine::failWith;
using machine::HostName;

bool isSameFile(const HostName& left, const HostName& right) {
    return left.status.st_dev == right.status.st_dev && left.status.st_ino == right.status.st_ino;
}

DWORD renameHost(const HostName& from, const std::string& to, bool replace) {
    const unsigned flags = replace ? 0 : RENAME_NOREPLACE;
    if (::renameat2(AT_FDCWD, from.path.c_str(), AT_FDCWD, to.c_str(), flags) == 0) {
        return ERROR_SUCCESS;
    }
    if (errno == EINVAL && !replace && !from.isDirectory() &&
        ::link(from.path.c_str(), to.c_str()) == 0) {  // a file system without the flag
        ::unlink(from.path.c_str());
        return ERROR_SUCCESS;
    }
    return machine::codeOfHostError(errno);
}

// Between file systems: a copy that refuses an existing target, then the end of the source.
DWORD moveByCopy(const HostName& from, const std::string& to) {
    if (from.isDirectory()) return ERROR_NOT_SAME_DEVICE;
    const DWORD code = copyHostFile(from, to, false);
    if (code == ERROR_FILE_EXISTS) return ERROR_ALREADY_EXISTS;
    if (code != ERROR_SUCCESS) return code;
    return ::unlink(from.path.c_str()) == 0 ? ERROR_SUCCESS : machine::codeOfHostError(errno);
}

DWORD move(const machine::Path& source, const machine::Path& target) {
    if (source.isRoot() || target.isRoot()) return ERROR_ACCESS_DENIED;
    const auto from = machine::findOnHost(source);
    if (!from.exists()) return from.error;
    if (target.trailingSeparator && !from.isDirectory()) return ERROR_DIRECTORY;
    machine::NameLock lock;
    const auto to = machine::findNewName(target, lock);
    // The same file under a name that differs by case only, or not at all.
    const bool same = to.exists() && isSameFile(from, to) && from.path == to.path;
    if (to.exists() && !same) return ERROR_ALREADY_EXISTS;
    if (!same && !to.canBeMade()) {
        return to.error;
    }
    if (const DWORD code = objectionToMoving(from)) return code;
    const auto folder = to.path.substr(0, to.path.rfind('/') + 1);
    const auto name = folder + machine::toUtf8(target.components.back());
    const DWORD code = renameHost(from, name, same);
    if (code != ERROR_NOT_SAME_DEVICE) return code;
    lock.release();  // the copy keeps the name at its end
    return moveByCopy(from, name);
}

}  // namespace

BOOL WINAPI MoveFileW(LPCWSTR from, LPCWSTR to) try {
    if (const auto scripted = machine::call("MoveFileW", from, to)) return scripted.or_(FALSE);
    const auto source = machine::parsePath(from), target = machine::parsePath(to);
    const DWORD pathError = source.fileError() != 0 ? source.fileError() : target.fileError();
    if (pathError != 0) return failWith(pathError, FALSE);
    const DWORD code = move(source, target);
    return code == ERROR_SUCCESS ? TRUE : failWith(code, FALSE);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
