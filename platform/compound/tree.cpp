// The tree of a storage's elements: ordered by name, balanced by height.
#include "compound/tree.h"

#include <algorithm>
#include <cmath>

namespace compound {
namespace {

constexpr int mostLean = 1;

}  // namespace

Id Tree::find(std::u16string_view name) const {
    auto id = elements_[storage_].child;
    while (id != noElement) {
        const auto order = compareNames(name, elements_[id].name(), upper_);
        if (order == 0) break;
        id = order < 0 ? elements_[id].left : elements_[id].right;
    }
    return id;
}

Id Tree::following(std::u16string_view name) const {
    auto found = noElement;
    for (auto id = elements_[storage_].child; id != noElement;) {
        const bool after = compareNames(elements_[id].name(), name, upper_) > 0;
        if (after) found = id;
        id = after ? elements_[id].left : elements_[id].right;
    }
    return found;
}

Id Tree::leftmost(Id id) const {
    while (id != noElement && elements_[id].left != noElement) id = elements_[id].left;
    return id;
}

Id Tree::first() const {
    return leftmost(elements_[storage_].child);
}

Id Tree::next(Id id) const {
    if (elements_[id].right != noElement) return leftmost(elements_[id].right);
    for (auto up = elements_[id].up; up != storage_; id = up, up = elements_[id].up) {
        if (elements_[up].left == id) return up;
    }
    return noElement;
}

int Tree::mostHeight(std::uint32_t count) {
    return static_cast<int>(2 * std::log2(count + 1.0));
}

// Returns whether the height was another one.
bool Tree::measure(Id id) {
    const auto& element = elements_[id];
    const auto height = std::max(heightOf(element.left), heightOf(element.right)) + 1;
    if (element.height == height) return false;
    elements_.change(id).height = static_cast<std::uint8_t>(height);
    return true;
}

Id Tree::rotateLeft(Id id) {
    const auto top = elements_[id].right;
    elements_.replaceLink(elements_[id].up, id, top);
    elements_.setRight(id, elements_[top].left);
    elements_.setLeft(top, id);
    measure(id);
    measure(top);
    return top;
}

Id Tree::rotateRight(Id id) {
    const auto top = elements_[id].left;
    elements_.replaceLink(elements_[id].up, id, top);
    elements_.setLeft(id, elements_[top].right);
    elements_.setRight(top, id);
    measure(id);
    measure(top);
    return top;
}

Id Tree::straighten(Id id) {
    if (lean(id) > mostLean) {
        if (lean(elements_[id].left) < 0) rotateLeft(elements_[id].left);
        return rotateRight(id);
    }
    if (lean(id) < -mostLean) {
        if (lean(elements_[id].right) > 0) rotateRight(elements_[id].right);
        return rotateLeft(id);
    }
    return id;
}

void Tree::straightenUp(Id id) {
    while (id != storage_) {
        const bool grown = measure(id);
        const auto top = straighten(id);
        if (top == id && !grown) break;
        id = elements_[top].up;
    }
}

void Tree::insert(Id id) {
    auto at = storage_;
    auto link = elements_[storage_].child;
    bool smaller = false;
    while (link != noElement) {
        at = link;
        smaller = compareNames(elements_[id].name(), elements_[at].name(), upper_) < 0;
        link = smaller ? elements_[at].left : elements_[at].right;
    }
    auto& added = elements_.change(id);
    added.left = added.right = noElement;
    added.height = 1;
    if (at == storage_) {
        elements_.setChild(storage_, id);
    } else if (smaller) {
        elements_.setLeft(at, id);
    } else {
        elements_.setRight(at, id);
    }
    ++elements_.change(storage_).children;
    straightenUp(at);
    keepLow();
}

void Tree::erase(Id id) {
    const auto& erased = elements_[id];
    if (erased.left != noElement && erased.right != noElement) {
        replaceBySuccessor(id);
    } else {
        const auto up = erased.up;
        elements_.replaceLink(up, id, erased.left != noElement ? erased.left : erased.right);
        straightenUp(up);
    }
    --elements_.change(storage_).children;
    keepLow();
}

void Tree::replaceBySuccessor(Id id) {
    const auto& erased = elements_[id];
    const auto successor = leftmost(erased.right);
    auto lowest = elements_[successor].up;
    if (lowest == id) {
        lowest = successor;
    } else {
        elements_.setLeft(lowest, elements_[successor].right);
        elements_.setRight(successor, erased.right);
    }
    elements_.setLeft(successor, erased.left);
    elements_.replaceLink(erased.up, id, successor);
    elements_.change(successor).height = erased.height;
    straightenUp(lowest);
}

// Trees of other programs may be at their limit already.
void Tree::keepLow() {
    if (height() <= mostHeight(elements_[storage_].children)) return;
    std::vector<Id> ordered;
    for (auto id = first(); id != noElement; id = next(id)) ordered.push_back(id);
    build(ordered);
}

void Tree::build(const std::vector<Id>& ordered) {
    elements_.setChild(storage_, buildPart(ordered, 0, ordered.size()));
}

Id Tree::buildPart(const std::vector<Id>& ordered, std::size_t begin, std::size_t end) {
    if (begin == end) return noElement;
    const auto middle = begin + (end - begin) / 2;
    const auto id = ordered[middle];
    elements_.setLeft(id, buildPart(ordered, begin, middle));
    elements_.setRight(id, buildPart(ordered, middle + 1, end));
    measure(id);
    return id;
}

}  // namespace compound
