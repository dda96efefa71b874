// The entries of the directory on the device: 128 bytes each, in a chain of sectors.
#pragma once

#include <span>

#include "compound/elements.h"
#include "compound/sector_space.h"

namespace compound {

/// The 128 bytes of an entry, and back.
std::array<std::byte, entrySize> encodeEntry(const Elements& elements, const Element& element);
/// The element's links are entry numbers, `noElement` where there is none.
Element decodeEntry(const std::byte* bytes, bool shortSizes);

/// The places of entries: which are free, and the writing of those that are not.
class Entries {
  public:
    Entries(Medium& medium, Header& header, SectorSpace& space, Elements& elements)
        : medium_(medium), header_(header), space_(space), elements_(elements) {}

    /// Reads the directory: element n is that of entry n.
    void load();
    /// Gives each element that is `placed` its entry and frees all others.
    void settle();

    std::uint32_t count() const { return static_cast<std::uint32_t>(owners_.size()); }
    std::span<const Sector> sectors() const { return sectors_; }

    /// A free entry for an element; the directory grows when there is none.
    void place(Id id, bool moves);
    /// The element has left this entry, which is cleared now or later.
    void leave(std::uint32_t entry);
    /// Clears what was left.
    void clearLeft();

    /// Writes the entries of these elements, those next to each other by one write.
    void write(std::vector<Id> ids);
    /// Whether the entries of two elements, with all between them, are written as a whole.
    bool together(Id left, Id right) const;
    /// Writes entries that are `together` by one write.
    void writeTogether(const std::vector<Id>& ids);
    /// Writes an element's entry as `element` says.
    void write(const Element& element);

  private:
    std::uint32_t perSector() const {
        return static_cast<std::uint32_t>(medium_.sectorSize() / entrySize);
    }
    std::uint64_t offsetOf(std::uint32_t entry) const;
    void encode(std::uint32_t entry, std::byte* bytes) const;
    void writeSpan(std::uint32_t first, std::uint32_t last);
    void writeRuns(std::vector<std::uint32_t>& entries);
    void grow();
    void addSectors(const Units& added, std::uint32_t count);

    Medium& medium_;
    Header& header_;
    SectorSpace& space_;
    Elements& elements_;
    std::vector<Sector> sectors_;
    std::vector<Id> owners_;           // of each entry
    std::vector<std::uint32_t> free_;  // clear entries, the lowest last
    std::vector<std::uint32_t> left_;  // entries that are nobody's and not cleared
};

}  // namespace compound
