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
    page.freeUnits = page.dirtyTo = static_cast<std::uint16_t>(count);
    dirty_.reserve(pages_.size() + 1);
    pages_.push_back(std::move(page));
    dirty_.push_back(pageCount() - 1);
}

std::uint32_t AllocationTable::get(Sector unit) {
    return page(unit / perPage()).numbers[unit % perPage()];
}

void AllocationTable::set(Sector unit, std::uint32_t value) {
    auto& changed = page(unit / perPage());
    const auto index = static_cast<std::uint16_t>(unit % perPage());
    auto& number = changed.numbers[index];
    if (number == value) return;
    if (changed.dirtyFrom == changed.dirtyTo) {
        dirty_.push_back(unit / perPage());
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
        const auto& searched = page(lowestFree_ / perPage());
        const auto pageEnd = (lowestFree_ / perPage() + 1) * std::uint64_t{perPage()};
        const auto last = static_cast<Sector>(std::min<std::uint64_t>(pageEnd, end));
        if (searched.freeUnits == 0) {
            lowestFree_ = last;
            continue;
        }
        for (; lowestFree_ < last; ++lowestFree_) {
            if (searched.numbers[lowestFree_ % perPage()] == freeSector) return lowestFree_;
        }
    }
    return endOfChain;
}

Sector AllocationTable::takeFree() {
    const auto unit = findFree();
    if (unit == endOfChain) return unit;
    if (recent_.size() <= unit) recent_.resize(std::max<std::size_t>(units(), unit + 1));
    set(unit, endOfChain);
    recent_[unit] = true;
    return unit;
}

Units AllocationTable::allocate(std::uint64_t count) {
    Units chain;
    try {
        for (; count > 0; --count) {
            auto unit = takeFree();
            while (unit == endOfChain) {
                grow();
                unit = takeFree();
            }
            if (chain.first == endOfChain) chain.first = unit;
            if (chain.last != endOfChain) set(chain.last, unit);
            chain.last = unit;
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

void AllocationTable::flush() {
    while (!dirty_.empty()) {
        const auto index = dirty_.back();
        if (index < pages_.size()) write(index, pages_[index]);
        dirty_.pop_back();
    }
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
