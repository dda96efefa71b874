// Mappings: the bytes of a file or of a block of memory, to be viewed.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <optional>
#include <utility>

#include "core/ansi.h"
#include "core/script.h"
#include "handleapi.h"
#include "host/descriptor.h"
#include "host/file_room.h"
#include "host/host_errors.h"
#include "host/size_limit.h"
#include "memory/mapping_object.h"
#include "memory/named_blocks.h"
#include "names/wide_argument.h"
#include "winbase.h"
#include "winerror.h"
#include "winnt.h"

namespace {

using machine::Descriptor;
using machine::failWith;
using machine::FileObject;
using machine::MappingObject;
using machine::Pinned;

HANDLE refuse(DWORD code) {
    return failWith(code, HANDLE{nullptr});
}

// A handle of the mapping; `outcome` becomes the last error.
HANDLE insert(std::unique_ptr<MappingObject> mapping, DWORD outcome) {
    const HANDLE handle = machine::insertObject(std::move(mapping));
    return handle != nullptr ? failWith(outcome, handle) : refuse(ERROR_TOO_MANY_OPEN_FILES);
}

HANDLE insert(machine::NamedBlock block) {
    if (!block.file) return refuse(block.error);
    const DWORD outcome = block.error;
    return insert(std::make_unique<machine::NamedMappingObject>(std::move(block)), outcome);
}

// Room for all that a view may write. After a failure the file is as long as before.
DWORD makeRoom(int file, const struct stat& status, std::uint64_t size) {
    constexpr std::uint64_t blockSize = 512;  // the unit of st_blocks
    const auto present = static_cast<std::uint64_t>(status.st_size);
    const auto kept = std::min(size, present);
    const bool hasHoles = static_cast<std::uint64_t>(status.st_blocks) * blockSize < kept;
    int error = hasHoles ? machine::fillHoles(file, kept) : 0;
    if (error == 0 && size > present) {
        error = machine::setAside(file, present, size);
        if (error != 0 && ::ftruncate(file, status.st_size) != 0) error = errno;
    }
    return error == 0 ? DWORD{ERROR_SUCCESS} : machine::codeOfHostError(error);
}

// What a mapping of the file would hold. 0 for `wanted`: what the file holds. Gives the error's
// code, or 0; a file that may be written grows to the size that is wanted.
DWORD settleSize(int file, bool writes, std::uint64_t wanted, std::uint64_t& size) {
    struct stat status {};
    if (::fstat(file, &status) != 0) return machine::codeOfHostError(errno);
    if (!S_ISREG(status.st_mode)) return ERROR_ACCESS_DENIED;
    const auto present = static_cast<std::uint64_t>(status.st_size);
    size = wanted != 0 ? wanted : present;
    if (size == 0) return ERROR_FILE_INVALID;
    if (writes) return makeRoom(file, status, size);
    return size <= present ? ERROR_SUCCESS : ERROR_NOT_ENOUGH_MEMORY;
}

HANDLE mapFile(HANDLE handle, bool writes, std::uint64_t wanted) {
    const Pinned<FileObject> file(handle);
    if (!file) return refuse(ERROR_INVALID_HANDLE);
    if (!file->canRead || (writes && !file->canWrite)) return refuse(ERROR_ACCESS_DENIED);
    std::uint64_t size = 0;
    if (const DWORD code = settleSize(file->descriptor.get(), writes, wanted, size)) {
        return refuse(code);
    }
    Descriptor own(::fcntl(file->descriptor.get(), F_DUPFD_CLOEXEC, 0));
    if (!own) return refuse(machine::codeOfHostError(errno));
    file->isMapped = true;
    return insert(std::make_unique<MappingObject>(std::move(own), size, writes), ERROR_SUCCESS);
}

HANDLE mapMemory(bool writes, std::uint64_t size) {
    machine::answerSizeLimit();
    Descriptor memory(::memfd_create("jw32", MFD_CLOEXEC));
    if (!memory || ::ftruncate(memory.get(), static_cast<off_t>(size)) != 0) {
        return refuse(errno == EFBIG ? ERROR_COMMITMENT_LIMIT : machine::codeOfHostError(errno));
    }
    return insert(std::make_unique<MappingObject>(std::move(memory), size, writes), ERROR_SUCCESS);
}

HANDLE create(HANDLE file, DWORD protection, std::uint64_t size, LPCSTR name) {
    if (protection != PAGE_READONLY && protection != PAGE_READWRITE) {
        return refuse(ERROR_INVALID_PARAMETER);
    }
    const bool writes = protection == PAGE_READWRITE, named = name != nullptr && *name != '\0';
    if (size > INT64_MAX) return refuse(ERROR_INVALID_PARAMETER);
    if (file != INVALID_HANDLE_VALUE) {
        return named ? refuse(ERROR_NOT_SUPPORTED) : mapFile(file, writes, size);
    }
    if (size == 0) return refuse(ERROR_INVALID_PARAMETER);
    return named ? insert(machine::createBlock(machine::fromAnsi(name), size))
                 : mapMemory(writes, size);
}

}  // namespace

HANDLE WINAPI CreateFileMappingA(HANDLE file, LPSECURITY_ATTRIBUTES security, DWORD protection,
                                 DWORD sizeHigh, DWORD sizeLow, LPCSTR name) try {
    if (const auto scripted =
            machine::call("CreateFileMappingA", file, static_cast<const void*>(security),
                          protection, sizeHigh, sizeLow, name)) {
        return scripted.or_(HANDLE{nullptr});
    }
    return create(file, protection, (std::uint64_t{sizeHigh} << 32) | sizeLow, name);
} catch (const std::exception&) {
    return machine::outOfMemory(HANDLE{nullptr});
}

HANDLE WINAPI OpenFileMappingA(DWORD access, BOOL inherit, LPCSTR name) try {
    if (const auto scripted = machine::call("OpenFileMappingA", access, inherit, name)) {
        return scripted.or_(HANDLE{nullptr});
    }
    if (name == nullptr) return refuse(ERROR_INVALID_PARAMETER);
    return insert(machine::openBlock(machine::fromAnsi(name)));
} catch (const std::exception&) {
    return machine::outOfMemory(HANDLE{nullptr});
}
