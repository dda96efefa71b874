// The sectors of the file, with the FAT that chains them and the DIFAT that finds the FAT.
#pragma once

#include "compound/allocation_table.h"
#include "compound/header.h"

namespace compound {

/// The FAT. Its own sectors are found through the header's 109 slots and through the chain of DIFAT
/// sectors, which is read as far as it is needed.
class SectorSpace : public AllocationTable {
  public:
    SectorSpace(Medium& medium, Header& header);

    std::uint32_t units() const override;
    std::uint64_t offsetOf(Sector sector) override { return medium_.offsetOf(sector); }

    /// The sectors in which the FAT and the DIFAT lie; reads the whole DIFAT.
    std::vector<Sector> fatSectors();
    const std::vector<Sector>& difatSectors() const { return difat_; }
    /// The sector that version 4 keeps for locks, or `endOfChain`.
    Sector rangeLockSector() const;

    /// Gives back the sectors of FAT pages at the end that hold nothing.
    void dropEmptyPages();
    /// The length of the file that holds all sectors that are used.
    std::uint64_t usedLength();

  protected:
    Sector locate(std::uint32_t page) override;
    void grow() override;
    std::uint32_t clusterUnits() const override {
        return static_cast<std::uint32_t>(4096 / medium_.sectorSize());
    }

  private:
    std::uint32_t slotsPerDifat() const { return perPage() - 1; }
    void readDifat(std::uint32_t page);
    std::uint32_t pagesToAdd() const;
    void placePages(std::uint32_t from);
    void announcePages(std::uint32_t from);
    void appendToDifat(std::uint32_t from);
    std::vector<Sector> writeDifat();
    void forgetPages(std::uint32_t from);

    Header& header_;
    std::uint32_t mostUnits_;
    std::vector<Sector> fat_;    // where the pages lie, as far as it is known
    std::vector<Sector> difat_;  // the DIFAT sectors that were read
};

}  // namespace compound
