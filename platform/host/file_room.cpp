// Room on the disk for bytes of a file.
#include "host/file_room.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>

#include "host/size_limit.h"

namespace machine {

namespace {

// In pieces, since a signal undoes a whole call.
template <class Step>
int inPieces(std::uint64_t from, std::uint64_t size, Step step) {
    constexpr std::uint64_t piece = 1 << 20;
    answerSizeLimit();
    while (from < size) {
        const auto length = std::min(piece, size - from);
        const int error = step(static_cast<off_t>(from), static_cast<off_t>(length));
        if (error == EINTR) continue;
        if (error != 0) return error;
        from += length;
    }
    return 0;
}

}  // namespace

int setAside(int file, std::uint64_t from, std::uint64_t size) {
    return inPieces(from, size, [&](off_t start, off_t length) {
        return ::posix_fallocate(file, start, length);
    });
}

int fillHoles(int file, std::uint64_t size) {
    const int error = inPieces(0, size, [&](off_t start, off_t length) {
        return ::fallocate(file, FALLOC_FL_KEEP_SIZE, start, length) == 0 ? 0 : errno;
    });
    return error == EOPNOTSUPP || error == ENOSYS ? 0 : error;
}

}  // namespace machine
