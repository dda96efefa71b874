// What a compound file lies on: bytes at offsets.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "compound/result.h"

namespace compound {

/// Bytes at offsets, with a length. The engine calls it from one thread at a time.
///
/// What the engine's promises rest on: a write that lies within one aligned block of 4,096 bytes
/// (512 when the power is cut) is done as a whole or not at all, and a write that has returned
/// outlives the process.
class Device {
  public:
    virtual ~Device() = default;

    /// Reads up to `size` bytes. Fewer come back at the end of the device, or when it likes; 0 means
    /// that there is nothing at `offset`.
    virtual Result<std::size_t> read(std::uint64_t offset, void* target, std::size_t size) = 0;

    /// Writes up to `size` bytes and returns how many; the engine asks again for the rest. A write
    /// past the end extends the device, with zeros in the gap.
    virtual Result<std::size_t> write(std::uint64_t offset, const void* source,
                                      std::size_t size) = 0;

    /// Sets the length.
    virtual Error truncate(std::uint64_t size) = 0;

    /// Returns when all that was written is safe from a power cut.
    virtual Error sync() = 0;

    /// The length in bytes.
    virtual Result<std::uint64_t> size() = 0;
};

/// A device over an open file of the host.
/// @param descriptor  open for reading, and for writing if the compound file is to be changed
/// @param owned       whether the device closes the descriptor at its end
std::unique_ptr<Device> fileDevice(int descriptor, bool owned);

}  // namespace compound
