// A table of units (sectors or mini sectors) and the chains that they form.
#include "compound/allocation_table.h"

namespace compound {

AllocationTable::Page& AllocationTable::page(std::uint32_t index) {
    if (index >= pages_.size()) throw Failure{Error::corrupt};
    auto& page = pages_[index];
    if (!page.numbers) read(index, page);
    return page;
}

// What a page lacks at the end of the device counts as free.
void AllocationTable::read(std::uint32_t index, Page& page) {
    const auto count = perPage();
    auto numbers = std::make_unique<std::uint32_t[]>(count);
    std::fill_n(numbers.get(), count, freeSector);
    medium_.readSome(medium_.offsetOf(locate(index)), reinterpret_cast<std::byte*>(numbers.get()),
                     medium_.sectorSize());
    page.freeUnits =
        static_cast<std::uint16_t>(std::count(numbers.get(), numbers.get() + count, freeSector));
    page.numbers = std::move(numbers);
}

void AllocationTable::addPage() {
    const auto count = perPage();
    Page page;
    page.numbers = std::make_unique<std::uint32_t[]>(count);
    std::fill_n(page.numbers.get(), count, freeSector);
    page.freeUnits = static_cast<std::uint16_t>(count);
    pages_.push_back(std::move(page));
}

void AllocationTable::writePages(std::uint32_t from) {
    std::vector<std::uint32_t> numbers;
    for (auto index = from; index < pageCount();) {
        const auto first = locate(index);
        numbers.clear();
        for (; index < pageCount() && locate(index) == first + (numbers.size() >> pageShift_);
             ++index)
            numbers.insert(numbers.end(), &pages_[index].numbers[0],
                           &pages_[index].numbers[perPage()]);
        medium_.write(medium_.offsetOf(first), reinterpret_cast<const std::byte*>(numbers.data()),
                      numbers.size() * sizeof(std::uint32_t));
    }
}

std::uint32_t AllocationTable::get(Sector unit) {
    return page(unit >> pageShift_).numbers[indexIn(unit)];
}

void AllocationTable::set(Sector unit, std::uint32_t value) {
    auto& changed = page(unit >> pageShift_);
    const auto index = static_cast<std::uint16_t>(indexIn(unit));
    auto& number = changed.numbers[index];
    if (number == value) return;
    if (changed.dirtyFrom == changed.dirtyTo) {
        dirty_.push_back(unit >> pageShift_);
        changed.dirtyFrom = index;
        changed.dirtyTo = static_cast<std::uint16_t>(index + 1);
    }
    changed.dirtyFrom = std::min(changed.dirtyFrom, index);
    changed.dirtyTo = std::max(changed.dirtyTo, static_cast<std::uint16_t>(index + 1));
    if (number == freeSector) --changed.freeUnits;
    if (value == freeSector) ++changed.freeUnits;
    number = value;
}

Sector AllocationTable::next(Sector unit) {
    const auto following = get(unit);
    if (following >= units() && following != endOfChain) throw Failure{Error::corrupt};
    return following;
}

// The pages whose units are all used are passed over as a whole.
Sector AllocationTable::findFree() {
    const auto end = units();
    while (lowestFree_ < end) {
        const auto& searched = page(lowestFree_ >> pageShift_);
        const auto pageEnd = (std::uint64_t{lowestFree_ >> pageShift_} + 1) << pageShift_;
        const auto last = static_cast<Sector>(std::min<std::uint64_t>(pageEnd, end));
        if (searched.freeUnits == 0) {
            lowestFree_ = last;
            continue;
        }
        for (; lowestFree_ < last; ++lowestFree_) {
            if (searched.numbers[indexIn(lowestFree_)] == freeSector) return lowestFree_;
        }
    }
    return endOfChain;
}

// Blocks of the device that are free as a whole make writing large streams fast.
Sector AllocationTable::findCluster() {
    const auto size = clusterUnits();
    auto first = lowestCluster_ / size * size + size - 1;
    for (; first + size <= units(); first += size) {
        std::uint32_t unit = 0;
        while (unit < size && get(static_cast<Sector>(first + unit)) == freeSector) ++unit;
        if (unit == size) break;
    }
    lowestCluster_ = first - (size - 1);
    return first + size <= units() ? static_cast<Sector>(first) : endOfChain;
}

void AllocationTable::searchFrom(Sector unit) {
    lowestFree_ = std::min(lowestFree_, unit);
    const auto back = std::uint64_t{clusterUnits()} - 1;
    lowestCluster_ = std::min(lowestCluster_, unit > back ? unit - back : 0);
}

Sector AllocationTable::take(Sector unit) {
    if (unit == endOfChain) return unit;
    if (recent_.size() <= unit) recent_.resize(std::max<std::size_t>(units(), unit + 1));
    set(unit, endOfChain);
    recent_[unit] = true;
    return unit;
}

Sector AllocationTable::takeFree() {
    return take(findFree());
}

// A stream goes on where it ends; each full block of it, and of a long stream the last one, begins
// at a block of the device if one is free.
Sector AllocationTable::takeFor(const Wish& wish, std::uint64_t count) {
    constexpr std::uint64_t longStream = 64;
    const auto size = clusterUnits();
    if (!wish.aligned || size == 1) return takeFree();
    if (wish.position % size == 0) {
        const bool worthIt = count >= size || wish.position >= longStream;
        const auto cluster = worthIt ? findCluster() : endOfChain;
        if (cluster != endOfChain) return take(cluster);
    } else if (wish.after + 1 < units() && get(wish.after + 1) == freeSector) {
        return take(wish.after + 1);
    }
    return takeFree();
}

Units AllocationTable::allocate(std::uint64_t count, Wish wish) {
    Units chain;
    try {
        for (; count > 0; --count) {
            auto unit = takeFor(wish, count);
            while (unit == endOfChain) {
                grow();
                unit = takeFor(wish, count);
            }
            if (chain.first == endOfChain) chain.first = unit;
            if (chain.last != endOfChain) set(chain.last, unit);
            chain.last = wish.after = unit;
            ++wish.position;
        }
    } catch (...) {
        release(chain.first);
        throw;
    }
    return chain;
}

void AllocationTable::free(Sector unit) {
    if (unit < recent_.size() && recent_[unit]) {
        giveBack(unit);
    } else {
        held_.push_back(unit);
        set(unit, heldSector);
    }
}

void AllocationTable::release(Sector first) {
    for (auto unit = first; unit < units();) {
        const auto following = get(unit);
        free(unit);
        unit = following;
    }
}

// The page of the last unit is written once, with the link, if the device writes it as a whole.
void AllocationTable::append(Sector last, Sector first) {
    if (medium_.sectorSize() > medium_.atomicBlock()) flush();
    flushOthers(last / perPage());
    medium_.order();
    set(last, first);
    flush();
}

void AllocationTable::cutAfter(Sector last) {
    const auto following = get(last);
    set(last, endOfChain);
    flush();
    medium_.order();
    release(following);
}

void AllocationTable::giveBack(Sector unit) {
    set(unit, freeSector);
    searchFrom(unit);
}

void AllocationTable::synced() {
    for (const auto unit : held_) giveBack(unit);
    held_.clear();
    recent_.assign(recent_.size(), false);
}

void AllocationTable::flushUntil(std::size_t kept) {
    while (dirty_.size() > kept) {
        const auto index = dirty_.back();
        if (index < pages_.size()) write(index, pages_[index]);
        dirty_.pop_back();
    }
}

void AllocationTable::flushOthers(std::uint32_t page) {
    const auto found = std::find(dirty_.begin(), dirty_.end(), page);
    if (found == dirty_.end()) return flush();
    std::iter_swap(dirty_.begin(), found);
    flushUntil(1);
}

void AllocationTable::write(std::uint32_t index, Page& page) {
    const auto* const from = page.numbers.get() + page.dirtyFrom;
    const auto count = static_cast<std::size_t>(page.dirtyTo - page.dirtyFrom);
    const auto offset = medium_.offsetOf(locate(index)) + page.dirtyFrom * sizeof *from;
    if (std::find(from, from + count, heldSector) == from + count) {
        medium_.write(offset, reinterpret_cast<const std::byte*>(from), count * sizeof *from);
    } else {
        std::vector<std::uint32_t> numbers(from, from + count);
        std::replace(numbers.begin(), numbers.end(), heldSector, freeSector);
        medium_.write(offset, reinterpret_cast<const std::byte*>(numbers.data()),
                      count * sizeof *from);
    }
    page.dirtyFrom = page.dirtyTo = 0;
}

}  // namespace compound
