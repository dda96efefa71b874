// Before the first change of a file: proof that no chains cross, and taking back of lost space.
#include "compound/reclaim.h"

namespace compound {

Reclaim::Reclaim(Medium& medium, Header& header, SectorSpace& sectors, MiniSpace& minis,
                 Directory& directory)
    : medium_(medium),
      header_(header),
      sectors_(sectors),
      minis_(minis),
      directory_(directory),
      usedSectors_(sectors),
      usedMinis_(minis) {}

void Reclaim::Used::mark(Sector unit) {
    if (unit >= units.size() || units[unit]) throw Failure{Error::corrupt};
    units[unit] = true;
}

void Reclaim::Used::markChain(Sector first) {
    for (auto unit = first; unit != endOfChain; unit = table.get(unit)) mark(unit);
}

// A chain that is too short harms its own stream alone.
void Reclaim::Used::markStream(const Element& stream) {
    const auto needed = ceilDivide(stream.size, table.unitSize());
    auto unit = stream.start;
    auto last = endOfChain;
    for (std::uint64_t i = 0; i < needed && unit < units.size(); ++i) {
        mark(unit);
        last = unit;
        unit = table.get(unit);
    }
    if (last != endOfChain && unit != endOfChain) lastOnes.push_back(last);
}

void Reclaim::Used::endChains() {
    for (const auto unit : lastOnes) table.set(unit, endOfChain);
    table.flush();
}

void Reclaim::Used::freeOthers() {
    for (Sector unit = 0; unit < units.size(); ++unit) {
        if (!units[unit] && table.get(unit) != freeSector) table.giveBack(unit);
    }
    table.flush();
}

void Reclaim::markTables() {
    for (const auto sector : sectors_.fatSectors()) usedSectors_.mark(sector);
    for (const auto sector : sectors_.difatSectors()) usedSectors_.mark(sector);
    const auto lock = sectors_.rangeLockSector();
    if (lock < usedSectors_.units.size()) usedSectors_.mark(lock);
    for (const auto sector : directory_.entries().sectors()) usedSectors_.mark(sector);
    if (minis_.units() > 0 || header_.miniFatSectors() > 0)
        usedSectors_.markChain(header_.firstMiniFat());
    usedSectors_.markChain(directory_[rootId].start);
}

void Reclaim::markStreams() {
    const auto& elements = directory_.elements();
    for (Id id = 0; id < elements.count(); ++id) {
        const auto& element = elements[id];
        if (element.kind != Kind::stream || element.size == 0) continue;
        (element.size < miniCutoff ? usedMinis_ : usedSectors_).markStream(element);
    }
}

// The tables' own sectors are to be told apart from streams.
void Reclaim::nameTables() {
    for (const auto sector : sectors_.fatSectors()) sectors_.set(sector, fatSector);
    for (const auto sector : sectors_.difatSectors()) sectors_.set(sector, difatSector);
}

void Reclaim::run() {
    markTables();
    markStreams();
    nameTables();
    minis_.adoptLengths();
    usedSectors_.endChains();
    usedMinis_.endChains();
    medium_.order();
    usedSectors_.freeOthers();
    usedMinis_.freeOthers();
    directory_.clearLeft();
}

}  // namespace compound
