// The header of a compound file: its first 512 bytes.
#pragma once

#include <array>

#include "compound/medium.h"

namespace compound {

/// The header, held as it is on the device. Changes are made to a copy, written, and then kept.
class Header {
  public:
    /// The header of a new file of version 3 or 4.
    static Header fresh(int version);
    /// Reads and judges the header; throws `notCompound` or `corrupt`.
    static Header read(Medium& medium);
    /// Whether bytes at the start of a file are those of a compound file.
    static bool isSignature(const std::byte* bytes, std::size_t size);

    int version() const { return load<std::uint16_t>(at(26)); }
    std::size_t sectorSize() const { return std::size_t{1} << load<std::uint16_t>(at(30)); }

    std::uint32_t directorySectors() const { return number(40); }
    std::uint32_t fatSectors() const { return number(44); }
    Sector firstDirectory() const { return number(48); }
    Sector firstMiniFat() const { return number(60); }
    std::uint32_t miniFatSectors() const { return number(64); }
    Sector firstDifat() const { return number(68); }
    std::uint32_t difatSectors() const { return number(72); }
    Sector slot(std::size_t index) const { return number(76 + 4 * index); }

    void setDirectorySectors(std::uint32_t count) { set(40, count); }
    void setFatSectors(std::uint32_t count) { set(44, count); }
    void setFirstDirectory(Sector sector) { set(48, sector); }
    void setMiniFat(Sector first, std::uint32_t count) { set(60, first), set(64, count); }
    void setDifat(Sector first, std::uint32_t count) { set(68, first), set(72, count); }
    void setSlot(std::size_t index, Sector sector) { set(76 + 4 * index, sector); }

    void write(Medium& medium) const { medium.write(0, bytes_.data(), bytes_.size()); }

  private:
    const std::byte* at(std::size_t offset) const { return bytes_.data() + offset; }
    std::uint32_t number(std::size_t offset) const { return load<std::uint32_t>(at(offset)); }
    void set(std::size_t offset, std::uint32_t value) { store(bytes_.data() + offset, value); }

    std::array<std::byte, headerSize> bytes_{};
};

}  // namespace compound
