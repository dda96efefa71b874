// Making and removing directories, the current one, and mount points.
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "core/handles.h"
#include "core/script.h"
#include "fileapi.h"
#include "files/file_object.h"
#include "host/host_errors.h"
#include "ioapiset.h"
#include "names/lookup.h"
#include "names/wide_argument.h"
#include "tree/mount_point.h"
#include "tree/removal.h"
#include "winerror.h"
#include "winioctl.h"

namespace {

using machine::failWith;

}  // namespace

BOOL WINAPI CreateDirectoryW(LPCWSTR name, LPSECURITY_ATTRIBUTES security) try {
    if (const auto scripted = machine::call<&CreateDirectoryW>(name, security)) {
        return scripted.valueOr(FALSE);
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
    if (const auto scripted = machine::call<&RemoveDirectoryW>(name)) {
        return scripted.valueOr(FALSE);
    }
    const auto path = machine::parsePath(name);
    if (const DWORD code = path.fileError()) return failWith(code, FALSE);
    const DWORD code = machine::removeDirectory(machine::findOnHost(path));
    return code == ERROR_SUCCESS ? TRUE : failWith(code, FALSE);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}

BOOL WINAPI SetCurrentDirectoryA(LPCSTR name) try {
    if (const auto scripted = machine::call<&SetCurrentDirectoryA>(name)) {
        return scripted.valueOr(FALSE);
    }
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

BOOL WINAPI DeviceIoControl(HANDLE device, DWORD code, LPVOID input, DWORD inputSize, LPVOID output,
                            DWORD outputSize, LPDWORD stored, LPOVERLAPPED overlapped) try {
    const auto scripted =
        machine::call<&DeviceIoControl>(device, code, machine::Bytes{input, inputSize}, inputSize,
                                        output, outputSize, stored, overlapped);
    if (scripted) return scripted.valueOr(FALSE);
    const machine::Pinned<machine::FileObject> file(device);
    if (!file) return failWith(ERROR_INVALID_HANDLE, FALSE);
    if (code != FSCTL_SET_REPARSE_POINT) return failWith(ERROR_INVALID_FUNCTION, FALSE);
    if (stored != nullptr) *stored = 0;
    const DWORD error = machine::setMountPoint(*file, static_cast<const char*>(input), inputSize);
    return error == ERROR_SUCCESS ? TRUE : failWith(error, FALSE);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
