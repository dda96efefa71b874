// The entries of the directory on the device: 128 bytes each, in a chain of sectors.
#include "compound/entries.h"

#include <algorithm>

#include "compound/chain.h"

namespace compound {
namespace {

constexpr std::size_t largestPiece = 65536;

void storeLinks(std::byte* bytes, std::uint32_t left, std::uint32_t right, std::uint32_t child) {
    store(bytes + 68, left);
    store(bytes + 72, right);
    store(bytes + 76, child);
}

std::uint32_t loadLink(const std::byte* bytes) {
    const auto link = load<std::uint32_t>(bytes);
    return link < maxSector ? link : noElement;
}

// Some programs count the terminator and some do not end the name with one.
void decodeName(Element& element, const std::byte* bytes) {
    const auto size = load<std::uint16_t>(bytes + 64);
    if (size < 4 || size > 64 || size % 2 != 0) return;
    element.length = static_cast<std::uint8_t>(size / 2 - 1);
    std::memcpy(element.units.data(), bytes, element.length * sizeof(char16_t));
}

}  // namespace

std::array<std::byte, entrySize> encodeEntry(const Elements& elements, const Element& element) {
    const auto entryOf = [&](Id id) { return id == noElement ? noStream : elements[id].entry; };
    std::array<std::byte, entrySize> entry{};
    auto* const bytes = entry.data();
    std::memcpy(bytes, element.units.data(), sizeof element.units);
    store(bytes + 64, static_cast<std::uint16_t>((element.length + 1) * sizeof(char16_t)));
    store(bytes + 66, element.kind);
    store(bytes + 67, static_cast<std::uint8_t>(element.black));
    storeLinks(bytes, entryOf(element.left), entryOf(element.right), entryOf(element.child));
    std::copy(element.classId.begin(), element.classId.end(), bytes + 80);
    store(bytes + 96, element.stateBits);
    store(bytes + 100, element.created);
    store(bytes + 108, element.modified);
    store(bytes + 116, element.kind == Kind::storage ? Sector{0} : element.start);
    store(bytes + 120, element.size);
    return entry;
}

Element decodeEntry(const std::byte* bytes, bool shortSizes) {
    Element element;
    decodeName(element, bytes);
    element.kind = load<Kind>(bytes + 66);
    element.black = load<std::uint8_t>(bytes + 67) != 0;
    element.left = loadLink(bytes + 68);
    element.right = loadLink(bytes + 72);
    if (element.isStorage()) element.child = loadLink(bytes + 76);
    std::copy_n(bytes + 80, element.classId.size(), element.classId.begin());
    element.stateBits = load<std::uint32_t>(bytes + 96);
    element.created = load<std::uint64_t>(bytes + 100);
    element.modified = load<std::uint64_t>(bytes + 108);
    if (element.kind == Kind::storage) return element;
    element.size = load<std::uint64_t>(bytes + 120);
    if (shortSizes) element.size &= 0xFFFFFFFF;
    if (element.size != 0) element.start = load<std::uint32_t>(bytes + 116);
    return element;
}

void Entries::load() {
    Chain chain(space_, header_.firstDirectory());
    std::vector<std::byte> bytes(largestPiece);
    const auto sectorSize = medium_.sectorSize();
    const auto length = chain.length();
    if (length == 0) throw Failure{Error::corrupt};
    for (std::uint64_t done = 0; done < length;) {
        const auto run =
            chain.run(done, std::min<std::uint64_t>(length - done, largestPiece / sectorSize));
        const auto size = run.units * sectorSize;
        const auto got = medium_.readSome(run.offset, bytes.data(), size);
        std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(got), bytes.end(), std::byte{0});
        for (std::size_t at = 0; at < size; at += entrySize)
            elements_[elements_.add()] = decodeEntry(&bytes[at], header_.version() == 3);
        for (std::uint64_t i = 0; i < run.units; ++i)
            sectors_.push_back(static_cast<Sector>(run.offset / sectorSize - 1 + i));
        done += run.units;
    }
    owners_.assign(elements_.count(), noElement);
}

void Entries::settle() {
    for (auto entry = count(); entry-- > 0;) {
        auto& element = elements_[entry];
        if (element.placed) {
            element.entry = entry;
            owners_[entry] = entry;
        } else {
            const bool used = element.kind != Kind::none || element.length != 0;
            (used ? left_ : free_).push_back(entry);
            elements_.drop(entry);
        }
    }
}

std::uint64_t Entries::offsetOf(std::uint32_t entry) const {
    return medium_.offsetOf(sectors_[entry / perSector()]) + entry % perSector() * entrySize;
}

