// Tables of open handles. A handle names a slot and the slot's generation, so that a stale or
// foreign handle is told from a live one. Lookups take no lock.
//
// Operations ask an object for what they need of it, not for its kind:
//
//     const machine::Pinned<machine::Waitable> object(handle);
//     if (!object) return failWith(ERROR_INVALID_HANDLE, WAIT_FAILED);
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "windef.h"

namespace machine {

// What a handle names. Its capabilities are the classes that it derives from.
class HandleObject {
  public:
    HandleObject() = default;
    virtual ~HandleObject() = default;
    HandleObject(const HandleObject&) = delete;
    HandleObject& operator=(const HandleObject&) = delete;
};

// Any thread may use a table. No two tables know the same handles.
class HandleTable {
  public:
    // All handles of the table are above `base`, within 2^32 of it.
    constexpr explicit HandleTable(std::uintptr_t base) : base_(base) {}

    // Null when the table is full.
    HANDLE insert(std::unique_ptr<HandleObject> object);
    // False: the handle is not open. An object in use ends when its last user lets go.
    bool close(HANDLE handle);
    std::uint64_t count() const { return openHandles_.load(std::memory_order_relaxed); }

    // Keeps the object of an open handle alive until it is let go; null: the handle is not open.
    HandleObject* pin(HANDLE handle);
    void unpin(HANDLE handle);

  private:
    // A slot's state in one word: generation above, the mark of a closed slot, the number of users.
    static constexpr std::uint64_t closedMark = 0x80000000;
    static constexpr std::uint64_t userMask = closedMark - 1;
    static constexpr std::uint32_t chunkSize = 256, chunkCount = 256;

    struct Slot {
        std::atomic<std::uint64_t> state{closedMark};
        HandleObject* object = nullptr;
    };
    using Chunk = std::array<Slot, chunkSize>;
    struct Place {
        Slot* slot;  // null: no handle of this table
        std::uint32_t index, generation;

        bool isOpenIn(std::uint64_t state) const;
    };

    HANDLE makeHandle(std::uint32_t index, std::uint32_t generation) const;
    Place placeOf(HANDLE handle) const;
    bool takeSlot(std::uint32_t& index);
    void retire(Slot& slot, std::uint32_t index);

    const std::uintptr_t base_;
    std::array<std::atomic<Chunk*>, chunkCount> chunks_{};
    std::mutex mutex_;  // guards the free slots and the making of chunks
    std::vector<std::uint32_t> freeSlots_;
    std::uint32_t slotCount_ = 0;
    std::atomic<std::uint64_t> openHandles_{0};
};

// The handles that CloseHandle closes.
HandleTable& handles();

// Keeps an object alive while an operation works on it. False when the handle is not open or its
// object lacks the capability.
template <class Capability>
class Pinned {
  public:
    explicit Pinned(HANDLE handle, HandleTable& table = handles())
        : table_(table),
          handle_(handle),
          object_(table.pin(handle)),
          capability_(dynamic_cast<Capability*>(object_)) {}
    ~Pinned() {
        if (object_ != nullptr) table_.unpin(handle_);
    }
    Pinned(const Pinned&) = delete;
    Pinned& operator=(const Pinned&) = delete;

    explicit operator bool() const { return capability_ != nullptr; }
    Capability* operator->() const { return capability_; }
    Capability& operator*() const { return *capability_; }

  private:
    HandleTable& table_;
    const HANDLE handle_;
    HandleObject* const object_;
    Capability* const capability_;
};

}  // namespace machine
