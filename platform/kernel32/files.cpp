// Opening, deleting, moving and copying files by name.
#include "core/handles.h"
#include "core/script.h"
#include "fileapi.h"
#include "files/file_open.h"
#include "host/host_errors.h"
#include "names/lookup.h"
#include "names/wide_argument.h"
#include "tree/file_copy.h"
#include "tree/file_move.h"
#include "tree/removal.h"
#include "winbase.h"
#include "winerror.h"

namespace {

using machine::failWith;

HANDLE open(LPCWSTR name, const machine::OpenRequest& request) {
    auto opened = machine::openFile(machine::parsePath(name), request);
    if (opened.file == nullptr) return failWith(opened.code, INVALID_HANDLE_VALUE);
    const HANDLE handle = machine::handles().insert(std::move(opened.file));
    if (handle == nullptr) return failWith(ERROR_TOO_MANY_OPEN_FILES, INVALID_HANDLE_VALUE);
    return failWith(opened.code, handle);
}

BOOL finished(DWORD code) {
    return code == ERROR_SUCCESS ? TRUE : failWith(code, FALSE);
}

// Why one of two names is none of a file; 0: both are.
DWORD errorOf(const machine::Path& source, const machine::Path& target) {
    return source.fileError() != 0 ? source.fileError() : target.fileError();
}

}  // namespace

HANDLE WINAPI CreateFileW(LPCWSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                          DWORD disposition, DWORD flags, HANDLE templateFile) try {
    if (const auto scripted = machine::call<&CreateFileW>(name, access, share, security,
                                                          disposition, flags, templateFile)) {
        return scripted.valueOr(INVALID_HANDLE_VALUE);
    }
    return open(name, {access, share, disposition, flags});
} catch (const std::exception&) {
    return machine::outOfMemory(INVALID_HANDLE_VALUE);
}

HANDLE WINAPI CreateFileA(LPCSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                          DWORD disposition, DWORD flags, HANDLE templateFile) try {
    if (const auto scripted = machine::call<&CreateFileA>(name, access, share, security,
                                                          disposition, flags, templateFile)) {
        return scripted.valueOr(INVALID_HANDLE_VALUE);
    }
    return open(machine::WideArgument(name), {access, share, disposition, flags});
} catch (const std::exception&) {
    return machine::outOfMemory(INVALID_HANDLE_VALUE);
}

BOOL WINAPI DeleteFileW(LPCWSTR name) try {
    if (const auto scripted = machine::call<&DeleteFileW>(name)) return scripted.valueOr(FALSE);
    const auto path = machine::parsePath(name);
    if (const DWORD code = path.fileError()) return failWith(code, FALSE);
    return finished(machine::removeFile(machine::findOnHost(path)));
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}

BOOL WINAPI MoveFileW(LPCWSTR from, LPCWSTR to) try {
    if (const auto scripted = machine::call<&MoveFileW>(from, to)) return scripted.valueOr(FALSE);
    const auto source = machine::parsePath(from), target = machine::parsePath(to);
    if (const DWORD code = errorOf(source, target)) return failWith(code, FALSE);
    return finished(machine::moveFile(source, target));
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}

BOOL WINAPI CopyFileW(LPCWSTR from, LPCWSTR to, BOOL failIfExists) try {
    if (const auto scripted = machine::call<&CopyFileW>(from, to, failIfExists)) {
        return scripted.valueOr(FALSE);
    }
    const auto source = machine::parsePath(from), target = machine::parsePath(to);
    if (const DWORD code = errorOf(source, target)) return failWith(code, FALSE);
    return finished(machine::copyFile(source, target, failIfExists != FALSE));
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
