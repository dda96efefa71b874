// The table of open handles.
#include "core/handles.h"

#include <array>
#include <atomic>
#include <mutex>
#include <utility>
#include <vector>

#include "core/in_use.h"

namespace machine {

namespace {

// A slot's state in one word: generation above, the mark of a closed slot, the number of users.
constexpr std::uint64_t closedMark = 0x80000000;
constexpr std::uint64_t userMask = closedMark - 1;
constexpr unsigned generationShift = 32;

struct Slot {
    std::atomic<std::uint64_t> state{closedMark};
    KernelObject* object = nullptr;
};

constexpr std::uint32_t chunkSize = 256, chunkCount = 256;
constexpr std::uint32_t indexBits = 16, generationMask = 0x3FFF;
using Chunk = std::array<Slot, chunkSize>;

std::array<std::atomic<Chunk*>, chunkCount> chunks{};
std::mutex mutex;  // guards the free slots and the making of chunks
std::vector<std::uint32_t> freeSlots;
std::uint32_t slotCount = 0;
std::atomic<std::uint64_t> openHandles{0};
const CountedTable counted("handles", [] { return openHandles.load(std::memory_order_relaxed); });

std::uint32_t generationOf(std::uint64_t state) {
    return static_cast<std::uint32_t>(state >> generationShift);
}

HANDLE makeHandle(std::uint32_t index, std::uint32_t generation) {
    const std::uintptr_t number = (std::uintptr_t{generation} << indexBits) | index;
    return reinterpret_cast<HANDLE>((number + 1) * 4);
}

struct Place {
    Slot* slot;  // null: no handle of this table
    std::uint32_t index, generation;
};

Place placeOf(HANDLE handle) {
    const auto value = reinterpret_cast<std::uintptr_t>(handle);
    const auto number = value / 4 - 1;
    const auto generation = number >> indexBits;
    if (value == 0 || value % 4 != 0 || generation > generationMask) return {nullptr, 0, 0};
    const auto index = static_cast<std::uint32_t>(number & ((1U << indexBits) - 1));
    Chunk* const chunk = chunks[index / chunkSize].load(std::memory_order_acquire);
    Slot* const slot = chunk == nullptr ? nullptr : &(*chunk)[index % chunkSize];
    return {slot, index, static_cast<std::uint32_t>(generation)};
}

// Takes a free slot; the caller holds the lock. False when all are taken.
bool takeSlot(std::uint32_t& index) {
    if (!freeSlots.empty()) {
        index = freeSlots.back();
        freeSlots.pop_back();
        return true;
    }
    if (slotCount == chunkSize * chunkCount) return false;
    auto& chunk = chunks[slotCount / chunkSize];
    if (chunk.load(std::memory_order_relaxed) == nullptr) {
        freeSlots.reserve(slotCount + chunkSize);  // no handle ends for want of memory
        chunk.store(new Chunk, std::memory_order_release);
    }
    index = slotCount++;
    return true;
}

// Ends the object of a closed slot without users and makes the slot free for the next generation.
void retire(Slot& slot, std::uint32_t index) {
    const std::unique_ptr<KernelObject> object(std::exchange(slot.object, nullptr));
    const auto state = slot.state.load(std::memory_order_relaxed);
    const std::uint64_t next = (generationOf(state) + 1) & generationMask;
    slot.state.store((next << generationShift) | closedMark, std::memory_order_release);
    const std::lock_guard lock(mutex);
    freeSlots.push_back(index);
}

}  // namespace

HANDLE insertObject(std::unique_ptr<KernelObject> object) {
    const std::lock_guard lock(mutex);
    std::uint32_t index = 0;
    if (!takeSlot(index)) return nullptr;
    auto& slot = (*chunks[index / chunkSize].load(std::memory_order_relaxed))[index % chunkSize];
    const auto state = slot.state.load(std::memory_order_relaxed);
    slot.object = object.release();
    slot.state.store(state & ~closedMark, std::memory_order_release);
    openHandles.fetch_add(1, std::memory_order_relaxed);
    return makeHandle(index, generationOf(state));
}

bool closeObject(HANDLE handle) {
    const auto place = placeOf(handle);
    if (place.slot == nullptr) return false;
    auto state = place.slot->state.load(std::memory_order_acquire);
    do {
        if (generationOf(state) != place.generation || (state & closedMark) != 0) return false;
    } while (!place.slot->state.compare_exchange_weak(state, state | closedMark,
                                                      std::memory_order_acq_rel));
    openHandles.fetch_sub(1, std::memory_order_relaxed);
    if ((state & userMask) == 0) retire(*place.slot, place.index);
    return true;
}

std::optional<ObjectKind> kindOf(HANDLE handle) {
    const auto* const object = detail::pinObject(handle);
    if (object == nullptr) return std::nullopt;
    const auto kind = object->kind();
    detail::unpinObject(handle);
    return kind;
}

namespace detail {

KernelObject* pinObject(HANDLE handle) {
    const auto place = placeOf(handle);
    if (place.slot == nullptr) return nullptr;
    auto state = place.slot->state.load(std::memory_order_acquire);
    do {
        if (generationOf(state) != place.generation || (state & closedMark) != 0) return nullptr;
    } while (!place.slot->state.compare_exchange_weak(state, state + 1, std::memory_order_acquire));
    return place.slot->object;
}

void unpinObject(HANDLE handle) {
    const auto place = placeOf(handle);
    const auto before = place.slot->state.fetch_sub(1, std::memory_order_acq_rel);
    if ((before & closedMark) != 0 && (before & userMask) == 1) retire(*place.slot, place.index);
}

}  // namespace detail

}  // namespace machine
