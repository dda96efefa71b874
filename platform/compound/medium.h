// The device as the engine uses it: whole reads and writes, offsets of sectors, and order.
#pragma once

#include <memory>

#include "compound/device.h"
#include "compound/format.h"

namespace compound {

/// When the device is synced.
enum class Durability : std::uint8_t {
    never,     ///< for files that need not outlive a power cut
    onCommit,  ///< at commit and close: what was committed survives a power cut until the next change
    always,    ///< around each write that commits, too: every change survives, at its price
};

/// The device with whole reads and writes; failures are thrown as `Failure`.
class Medium {
  public:
    Medium(std::unique_ptr<Device> device, Durability durability);

    void setSectorSize(std::size_t size) { sectorSize_ = size; }
    std::size_t sectorSize() const { return sectorSize_; }
    std::uint64_t length() const { return length_; }

    /// The sectors that the device has bytes of, the header's not counted.
    std::uint64_t sectors() const;
    std::uint64_t offsetOf(Sector sector) const {
        return (std::uint64_t{sector} + 1) * sectorSize_;
    }

    /// Reads as much as there is, and returns how much.
    std::size_t readSome(std::uint64_t offset, std::byte* target, std::size_t size);
    /// Reads all or throws `corrupt`.
    void read(std::uint64_t offset, std::byte* target, std::size_t size);
    void write(std::uint64_t offset, const std::byte* source, std::size_t size);
    void writeZeros(std::uint64_t offset, std::uint64_t size);

    void truncate(std::uint64_t size);
    void sync();
    /// What was written before is to be safe before what is written after.
    void order();

    /// Writes that share a block of this size take place together.
    std::size_t atomicBlock() const { return durability_ == Durability::always ? 512 : 4096; }

  private:
    std::unique_ptr<Device> device_;
    std::uint64_t length_;
    std::size_t sectorSize_ = headerSize;
    Durability durability_;
    bool unsynced_ = false;
};

}  // namespace compound
