// Pages of the host and the tables of what callers hold of them.
#include "memory/address_space.h"

#include <sys/mman.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <utility>

#include "core/in_use.h"

namespace machine {

namespace {

bool isAligned(const void* address) {
    return reinterpret_cast<std::uintptr_t>(address) % allocationGranularity == 0;
}

// Where pages were had last: a place that is often free again.
std::atomic<void*> likelyPlace{nullptr};

// Reserves more than is wanted, maps at the first multiple in it, and gives the rest back.
void* mapWithinReserve(std::size_t length, int protection, int flags, int file, off_t offset) {
    const auto whole = length + allocationGranularity;
    void* const reserve =
        ::mmap(nullptr, whole, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (reserve == MAP_FAILED) return nullptr;
    auto* const first = static_cast<char*>(reserve);
    const auto excess = reinterpret_cast<std::uintptr_t>(first) % allocationGranularity;
    const auto before = excess == 0 ? 0 : allocationGranularity - excess;
    char* const base = first + before;
    if (::mmap(base, length, protection, flags | MAP_FIXED, file, offset) == MAP_FAILED) {
        ::munmap(reserve, whole);
        return nullptr;
    }
    constexpr std::size_t pageSize = 4096;
    const auto used = (length + pageSize - 1) / pageSize * pageSize;
    if (before != 0) ::munmap(first, before);
    if (before + used < whole) ::munmap(base + used, whole - before - used);
    return base;
}

void unmap(void* base, std::size_t length) {
    ::munmap(base, length);
}

const CountedTable counted[] = {
    {"heap blocks", [] { return heapBlocks().count(); }},
    {"page blocks", [] { return virtualBlocks().count(); }},
    {"views", [] { return views().count(); }},
};

}  // namespace

void* mapPages(std::size_t length, int protection, int flags, int file, off_t offset) {
    if (length > SIZE_MAX / 2) return nullptr;
    void* const wanted = likelyPlace.load(std::memory_order_relaxed);
    void* base = ::mmap(wanted, length, protection, flags, file, offset);
    if (base == MAP_FAILED) return nullptr;
    if (!isAligned(base)) {
        ::munmap(base, length);
        base = mapWithinReserve(length, protection, flags, file, offset);
    }
    if (base != nullptr) likelyPlace.store(base, std::memory_order_relaxed);
    return base;
}

void AddressTable::add(void* base, std::size_t length) try {
    const std::lock_guard lock(mutex_);
    lengths_[base] = length;
} catch (const std::bad_alloc&) {
    release_(base, length);
    throw;
}

bool AddressTable::holds(const void* base) const {
    const std::lock_guard lock(mutex_);
    return lengths_.contains(base);
}

bool AddressTable::release(void* base) {
    std::size_t length = 0;
    {
        const std::lock_guard lock(mutex_);
        const auto found = lengths_.find(base);
        if (found == lengths_.end()) return false;
        length = found->second;
        lengths_.erase(found);
    }
    release_(base, length);
    return true;
}

std::uint64_t AddressTable::count() const {
    const std::lock_guard lock(mutex_);
    return lengths_.size();
}

AddressTable& heapBlocks() {
    static AddressTable table([](void* base, std::size_t) { std::free(base); });
    return table;
}

AddressTable& virtualBlocks() {
    static AddressTable table(unmap);
    return table;
}

AddressTable& views() {
    static AddressTable table(unmap);
    return table;
}

}  // namespace machine
