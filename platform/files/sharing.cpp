// Sharing modes of open files as locks of the host.
#include "files/sharing.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <random>
#include <thread>

#include "fileapi.h"
#include "host/process.h"

namespace machine {

namespace {

// One byte per right, in an order that makes the usual combinations contiguous.
enum Byte { UsesWrite, UsesRead, DeniesDelete, DeniesWrite, DeniesRead, UsesDelete, ByteCount };

constexpr off_t intended = off_t{1} << 61, settled = intended + 8;  // where the rows begin

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

struct flock lockOf(short type, off_t first, off_t count) {
    struct flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = first;
    lock.l_len = count;
    return lock;
}

bool place(int file, off_t row, const Bytes& bytes) {
    return forEachRun(bytes, [&](int first, int count) {
        auto lock = lockOf(F_RDLCK, row + first, count);
        return ::fcntl(file, F_OFD_SETLK, &lock) == 0;
    });
}

void withdraw(int file) {
    auto lock = lockOf(F_UNLCK, intended, settled + ByteCount - intended);
    ::fcntl(file, F_OFD_SETLK, &lock);
}

bool areFree(int file, off_t first, off_t count) {
    auto lock = lockOf(F_WRLCK, first, count);
    return ::fcntl(file, F_OFD_GETLK, &lock) != 0 || lock.l_type == F_UNLCK;
}

bool isFree(int file, off_t row, const Bytes& bytes) {
    return forEachRun(bytes,
                      [&](int first, int count) { return areFree(file, row + first, count); });
}

bool isAlone(int file) {
    return areFree(file, intended, settled + ByteCount - intended);
}

enum class Answer { Granted, Refused, Disputed };

// What the others say to an intention that is placed. Intentions are looked at first: one that is
// settled in between is found among the settled ones.
Answer answerOf(int file, const Bytes& others) {
    if (isAlone(file)) return Answer::Granted;
    const bool disputed = !isFree(file, intended, others);
    if (!isFree(file, settled, others)) return Answer::Refused;
    return disputed ? Answer::Disputed : Answer::Granted;
}

// Waits for a moment of chance, which grows from one time to the next. False: long enough.
class Patience {
  public:
    bool wait() {
        if (Clock::now() > end_) return false;
        thread_local std::minstd_rand random(std::random_device{}());
        std::this_thread::sleep_for(std::chrono::microseconds(random() % longest_));
        longest_ = std::min(2 * longest_, 4000U);
        return true;
    }

  private:
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end_ = Clock::now() + std::chrono::seconds(2);
    unsigned longest_ = 50;  // microseconds
};

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

SharingLocks::SharingLocks(int file) : file_(file), process_(ownProcess()), forks_(forkCount()) {}

SharingLocks::~SharingLocks() {
    if (mayBeCopied(forks_)) release();
}

void SharingLocks::release() const {
    if (file_ >= 0 && process_ == ownProcess()) withdraw(file_);
}

std::optional<SharingLocks> share(int file, const Sharing& sharing) {
    const auto mine = placedBy(sharing), others = refusedBy(sharing);
    if (mine == Bytes{}) return SharingLocks();
    std::optional<Patience> patience;
    for (;;) {
        if (!place(file, intended, mine)) return SharingLocks(file);
        const auto answer = answerOf(file, others);
        if (answer == Answer::Granted) {
            place(file, settled, mine);
            return SharingLocks(file);
        }
        withdraw(file);
        if (answer == Answer::Refused) return std::nullopt;
        if (!patience) patience.emplace();
        if (!patience->wait()) return std::nullopt;
    }
}

bool couldShare(int file, const Sharing& sharing) {
    return isAlone(file) || isFree(file, settled, refusedBy(sharing));
}

}  // namespace machine
