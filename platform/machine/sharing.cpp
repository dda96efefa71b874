// Sharing modes of open files as locks of the host.
#include "machine/sharing.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <random>
#include <thread>

#include "fileapi.h"

namespace machine {

namespace {

// One byte per right, in an order that makes the usual combinations contiguous.
constexpr off_t firstByte = off_t{1} << 61;
enum Byte { UsesWrite, UsesRead, DeniesDelete, DeniesWrite, DeniesRead, UsesDelete, ByteCount };

using Bytes = std::array<bool, ByteCount>;

Bytes placedBy(const Sharing& sharing) {
    return {sharing.uses.write,   sharing.uses.read,   sharing.denies.remove,
            sharing.denies.write, sharing.denies.read, sharing.uses.remove};
}

// The bytes that nobody else may hold.
Bytes refusedBy(const Sharing& sharing) {
    return {sharing.denies.write, sharing.denies.read, sharing.uses.remove,
            sharing.uses.write,   sharing.uses.read,   sharing.denies.remove};
}

// Calls for each run of bytes that are set, until a call gives false.
template <class Action>
bool forEachRun(const Bytes& bytes, Action action) {
    for (int first = 0; first < ByteCount; ++first) {
        if (!bytes[static_cast<std::size_t>(first)]) continue;
        int last = first;
        while (last < ByteCount && bytes[static_cast<std::size_t>(last)]) ++last;
        if (!action(first, last - first)) return false;
        first = last;
    }
    return true;
}

struct flock lockOf(short type, int first, int count) {
    struct flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = firstByte + first;
    lock.l_len = count;
    return lock;
}

bool place(int file, const Bytes& bytes) {
    return forEachRun(bytes, [&](int first, int count) {
        auto lock = lockOf(F_RDLCK, first, count);
        return ::fcntl(file, F_OFD_SETLK, &lock) == 0;
    });
}

bool isFree(int file, const Bytes& bytes) {
    return forEachRun(bytes, [&](int first, int count) {
        auto lock = lockOf(F_WRLCK, first, count);
        return ::fcntl(file, F_OFD_GETLK, &lock) != 0 || lock.l_type == F_UNLCK;
    });
}

void waitShortly() {
    thread_local std::minstd_rand random(std::random_device{}());
    std::this_thread::sleep_for(std::chrono::microseconds(20 + random() % 80));
}

}  // namespace

Sharing sharingOf(DWORD access, DWORD share) {
    Sharing sharing;
    sharing.uses.read = (access & (GENERIC_READ | GENERIC_ALL | FILE_READ_DATA)) != 0;
    sharing.uses.write =
        (access & (GENERIC_WRITE | GENERIC_ALL | FILE_WRITE_DATA | FILE_APPEND_DATA)) != 0;
    sharing.uses.remove = (access & (GENERIC_ALL | DELETE)) != 0;
    const bool usesAny = sharing.uses.read || sharing.uses.write || sharing.uses.remove;
    if (usesAny) {
        sharing.denies.read = (share & FILE_SHARE_READ) == 0;
        sharing.denies.write = (share & FILE_SHARE_WRITE) == 0;
        sharing.denies.remove = (share & FILE_SHARE_DELETE) == 0;
    }
    return sharing;
}

// The locks are placed first and looked around for others second, so that of two racing openers at
// least one sees the other. Both may: then each withdraws and tries again after a moment of chance.
// So does who meets the locks of a third opener that is about to withdraw.
bool share(int file, const Sharing& sharing) {
    constexpr int attempts = 10;
    const auto mine = placedBy(sharing), others = refusedBy(sharing);
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (attempt > 0) waitShortly();
        if (!place(file, mine)) return true;
        if (isFree(file, others)) return true;
        unshare(file);
    }
    return false;
}

void unshare(int file) {
    auto lock = lockOf(F_UNLCK, 0, ByteCount);
    ::fcntl(file, F_OFD_SETLK, &lock);
}

bool couldShare(int file, const Sharing& sharing) {
    return isFree(file, refusedBy(sharing));
}

}  // namespace machine
