// Names kept by locks of the host on their folder.
#include "names/name_lock.h"

#include <fcntl.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <optional>
#include <random>
#include <thread>
#include <utility>

#include "host/descriptor.h"
#include "names/folded_names.h"

namespace machine {

namespace {

// Apart from the bytes of sharing modes, which a handle of the folder uses.
off_t byteOf(std::u16string_view name) {
    constexpr off_t firstByte = off_t{1} << 60;
    return firstByte + static_cast<off_t>(foldedHash(name) & 0xFFFFFFFF);
}

struct flock lockOf(short type, off_t byte) {
    struct flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = byte;
    lock.l_len = 1;
    return lock;
}

bool place(int folder, off_t byte, short type) {
    auto lock = lockOf(type, byte);
    return ::fcntl(folder, F_OFD_SETLK, &lock) == 0;
}

bool isAlone(int folder, off_t byte) {
    auto lock = lockOf(F_WRLCK, byte);
    return ::fcntl(folder, F_OFD_GETLK, &lock) != 0 || lock.l_type == F_UNLCK;
}

// A moment of chance, so that two who see each other do not do so again.
void waitShortly(int attempt) {
    thread_local std::uint32_t state =
        static_cast<std::uint32_t>(std::hash<std::thread::id>()(std::this_thread::get_id())) ^
        static_cast<std::uint32_t>(::getpid());
    std::minstd_rand random(state);
    state = static_cast<std::uint32_t>(random());
    const auto longest = std::min(50U << std::min(attempt, 5), 1600U);
    std::this_thread::sleep_for(std::chrono::microseconds(10 + state % longest));
}

}  // namespace

void NameLock::take(Descriptor folder, std::u16string_view name) {
    using Clock = std::chrono::steady_clock;
    release();
    folder_ = std::move(folder);
    byte_ = byteOf(name);
    std::optional<Clock::time_point> end;
    for (int attempt = 0;; ++attempt) {
        const bool placed = place(folder_.get(), byte_, F_RDLCK);
        if (!placed || isAlone(folder_.get(), byte_)) return;
        if (!end) end = Clock::now() + std::chrono::seconds(2);
        if (Clock::now() > *end) return;
        place(folder_.get(), byte_, F_UNLCK);
        waitShortly(attempt);
    }
}

// Closing alone would leave the lock to a process that was forked meanwhile.
void NameLock::release() {
    if (!folder_) return;
    place(folder_.get(), byte_, F_UNLCK);
    folder_ = Descriptor();
}

}  // namespace machine
