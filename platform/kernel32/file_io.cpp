// Reading, writing, positions and sizes of open files.
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "core/script.h"
#include "fileapi.h"
#include "files/file_io.h"
#include "files/file_object.h"
#include "host/host_errors.h"
#include "host/size_limit.h"
#include "winerror.h"

namespace {

using machine::failWith;
using machine::FileObject;
using machine::Pinned;

BOOL finished(DWORD code) {
    return code == ERROR_SUCCESS ? TRUE : failWith(code, FALSE);
}

}  // namespace

BOOL WINAPI ReadFile(HANDLE handle, LPVOID target, DWORD count, LPDWORD moved,
                     LPOVERLAPPED overlapped) try {
    if (const auto scripted = machine::call<&ReadFile>(handle, target, count, moved, overlapped)) {
        return scripted.valueOr(FALSE);
    }
    *moved = 0;
    const Pinned<FileObject> file(handle);
    if (!file) return failWith(ERROR_INVALID_HANDLE, FALSE);
    if (!file->canRead) return failWith(ERROR_ACCESS_DENIED, FALSE);
    return finished(
        machine::readBytes(file->descriptor.get(), static_cast<char*>(target), count, *moved));
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}

BOOL WINAPI WriteFile(HANDLE handle, LPCVOID source, DWORD count, LPDWORD moved,
                      LPOVERLAPPED overlapped) try {
    if (const auto scripted = machine::call<&WriteFile>(handle, source, count, moved, overlapped)) {
        return scripted.valueOr(FALSE);
    }
    *moved = 0;
    const Pinned<FileObject> file(handle);
    if (!file) return failWith(ERROR_INVALID_HANDLE, FALSE);
    if (!file->canWrite) return failWith(ERROR_ACCESS_DENIED, FALSE);
    return finished(machine::writeBytes(file->descriptor.get(), static_cast<const char*>(source),
                                        count, *moved));
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}

DWORD WINAPI SetFilePointer(HANDLE handle, LONG distance, PLONG distanceHigh, DWORD origin) try {
    if (const auto scripted =
            machine::call<&SetFilePointer>(handle, distance, distanceHigh, origin)) {
        return scripted.valueOr(INVALID_SET_FILE_POINTER);
    }
    const Pinned<FileObject> file(handle);
    if (!file) return failWith(ERROR_INVALID_HANDLE, INVALID_SET_FILE_POINTER);
    constexpr int origins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
    if (origin > FILE_END) return failWith(ERROR_INVALID_PARAMETER, INVALID_SET_FILE_POINTER);
    const std::int64_t whole = distanceHigh == nullptr ? distance
                                                       : (std::int64_t{*distanceHigh} << 32) |
                                                             static_cast<std::uint32_t>(distance);
    const auto former = ::lseek(file->descriptor.get(), 0, SEEK_CUR);
    const auto position = ::lseek(file->descriptor.get(), whole, origins[origin]);
    if (distanceHigh == nullptr && position > INVALID_SET_FILE_POINTER) {
        ::lseek(file->descriptor.get(), former, SEEK_SET);
        return failWith(ERROR_INVALID_PARAMETER, INVALID_SET_FILE_POINTER);
    }
    if (position < 0) {
        const DWORD code = errno == EINVAL ? ERROR_NEGATIVE_SEEK : machine::codeOfHostError(errno);
        return failWith(code, INVALID_SET_FILE_POINTER);
    }
    if (distanceHigh != nullptr) *distanceHigh = static_cast<LONG>(position >> 32);
    const auto low = static_cast<DWORD>(position);
    if (low == INVALID_SET_FILE_POINTER) SetLastError(NO_ERROR);
    return low;
} catch (const std::exception&) {
    return machine::outOfMemory(INVALID_SET_FILE_POINTER);
}

BOOL WINAPI SetEndOfFile(HANDLE handle) try {
    if (const auto scripted = machine::call<&SetEndOfFile>(handle)) return scripted.valueOr(FALSE);
    const Pinned<FileObject> file(handle);
    if (!file) return failWith(ERROR_INVALID_HANDLE, FALSE);
    if (!file->canWrite) return failWith(ERROR_ACCESS_DENIED, FALSE);
    machine::answerSizeLimit();
    const auto position = ::lseek(file->descriptor.get(), 0, SEEK_CUR);
    if (position >= 0 && ::ftruncate(file->descriptor.get(), position) == 0) return TRUE;
    return failWith(machine::codeOfHostError(errno), FALSE);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}

DWORD WINAPI GetFileSize(HANDLE handle, LPDWORD sizeHigh) try {
    if (const auto scripted = machine::call<&GetFileSize>(handle, sizeHigh)) {
        return scripted.valueOr(INVALID_FILE_SIZE);
    }
    const Pinned<FileObject> file(handle);
    struct stat status {};
    if (!file) return failWith(ERROR_INVALID_HANDLE, INVALID_FILE_SIZE);
    if (::fstat(file->descriptor.get(), &status) != 0) {
        return failWith(machine::codeOfHostError(errno), INVALID_FILE_SIZE);
    }
    if (sizeHigh != nullptr) *sizeHigh = static_cast<DWORD>(status.st_size >> 32);
    const auto low = static_cast<DWORD>(status.st_size);
    if (low == INVALID_FILE_SIZE) SetLastError(NO_ERROR);
    return low;
} catch (const std::exception&) {
    return machine::outOfMemory(INVALID_FILE_SIZE);
}
