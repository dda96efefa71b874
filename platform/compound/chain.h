// A chain of units, addressed by position.
#pragma once

#include "compound/allocation_table.h"

namespace compound {

/// Units that follow each other both in a chain and on the device.
struct Run {
    std::uint64_t offset;  ///< on the device
    std::uint64_t units;
};

/// Finds the n-th unit of a chain. Every 16th unit that was passed is remembered, so that a look-up
/// takes few steps and the memory is a small part of the table's. A chain that returns to a unit
/// of its own is found out while it is walked.
class Chain {
  public:
    Chain() = default;
    Chain(AllocationTable& table, Sector first);

    /// The unit at a position; throws `corrupt` when the chain ends before it.
    Sector at(std::uint64_t index);
    /// The longest run from a position on, at most `limit` units.
    Run run(std::uint64_t index, std::uint64_t limit);
    /// The number of units; walks to the end.
    std::uint64_t length();

  private:
    static constexpr std::uint64_t stride = 16;

    void step();
    void seek(std::uint64_t index);

    AllocationTable* table_ = nullptr;
    std::vector<Sector> marks_;
    std::uint64_t index_ = 0;     // the position of the walk
    Sector unit_ = endOfChain;    // and its unit
    std::uint64_t furthest_ = 0;  // how far it ever came
    std::uint64_t nextHare_ = 2;  // where the unit to meet again is chosen anew
    Sector met_ = endOfChain;
};

}  // namespace compound
