// Tables of open handles.
#include "core/handles.h"

#include <utility>

#include "core/in_use.h"

namespace machine {

namespace {

constexpr unsigned generationShift = 32;
constexpr std::uint32_t indexBits = 16, generationMask = 0x3FFF;
constexpr std::uintptr_t handleStep = 4;  // as everywhere on Windows

std::uint32_t generationOf(std::uint64_t state) {
    return static_cast<std::uint32_t>(state >> generationShift);
}

constinit HandleTable closable(0);
const CountedTable counted("handles", [] { return closable.count(); });

}  // namespace

HandleTable& handles() {
    return closable;
}

bool HandleTable::Place::isOpenIn(std::uint64_t state) const {
    return generationOf(state) == generation && (state & closedMark) == 0;
}

HANDLE HandleTable::makeHandle(std::uint32_t index, std::uint32_t generation) const {
    const std::uintptr_t number = (std::uintptr_t{generation} << indexBits) | index;
    return reinterpret_cast<HANDLE>(base_ + (number + 1) * handleStep);
}

HandleTable::Place HandleTable::placeOf(HANDLE handle) const {
    const auto value = reinterpret_cast<std::uintptr_t>(handle) - base_;
    const auto number = value / handleStep - 1;
    const auto generation = number >> indexBits;
    if (value == 0 || value % handleStep != 0 || generation > generationMask)
        return {nullptr, 0, 0};
    const auto index = static_cast<std::uint32_t>(number & ((1U << indexBits) - 1));
    Chunk* const chunk = chunks_[index / chunkSize].load(std::memory_order_acquire);
    Slot* const slot = chunk == nullptr ? nullptr : &(*chunk)[index % chunkSize];
    return {slot, index, static_cast<std::uint32_t>(generation)};
}

// Takes a free slot; the caller holds the lock. False when all are taken.
bool HandleTable::takeSlot(std::uint32_t& index) {
    if (!freeSlots_.empty()) {
        index = freeSlots_.back();
        freeSlots_.pop_back();
        return true;
    }
    if (slotCount_ == chunkSize * chunkCount) return false;
    auto& chunk = chunks_[slotCount_ / chunkSize];
    if (chunk.load(std::memory_order_relaxed) == nullptr) {
        freeSlots_.reserve(slotCount_ + chunkSize);  // no handle ends for want of memory
        chunk.store(new Chunk, std::memory_order_release);
    }
    index = slotCount_++;
    return true;
}

// Ends the object of a closed slot without users and makes the slot free for the next generation.
void HandleTable::retire(Slot& slot, std::uint32_t index) {
    const std::unique_ptr<HandleObject> object(std::exchange(slot.object, nullptr));
    const auto state = slot.state.load(std::memory_order_relaxed);
    const std::uint64_t next = (generationOf(state) + 1) & generationMask;
    slot.state.store((next << generationShift) | closedMark, std::memory_order_release);
    const std::lock_guard lock(mutex_);
    freeSlots_.push_back(index);
}

HANDLE HandleTable::insert(std::unique_ptr<HandleObject> object) {
    const std::lock_guard lock(mutex_);
    std::uint32_t index = 0;
    if (!takeSlot(index)) return nullptr;
    auto& slot = (*chunks_[index / chunkSize].load(std::memory_order_relaxed))[index % chunkSize];
    const auto state = slot.state.load(std::memory_order_relaxed);
    slot.object = object.release();
    slot.state.store(state & ~closedMark, std::memory_order_release);
    openHandles_.fetch_add(1, std::memory_order_relaxed);
    return makeHandle(index, generationOf(state));
}

bool HandleTable::close(HANDLE handle) {
    const auto place = placeOf(handle);
    if (place.slot == nullptr) return false;
    auto state = place.slot->state.load(std::memory_order_acquire);
    do {
        if (!place.isOpenIn(state)) return false;
    } while (!place.slot->state.compare_exchange_weak(state, state | closedMark,
                                                      std::memory_order_acq_rel));
    openHandles_.fetch_sub(1, std::memory_order_relaxed);
    if ((state & userMask) == 0) retire(*place.slot, place.index);
    return true;
}

HandleObject* HandleTable::pin(HANDLE handle) {
    const auto place = placeOf(handle);
    if (place.slot == nullptr) return nullptr;
    auto state = place.slot->state.load(std::memory_order_acquire);
    do {
        if (!place.isOpenIn(state)) return nullptr;
    } while (!place.slot->state.compare_exchange_weak(state, state + 1, std::memory_order_acquire));
    return place.slot->object;
}

void HandleTable::unpin(HANDLE handle) {
    const auto place = placeOf(handle);
    const auto before = place.slot->state.fetch_sub(1, std::memory_order_acq_rel);
    if ((before & closedMark) != 0 && (before & userMask) == 1) retire(*place.slot, place.index);
}

}  // namespace machine
