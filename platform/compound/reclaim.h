// Before the first change of a file: proof that no chains cross, and taking back of lost space.
#pragma once

#include "compound/mini_space.h"

namespace compound {

/// Walks every chain of the file. Space that no chain has, and what a chain has beyond the size of
/// its stream, becomes free: a program that was killed may have left such space. Throws `corrupt`,
/// with nothing changed, when two chains share a sector.
class Reclaim {
  public:
    Reclaim(Medium& medium, Header& header, SectorSpace& sectors, MiniSpace& minis,
            Directory& directory);
    void run();

  private:
    /// The units of one table that are in use.
    struct Used {
        AllocationTable& table;
        std::vector<bool> units{};
        std::vector<Sector> lastOnes{};  // whose chains are to end there

        explicit Used(AllocationTable& owner) : table(owner), units(owner.units()) {}
        void mark(Sector unit);
        void markChain(Sector first);
        void markStream(const Element& stream);
        void endChains();
        void freeOthers();
    };

    void markTables();
    void markStreams();
    void nameTables();

    Medium& medium_;
    Header& header_;
    SectorSpace& sectors_;
    MiniSpace& minis_;
    Directory& directory_;
    Used usedSectors_, usedMinis_;
};

}  // namespace compound
