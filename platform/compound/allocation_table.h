// A table of units (sectors or mini sectors) and the chains that they form.
#pragma once

#include <algorithm>
#include <bit>
#include <memory>
#include <vector>

#include "compound/medium.h"

namespace compound {

/// Chained units, first and last.
struct Units {
    Sector first = endOfChain, last = endOfChain;
};

/// Where new units of a stream should lie.
struct Wish {
    Sector after = endOfChain;   ///< the stream's last unit
    std::uint64_t position = 0;  ///< how many units it has
    bool aligned = false;        ///< a block of 4,096 bytes of it in one such block of the device
};

/// A table that holds, for each unit, the next one of its chain. The table lies in pages of one sector;
/// a page is read when it is first needed. Changes are made in memory and written by `flush`.
class AllocationTable {
  public:
    AllocationTable(Medium& medium, std::size_t unitSize)
        : medium_(medium),
          unitSize_(unitSize),
          pageShift_(std::countr_zero(medium.sectorSize() / sizeof(Sector))) {}
    virtual ~AllocationTable() = default;
    AllocationTable(const AllocationTable&) = delete;
    AllocationTable& operator=(const AllocationTable&) = delete;

    std::size_t unitSize() const { return unitSize_; }
    /// How many units there are, free ones included.
    virtual std::uint32_t units() const = 0;
    /// Where a unit lies on the device.
    virtual std::uint64_t offsetOf(Sector unit) = 0;

    std::uint32_t get(Sector unit);
    void set(Sector unit, std::uint32_t value);
    /// The unit after this one or `endOfChain`; throws `corrupt` for anything else.
    Sector next(Sector unit);

    /// Makes a chain of free units. Nothing is written but what the table needs to grow.
    Units allocate(std::uint64_t count) { return allocate(count, {}); }
    Units allocate(std::uint64_t count, Wish wish);
    /// Writes what has changed and lets a chain go on after `last`, so that the new part is on the
    /// device when it is reached. May fail with the link made in memory.
    void append(Sector last, Sector first);
    /// Ends the chain at `last` and frees what followed.
    void cutAfter(Sector last);
    /// Frees a chain. Only for chains that are known to be sound.
    void release(Sector first);
    /// Frees a unit that nothing on the device names: it may be used at once.
    void giveBack(Sector unit);
    /// Writes what has changed. What could not be written stays to be written.
    void flush() { flushUntil(0); }

    /// Units that were used when the device was last synced are kept from use when they are freed,
    /// until it is synced again: a power cut may bring back those who named them.
    void synced();

  protected:
    std::uint32_t perPage() const { return std::uint32_t{1} << pageShift_; }
    std::uint32_t pageCount() const { return static_cast<std::uint32_t>(pages_.size()); }
    /// The sector in which a page lies.
    virtual Sector locate(std::uint32_t page) = 0;
    /// Adds free units, or throws `full` or `tooLarge`.
    virtual void grow() = 0;
    /// How many units make a block of 4,096 bytes; the first one of each has the remainder
    /// `clusterUnits() - 1`, as the header comes before them. 1: there are no such blocks.
    virtual std::uint32_t clusterUnits() const { return 1; }

    void setPageCount(std::uint32_t count) { pages_.resize(count); }
    /// A page of free units that the device does not hold yet.
    void addPage();
    /// Writes pages from one on; those that lie next to each other by one write.
    void writePages(std::uint32_t from);
    Sector takeFree();
    void searchFrom(Sector unit);

    Medium& medium_;

  private:
    struct Page {
        std::unique_ptr<std::uint32_t[]> numbers;
        std::uint16_t freeUnits = 0, dirtyFrom = 0, dirtyTo = 0;
    };

    Page& page(std::uint32_t index);
    void read(std::uint32_t index, Page& page);
    void write(std::uint32_t index, Page& page);
    void flushUntil(std::size_t kept);
    void flushOthers(std::uint32_t page);
    Sector findFree();
    Sector findCluster();
    Sector take(Sector unit);
    Sector takeFor(const Wish& wish, std::uint64_t count);
    void free(Sector unit);

    std::uint32_t indexIn(Sector unit) const { return unit & (perPage() - 1); }

    std::size_t unitSize_;
    int pageShift_;
    std::vector<Page> pages_;
    std::vector<std::uint32_t> dirty_;  // pages
    Sector lowestFree_ = 0;             // no unit below it is free
    std::uint64_t lowestCluster_ = 0;   // no cluster below it is free
    std::vector<bool> recent_;          // allocated since the last sync
    std::vector<Sector> held_;
};

}  // namespace compound
