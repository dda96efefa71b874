// Memory of the process that callers hold: where it lies, how long it is, and how it is had.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <unordered_map>

namespace machine {

inline constexpr std::size_t allocationGranularity = 64 * 1024;  // bytes

// Pages of the host at a multiple of the allocation granularity, mapped as mmap does it. Null, with
// errno set, when they cannot be had.
void* mapPages(std::size_t length, int protection, int flags, int file, off_t offset);

// What callers hold, by address. Any thread may use it.
class AddressTable {
  public:
    using Release = void (*)(void* base, std::size_t length);
    explicit AddressTable(Release how) : release_(how) {}

    // Takes the block over. It is released where there is no memory for that, and std::bad_alloc goes
    // on to the entry point.
    void add(void* base, std::size_t length);
    bool holds(const void* base) const;
    // Takes the block out and releases it. False: no such block.
    bool release(void* base);
    std::uint64_t count() const;

  private:
    const Release release_;
    mutable std::mutex mutex_;
    std::unordered_map<const void*, std::size_t> lengths_;
};

AddressTable& heapBlocks();
AddressTable& virtualBlocks();
AddressTable& views();

}  // namespace machine
