// The mini stream: sectors of 64 bytes for short streams, with the mini FAT that chains them.
#pragma once

#include "compound/chain.h"
#include "compound/directory.h"

namespace compound {

/// The mini FAT. It lies in a chain of sectors that the header names; the mini stream, which holds the
/// mini sectors, is the chain of the root's entry.
class MiniSpace : public AllocationTable {
  public:
    MiniSpace(Medium& medium, Header& header, SectorSpace& space, Directory& directory);

    std::uint32_t units() const override;
    std::uint64_t offsetOf(Sector unit) override;
    /// Makes the root's size that of its chain and the count of sectors that of theirs, after a
    /// change was cut short between the two.
    void adoptLengths();
    /// Gives back sectors at the end that hold nothing.
    void trim();

  protected:
    Sector locate(std::uint32_t page) override { return table_.at(page); }
    void grow() override;

  private:
    std::uint32_t perSector() const {
        return static_cast<std::uint32_t>(medium_.sectorSize() / miniSectorSize);
    }
    void addPages();
    void addSectors();
    void namePages(Sector first, std::uint32_t count);
    void setStream(Sector start, std::uint64_t sectors);

    Header& header_;
    SectorSpace& space_;
    Directory& directory_;
    Chain table_;   // the sectors of the mini FAT
    Chain stream_;  // the sectors of the mini stream
};

}  // namespace compound
