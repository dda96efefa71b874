// The sectors of the file, with the FAT that chains them and the DIFAT that finds the FAT.
#include "compound/sector_space.h"

#include <algorithm>

namespace compound {

SectorSpace::SectorSpace(Medium& medium, Header& header)
    : AllocationTable(medium, medium.sectorSize()),
      header_(header),
      mostUnits_(header.version() == 3 ? version3Limit / headerSize - 1 : maxSector) {
    if (header.fatSectors() > medium.sectors()) throw Failure{Error::corrupt};
    setPageCount(header.fatSectors());
}

std::uint32_t SectorSpace::units() const {
    const auto covered = std::uint64_t{pageCount()} * perPage();
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(covered, mostUnits_));
}

Sector SectorSpace::rangeLockSector() const {
    if (header_.version() != 4) return endOfChain;
    return static_cast<Sector>(rangeLock / medium_.sectorSize() - 1);
}

Sector SectorSpace::locate(std::uint32_t page) {
    while (fat_.size() <= page && fat_.size() < headerSlots)
        fat_.push_back(header_.slot(fat_.size()));
    if (fat_.size() <= page) readDifat(page);
    if (fat_[page] >= maxSector) throw Failure{Error::corrupt};
    return fat_[page];
}

void SectorSpace::readDifat(std::uint32_t page) {
    std::vector<Sector> slots(perPage());
    auto* const bytes = reinterpret_cast<std::byte*>(slots.data());
    Sector sector = header_.firstDifat();
    if (!difat_.empty()) {
        medium_.read(medium_.offsetOf(difat_.back()), bytes, medium_.sectorSize());
        sector = slots.back();
    }
    while (fat_.size() <= page) {
        if (sector >= medium_.sectors()) throw Failure{Error::corrupt};
        medium_.read(medium_.offsetOf(sector), bytes, medium_.sectorSize());
        difat_.push_back(sector);
        fat_.insert(fat_.end(), slots.begin(), slots.end() - 1);
        sector = slots.back();
    }
}

std::vector<Sector> SectorSpace::fatSectors() {
    if (pageCount() > 0) locate(pageCount() - 1);
    fat_.resize(pageCount());
    return fat_;
}

// The FAT grows in proportion, so that its sectors interrupt long streams seldom.
std::uint32_t SectorSpace::pagesToAdd() const {
    const auto room = ceilDivide(mostUnits_, perPage());
    if (pageCount() >= room) throw Failure{Error::tooLarge};
    const auto share = std::clamp<std::uint64_t>(pageCount() / 8, 1, 16);
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(share, room - pageCount()));
}

// New pages are written before the slots that name them, and the header's count comes last.
void SectorSpace::grow() {
    const auto from = pageCount();
    const auto added = pagesToAdd();
    fatSectors();
    try {
        for (std::uint32_t i = 0; i < added; ++i) addPage();
        searchFrom(from * perPage());
        placePages(from);
        writePages(from);
        flush();
        medium_.order();
        announcePages(from);
    } catch (...) {
        forgetPages(from);
        throw;
    }
    medium_.order();
}

void SectorSpace::placePages(std::uint32_t from) {
    const auto lock = rangeLockSector();
    if (lock >= from * perPage() && lock < units()) set(lock, endOfChain);
    while (fat_.size() < pageCount()) {
        const auto sector = takeFree();
        set(sector, fatSector);
        fat_.push_back(sector);
    }
}

