// Making mappings.
#include "memory/mapping.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "host/descriptor.h"
#include "host/file_room.h"
#include "host/host_errors.h"
#include "host/size_limit.h"
#include "memory/named_blocks.h"
#include "winerror.h"

namespace machine {

namespace {

MadeMapping refuse(DWORD code) {
    return {nullptr, code};
}

// Room for all that a view may write. After a failure the file is as long as before.
DWORD makeRoom(int file, const struct stat& status, std::uint64_t size) {
    constexpr std::uint64_t blockSize = 512;  // the unit of st_blocks
    const auto present = static_cast<std::uint64_t>(status.st_size);
    const auto kept = std::min(size, present);
    const bool hasHoles = static_cast<std::uint64_t>(status.st_blocks) * blockSize < kept;
    int error = hasHoles ? fillHoles(file, kept) : 0;
    if (error == 0 && size > present) {
        error = setAside(file, present, size);
        if (error != 0 && ::ftruncate(file, status.st_size) != 0) error = errno;
    }
    return error == 0 ? DWORD{ERROR_SUCCESS} : codeOfHostError(error);
}

// What a mapping of the file would hold. 0 for `wanted`: what the file holds. Gives the error's
// code, or 0; a file that may be written grows to the size that is wanted.
DWORD settleSize(int file, bool writes, std::uint64_t wanted, std::uint64_t& size) {
    struct stat status {};
    if (::fstat(file, &status) != 0) return codeOfHostError(errno);
    if (!S_ISREG(status.st_mode)) return ERROR_ACCESS_DENIED;
    const auto present = static_cast<std::uint64_t>(status.st_size);
    size = wanted != 0 ? wanted : present;
    if (size == 0) return ERROR_FILE_INVALID;
    if (writes) return makeRoom(file, status, size);
    return size <= present ? ERROR_SUCCESS : ERROR_NOT_ENOUGH_MEMORY;
}

MadeMapping mapBlock(NamedBlock block) {
    if (!block.file) return refuse(block.error);
    const DWORD outcome = block.error;
    return {std::make_unique<NamedMappingObject>(std::move(block)), outcome};
}

}  // namespace

MadeMapping mapFile(FileObject& file, bool writes, std::uint64_t wanted) {
    if (!file.canRead || (writes && !file.canWrite)) return refuse(ERROR_ACCESS_DENIED);
    std::uint64_t size = 0;
    if (const DWORD code = settleSize(file.descriptor.get(), writes, wanted, size)) {
        return refuse(code);
    }
    Descriptor own(::fcntl(file.descriptor.get(), F_DUPFD_CLOEXEC, 0));
    if (!own) return refuse(codeOfHostError(errno));
    file.isMapped = true;
    return {std::make_unique<MappingObject>(std::move(own), size, writes), ERROR_SUCCESS};
}

MadeMapping mapMemory(bool writes, std::uint64_t size) {
    answerSizeLimit();
    Descriptor memory(::memfd_create("jw32", MFD_CLOEXEC));
    if (!memory || ::ftruncate(memory.get(), static_cast<off_t>(size)) != 0) {
        return refuse(errno == EFBIG ? DWORD{ERROR_COMMITMENT_LIMIT} : codeOfHostError(errno));
    }
    return {std::make_unique<MappingObject>(std::move(memory), size, writes), ERROR_SUCCESS};
}

MadeMapping mapNewBlock(std::u16string_view name, std::uint64_t size) {
    return mapBlock(createBlock(name, size));
}

MadeMapping mapExistingBlock(std::u16string_view name) {
    return mapBlock(openBlock(name));
}

}  // namespace machine
