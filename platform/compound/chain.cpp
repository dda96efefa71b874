// A chain of units, addressed by position.
#include "compound/chain.h"

namespace compound {

Chain::Chain(AllocationTable& table, Sector first) : table_(&table) {
    if (first >= table.units()) return;
    unit_ = met_ = first;
    marks_.push_back(first);
}

// Brent's method finds a cycle: at each power of two the unit there is kept, and meeting it again
// means that the chain bites its tail.
void Chain::step() {
    const auto following = table_->next(unit_);
    if (following == endOfChain) throw Failure{Error::corrupt};
    if (index_ == furthest_) {
        if (following == met_) throw Failure{Error::corrupt};
        if ((index_ + 1) % stride == 0) marks_.push_back(following);
        ++furthest_;
        if (furthest_ == nextHare_) {
            met_ = following;
            nextHare_ *= 2;
        }
    }
    ++index_;
    unit_ = following;
}

void Chain::seek(std::uint64_t index) {
    if (unit_ == endOfChain) throw Failure{Error::corrupt};
    const auto mark = std::min<std::uint64_t>(index / stride, marks_.size() - 1);
    if (index < index_ || mark * stride > index_) {
        index_ = mark * stride;
        unit_ = marks_[mark];
    }
    while (index_ < index) step();
}

Sector Chain::at(std::uint64_t index) {
    seek(index);
    return unit_;
}

Run Chain::run(std::uint64_t index, std::uint64_t limit) {
    seek(index);
    Run run{table_->offsetOf(unit_), 1};
    auto end = run.offset + table_->unitSize();
    for (; run.units < limit; ++run.units, end += table_->unitSize()) {
        const auto following = table_->next(unit_);
        if (following != unit_ + 1 || table_->offsetOf(following) != end) break;
        step();
    }
    return run;
}

std::uint64_t Chain::length() {
    if (unit_ == endOfChain) return 0;
    seek(furthest_);
    while (table_->next(unit_) != endOfChain) step();
    return index_ + 1;
}

}  // namespace compound
