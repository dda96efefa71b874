// The mini stream: sectors of 64 bytes for short streams, with the mini FAT that chains them.
#include "compound/mini_space.h"

namespace compound {

MiniSpace::MiniSpace(Medium& medium, Header& header, SectorSpace& space, Directory& directory)
    : AllocationTable(medium, miniSectorSize),
      header_(header),
      space_(space),
      directory_(directory),
      table_(space, header.firstMiniFat()),
      stream_(space, directory[rootId].start) {
    if (header.miniFatSectors() > medium.sectors()) throw Failure{Error::corrupt};
    setPageCount(header.miniFatSectors());
}

std::uint32_t MiniSpace::units() const {
    const auto held = ceilDivide(directory_[rootId].size, miniSectorSize);
    const auto covered = std::uint64_t{pageCount()} * perPage();
    return static_cast<std::uint32_t>(std::min<std::uint64_t>({held, covered, maxSector}));
}

std::uint64_t MiniSpace::offsetOf(Sector unit) {
    return medium_.offsetOf(stream_.at(unit / perSector())) + unit % perSector() * miniSectorSize;
}

void MiniSpace::grow() {
    const auto sectors = stream_.length();
    if ((sectors + 1) * perSector() > std::uint64_t{pageCount()} * perPage()) addPages();
    addSectors();
}

// Clear pages first, then the chain, then what leads to it, and the header's count last.
void MiniSpace::addPages() {
    const auto count = static_cast<std::uint32_t>(std::clamp<std::size_t>(pageCount() / 8, 1, 16));
    const std::vector<std::byte> clear(medium_.sectorSize(), std::byte{0xFF});
    const auto last = pageCount() == 0 ? endOfChain : table_.at(pageCount() - 1);
    const auto added = space_.allocate(count);
    try {
        for (auto sector = added.first; sector != endOfChain; sector = space_.next(sector))
            medium_.write(medium_.offsetOf(sector), clear.data(), clear.size());
        if (last == endOfChain)
            space_.flush();
        else
            space_.append(last, added.first);
        medium_.order();
        namePages(last == endOfChain ? added.first : header_.firstMiniFat(), pageCount() + count);
    } catch (...) {
        if (last != endOfChain) space_.set(last, endOfChain);
        space_.release(added.first);
        throw;
    }
    if (last == endOfChain) table_ = Chain(space_, added.first);
    setPageCount(pageCount() + count);
    medium_.order();
}

void MiniSpace::namePages(Sector first, std::uint32_t count) {
    auto header = header_;
    header.setMiniFat(first, count);
    header.write(medium_);
    header_ = header;
}

void MiniSpace::addSectors() {
    const auto sectors = stream_.length();
    const auto room = std::uint64_t{pageCount()} * perPage() / perSector() - sectors;
    const auto count = std::min(std::clamp<std::uint64_t>(sectors / 8, 1, 64), room);
    const auto last = sectors == 0 ? endOfChain : stream_.at(sectors - 1);
    const auto added = space_.allocate(count);
    try {
        for (auto sector = added.first; sector != endOfChain; sector = space_.next(sector))
            medium_.writeZeros(medium_.offsetOf(sector), medium_.sectorSize());
        if (last == endOfChain)
            space_.flush();
        else
            space_.append(last, added.first);
        medium_.order();
        setStream(last == endOfChain ? added.first : directory_[rootId].start, sectors + count);
    } catch (...) {
        if (last != endOfChain) space_.set(last, endOfChain);
        space_.release(added.first);
        throw;
    }
    medium_.order();
}

void MiniSpace::setStream(Sector start, std::uint64_t sectors) {
    auto root = directory_[rootId];
    const bool other = root.start != start;
    root.start = start;
    root.size = sectors * medium_.sectorSize();
    directory_.update(rootId, root);
    if (other) stream_ = Chain(space_, start);
}

void MiniSpace::adoptLengths() {
    const auto pages = static_cast<std::uint32_t>(table_.length());
    if (pages != pageCount()) {
        namePages(pages == 0 ? endOfChain : header_.firstMiniFat(), pages);
        setPageCount(pages);
    }
    const auto most = std::uint64_t{pages} * perPage() / perSector();
    const auto sectors = std::min(stream_.length(), most);
    const auto size = directory_[rootId].size;
    if (ceilDivide(size, medium_.sectorSize()) != sectors)
        setStream(sectors == 0 ? endOfChain : directory_[rootId].start, sectors);
}

// The mini FAT keeps its sectors, but for a file that has no short streams left.
void MiniSpace::trim() {
    auto used = units();
    while (used > 0 && get(used - 1) == freeSector) --used;
    const auto sectors = ceilDivide(used, perSector());
    const auto before = stream_.length();
    if (sectors == before) return;
    if (sectors > 0) {
        const auto last = stream_.at(sectors - 1);
        setStream(directory_[rootId].start, sectors);
        stream_ = Chain(space_, directory_[rootId].start);
        space_.cutAfter(last);
        return;
    }
    const auto start = directory_[rootId].start, table = header_.firstMiniFat();
    setStream(endOfChain, 0);
    namePages(endOfChain, 0);
    medium_.order();
    setPageCount(0);
    table_ = Chain();
    space_.release(start);
    space_.release(table);
}

}  // namespace compound
