// The constants of the compound-file format (MS-CFB), and access to its numbers.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace compound {

// All numbers of the format are little-endian; tables are used as they are read.
static_assert(std::endian::native == std::endian::little);

/// The number of a sector, or of a mini sector in the mini stream.
using Sector = std::uint32_t;

constexpr Sector maxSector = 0xFFFFFFFA;         // numbers up to and without this one are ordinary
constexpr Sector heldSector = 0xFFFFFFFB;        // in memory only: free, and not to be used yet
constexpr Sector difatSector = 0xFFFFFFFC;       // the sector holds numbers of FAT sectors
constexpr Sector fatSector = 0xFFFFFFFD;         // the sector holds a piece of the FAT
constexpr Sector endOfChain = 0xFFFFFFFE;        // the last sector of a chain
constexpr Sector freeSector = 0xFFFFFFFF;        // nobody's
constexpr std::uint32_t noStream = 0xFFFFFFFF;   // no entry of the directory
constexpr std::uint64_t rangeLock = 0x7FFFFF00;  // version 4: the sector at this offset is nobody's

constexpr std::size_t headerSize = 512, headerSlots = 109;
constexpr std::size_t entrySize = 128, miniSectorSize = 64;
constexpr std::uint64_t miniCutoff = 4096;              // shorter streams lie in the mini stream
constexpr std::uint64_t version3Limit = 0x80000000ull;  // no file of version 3 gets larger

template <class T>
T load(const std::byte* from) {
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

template <class T>
void store(std::byte* to, T value) {
    std::memcpy(to, &value, sizeof value);
}

constexpr std::uint64_t ceilDivide(std::uint64_t amount, std::uint64_t unit) {
    return amount / unit + (amount % unit != 0);
}

}  // namespace compound
