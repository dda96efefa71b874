// Making and removing directories, and the current one.
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "core/script.h"
#include "fileapi.h"
#include "files/attributes.h"
#include "files/links.h"
#include "host/host_errors.h"
#include "names/lookup.h"
#include "names/wide_argument.h"
#include "winerror.h"

namespace {

using machine::failWith;

// A link goes, and its target stays.
DWORD removeLink(const std::string& path) {
    return ::unlink(path.c_str()) == 0 ? ERROR_SUCCESS : machine::codeOfHostError(errno);
}

DWORD removeDirectory(const machine::HostName& found) {
    if (!found.exists()) return found.error;
    if (machine::isDirectoryLink(found.path, found.status)) return removeLink(found.path);
    if (!found.isDirectory()) return ERROR_DIRECTORY;
    if (machine::isReadOnly(found.status)) return ERROR_ACCESS_DENIED;
    return ::rmdir(found.path.c_str()) == 0 ? ERROR_SUCCESS : machine::codeOfHostError(errno);
}

}  // namespace

BOOL WINAPI CreateDirectoryW(LPCWSTR name, LPSECURITY_ATTRIBUTES security) try {
    if (const auto scripted =
            machine::call("CreateDirectoryW", name, static_cast<const void*>(security))) {
        return scripted.or_(FALSE);
    }
    constexpr mode_t newDirectoryMode = 0777;
    auto path = machine::parsePath(name);
    path.trailingSeparator = false;  // whatever stands there, it is in the way
    if (const DWORD code = path.fileError()) return failWith(code, FALSE);
    machine::NameLock lock;
    const auto found = machine::findToMake(path, lock);
    if (found.exists()) return failWith(ERROR_ALREADY_EXISTS, FALSE);
    if (!found.canBeMade()) return failWith(found.error, FALSE);
    if (::mkdir(found.path.c_str(), newDirectoryMode) == 0) return TRUE;
    return failWith(machine::codeOfHostError(errno), FALSE);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}

BOOL WINAPI RemoveDirectoryW(LPCWSTR name) try {
    if (const auto scripted = machine::call("RemoveDirectoryW", name)) return scripted.or_(FALSE);
    const auto path = machine::parsePath(name);
    if (const DWORD code = path.fileError()) return failWith(code, FALSE);
    const DWORD code = removeDirectory(machine::findOnHost(path));
    return code == ERROR_SUCCESS ? TRUE : failWith(code, FALSE);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}

BOOL WINAPI SetCurrentDirectoryA(LPCSTR name) try {
    if (const auto scripted = machine::call("SetCurrentDirectoryA", name))
        return scripted.or_(FALSE);
    const auto path = machine::parsePath(machine::WideArgument(name));
    if (const DWORD code = path.fileError()) return failWith(code, FALSE);
    const auto found = machine::findOnHost(path);
    if (!found.exists()) return failWith(found.error, FALSE);
    if (!found.isDirectory()) return failWith(ERROR_DIRECTORY, FALSE);
    if (::chdir(found.path.c_str()) != 0) return failWith(machine::codeOfHostError(errno), FALSE);
    machine::nameCurrentDirectory(path);
    return TRUE;
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