void SectorSpace::announcePages(std::uint32_t from) {
    auto header = header_;
    for (auto page = from; page < std::min<std::uint32_t>(pageCount(), headerSlots); ++page)
        header.setSlot(page, fat_[page]);
    header.setFatSectors(pageCount());
    std::vector<Sector> replaced;
    if (pageCount() > headerSlots) {
        const auto room = headerSlots + difat_.size() * slotsPerDifat();
        if (pageCount() <= room) {
            appendToDifat(std::max<std::uint32_t>(from, headerSlots));
        } else {
            auto difat = writeDifat();
            replaced = std::exchange(difat_, std::move(difat));
            header.setDifat(difat_.front(), static_cast<std::uint32_t>(difat_.size()));
        }
    }
    try {
        medium_.order();
        header.write(medium_);
    } catch (...) {
        if (!replaced.empty()) {
            std::swap(difat_, replaced);
            for (const auto sector : replaced) giveBack(sector);
        }
        throw;
    }
    header_ = header;
    for (const auto sector : replaced) {
        set(sector, endOfChain);
        release(sector);
    }
}

void SectorSpace::appendToDifat(std::uint32_t from) {
    for (auto page = from; page < pageCount();) {
        const auto slot = page - headerSlots;
        const auto sector = difat_[slot / slotsPerDifat()];
        const auto end = headerSlots + (slot / slotsPerDifat() + 1) * slotsPerDifat();
        const auto count = std::min<std::uint64_t>(end, pageCount()) - page;
        medium_.write(medium_.offsetOf(sector) + slot % slotsPerDifat() * sizeof(Sector),
                      reinterpret_cast<const std::byte*>(&fat_[page]), count * sizeof(Sector));
        page += static_cast<std::uint32_t>(count);
    }
}

// A longer DIFAT is written anew as a whole, so that the header switches to it by one write.
std::vector<Sector> SectorSpace::writeDifat() {
    const auto count = ceilDivide(pageCount() - headerSlots, slotsPerDifat());
    std::vector<Sector> difat;
    try {
        difat.reserve(count);
        while (difat.size() < count) {
            const auto sector = takeFree();
            if (sector == endOfChain) throw Failure{Error::tooLarge};
            difat.push_back(sector);
            set(sector, difatSector);
        }
        std::vector<Sector> slots(perPage());
        for (std::size_t i = 0; i < count; ++i) {
            std::fill(slots.begin(), slots.end(), freeSector);
            const auto begin = headerSlots + i * slotsPerDifat();
            const auto end = std::min<std::size_t>(begin + slotsPerDifat(), pageCount());
            std::copy(&fat_[begin], fat_.data() + end, slots.begin());
            slots.back() = i + 1 < count ? difat[i + 1] : endOfChain;
            medium_.write(medium_.offsetOf(difat[i]),
                          reinterpret_cast<const std::byte*>(slots.data()), medium_.sectorSize());
        }
        flush();
    } catch (...) {
        for (const auto sector : difat) giveBack(sector);
        throw;
    }
    return difat;
}

// Takes back pages that the header does not count, and the sectors that were to hold them.
void SectorSpace::forgetPages(std::uint32_t from) {
    for (auto page = from; page < fat_.size(); ++page) {
        if (fat_[page] < from * perPage()) giveBack(fat_[page]);
    }
    fat_.resize(std::min<std::size_t>(fat_.size(), from));
    setPageCount(from);
}

// A page goes when nothing but itself is in use there. Pages past the header's slots stay.
void SectorSpace::dropEmptyPages() {
    auto kept = pageCount();
    auto header = header_;
    while (kept > 1 && kept <= headerSlots) {
        const auto first = (kept - 1) * perPage();
        bool empty = true;
        for (auto unit = first; unit < units() && empty; ++unit)
            empty = get(unit) == freeSector || unit == fat_[kept - 1];
        if (!empty) break;
        header.setSlot(--kept, freeSector);
    }
    if (kept == pageCount()) return;
    header.setFatSectors(kept);
    header.write(medium_);
    header_ = header;
    forgetPages(kept);
    flush();
}

std::uint64_t SectorSpace::usedLength() {
    for (auto unit = units(); unit > 0; --unit) {
        if (get(unit - 1) != freeSector && unit - 1 != rangeLockSector())
            return medium_.offsetOf(unit);
    }
    return medium_.sectorSize();
}

}  // namespace compound
