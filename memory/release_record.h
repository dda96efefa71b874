// What an open object shares with its copies, so that nothing is released twice.
#pragma once

#include <atomic>
#include <memory>

/// Objects that hold the same thing share one record of it. Whoever closes first claims the
/// release.
class ReleaseRecord {
  public:
    /// True for the first caller, who then releases what the objects hold.
    bool claim() { return !released_.exchange(true, std::memory_order_acq_rel); }
    bool isReleased() const { return released_.load(std::memory_order_acquire); }

    /// The address of the thing, where it can change while the objects hold it.
    std::atomic<void*> address{nullptr};

  private:
    std::atomic<bool> released_{false};
};

/// A record of a thing that is not released; null, with the last error set, when there is no
/// memory.
std::shared_ptr<ReleaseRecord> makeReleaseRecord() noexcept;
