// Attributes of files and directories by name.
#include "core/script.h"
#include "fileapi.h"
#include "files/attributes.h"
#include "host/host_errors.h"
#include "names/lookup.h"
#include "names/wide_argument.h"
#include "winerror.h"

namespace {

using machine::failWith;

DWORD getAttributes(LPCWSTR name) {
    const auto path = machine::parsePath(name);
    if (path.kind == machine::Path::Kind::NullDevice) return FILE_ATTRIBUTE_ARCHIVE;
    if (path.error != 0) return failWith(path.error, INVALID_FILE_ATTRIBUTES);
    const auto found = machine::findOnHost(path);
    if (!found.exists()) return failWith(found.error, INVALID_FILE_ATTRIBUTES);
    // The folder of a drive may be a link of the host's, but a root is none.
    const DWORD attributes = machine::attributesOf(found.path, found.status);
    return path.isRoot() ? attributes & ~FILE_ATTRIBUTE_REPARSE_POINT : attributes;
}

BOOL setAttributes(LPCWSTR name, DWORD attributes) {
    const auto path = machine::parsePath(name);
    if (const DWORD code = path.fileError()) return failWith(code, FALSE);
    const auto found = machine::findOnHost(path);
    if (!found.exists()) return failWith(found.error, FALSE);
    const DWORD code = machine::setAttributes(found.path, found.status, attributes);
    return code == ERROR_SUCCESS ? TRUE : failWith(code, FALSE);
}

}  // namespace

DWORD WINAPI GetFileAttributesW(LPCWSTR name) try {
    if (const auto scripted = machine::call<&GetFileAttributesW>(name)) {
        return scripted.valueOr(INVALID_FILE_ATTRIBUTES);
    }
    return getAttributes(name);
} catch (const std::exception&) {
    return machine::outOfMemory(INVALID_FILE_ATTRIBUTES);
}

DWORD WINAPI GetFileAttributesA(LPCSTR name) try {
    if (const auto scripted = machine::call<&GetFileAttributesA>(name)) {
        return scripted.valueOr(INVALID_FILE_ATTRIBUTES);
    }
    return getAttributes(machine::WideArgument(name));
} catch (const std::exception&) {
    return machine::outOfMemory(INVALID_FILE_ATTRIBUTES);
}

BOOL WINAPI SetFileAttributesW(LPCWSTR name, DWORD attributes) try {
    if (const auto scripted = machine::call<&SetFileAttributesW>(name, attributes)) {
        return scripted.valueOr(FALSE);
    }
    return setAttributes(name, attributes);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}

BOOL WINAPI SetFileAttributesA(LPCSTR name, DWORD attributes) try {
    if (const auto scripted = machine::call<&SetFileAttributesA>(name, attributes)) {
        return scripted.valueOr(FALSE);
    }
    return setAttributes(machine::WideArgument(name), attributes);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