// New elements go side by side, so that the changes that follow share a block. What moves takes what
// others have left, which need not be cleared then.
void Entries::place(Id id, bool moves) {
    if (left_.empty() && free_.empty()) grow();
    auto& source = free_.empty() || (moves && !left_.empty()) ? left_ : free_;
    auto& element = elements_.change(id);
    element.entry = source.back();
    element.placed = true;
    source.pop_back();
    owners_[element.entry] = id;
}

void Entries::leave(std::uint32_t entry) {
    owners_[entry] = noElement;
    left_.push_back(entry);
}

void Entries::clearLeft() {
    if (left_.empty()) return;
    free_.reserve(free_.size() + left_.size());
    writeRuns(left_);
    free_.insert(free_.end(), left_.rbegin(), left_.rend());
    left_.clear();
}

void Entries::encode(std::uint32_t entry, std::byte* bytes) const {
    const auto owner = owners_[entry];
    if (owner == noElement) {
        std::fill_n(bytes, entrySize, std::byte{0});
        storeLinks(bytes, noStream, noStream, noStream);
    } else {
        const auto encoded = encodeEntry(elements_, elements_[owner]);
        std::copy(encoded.begin(), encoded.end(), bytes);
    }
}

void Entries::writeSpan(std::uint32_t first, std::uint32_t last) {
    std::array<std::byte, 4096> bytes;
    for (auto entry = first; entry <= last; ++entry)
        encode(entry, bytes.data() + (entry - first) * entrySize);
    medium_.write(offsetOf(first), bytes.data(), (last - first + 1) * entrySize);
}

void Entries::writeRuns(std::vector<std::uint32_t>& entries) {
    constexpr std::size_t mostTogether = 4096 / entrySize;
    std::sort(entries.begin(), entries.end());
    for (std::size_t i = 0; i < entries.size();) {
        const auto first = i++;
        while (i < entries.size() && i - first < mostTogether && entries[i] == entries[i - 1] + 1 &&
               offsetOf(entries[i]) == offsetOf(entries[i - 1]) + entrySize) {
            ++i;
        }
        writeSpan(entries[first], entries[i - 1]);
    }
}

void Entries::write(std::vector<Id> ids) {
    for (auto& id : ids) id = elements_[id].entry;
    writeRuns(ids);
}

bool Entries::together(Id left, Id right) const {
    const auto first = std::min(elements_[left].entry, elements_[right].entry);
    const auto last = std::max(elements_[left].entry, elements_[right].entry);
    if (offsetOf(first) / medium_.atomicBlock() != offsetOf(last) / medium_.atomicBlock())
        return false;
    for (auto index = first / perSector(); index < last / perSector(); ++index) {
        if (sectors_[index + 1] != sectors_[index] + 1) return false;
    }
    return true;
}

void Entries::writeTogether(const std::vector<Id>& ids) {
    const auto [first, last] = std::minmax_element(ids.begin(), ids.end(), [&](Id left, Id right) {
        return elements_[left].entry < elements_[right].entry;
    });
    writeSpan(elements_[*first].entry, elements_[*last].entry);
}

void Entries::write(const Element& element) {
    const auto bytes = encodeEntry(elements_, element);
    medium_.write(offsetOf(element.entry), bytes.data(), bytes.size());
}

void Entries::grow() {
    const auto count =
        static_cast<std::uint32_t>(std::clamp<std::size_t>(sectors_.size() / 8, 1, 64));
    sectors_.reserve(sectors_.size() + count);
    owners_.reserve(owners_.size() + count * perSector());
    free_.reserve(free_.size() + count * perSector());
    const auto added = space_.allocate(count);
    try {
        addSectors(added, count);
    } catch (...) {
        space_.set(sectors_.back(), endOfChain);
        space_.release(added.first);
        throw;
    }
}

// The new sectors are cleared and chained before the directory's last sector leads to them.
void Entries::addSectors(const Units& added, std::uint32_t count) {
    std::vector<Sector> sectors;
    std::vector<std::byte> clear(medium_.sectorSize());
    for (std::size_t at = 0; at < clear.size(); at += entrySize)
        storeLinks(&clear[at], noStream, noStream, noStream);
    for (auto sector = added.first; sector != endOfChain; sector = space_.next(sector)) {
        medium_.write(medium_.offsetOf(sector), clear.data(), clear.size());
        sectors.push_back(sector);
    }
    space_.append(sectors_.back(), added.first);
    if (header_.version() == 4) {
        auto header = header_;
        header.setDirectorySectors(static_cast<std::uint32_t>(sectors_.size()) + count);
        medium_.order();
        header.write(medium_);
        header_ = header;
    }
    medium_.order();
    for (auto entry = owners_.size() + count * perSector(); entry-- > owners_.size();)
        free_.push_back(static_cast<std::uint32_t>(entry));
    sectors_.insert(sectors_.end(), sectors.begin(), sectors.end());
    owners_.resize(owners_.size() + count * perSector(), noElement);
}

}  // namespace compound
