// The elements of a compound file as they are in memory, and what undoes a change of them.
#include "compound/elements.h"

#include <algorithm>

namespace compound {

void Element::setName(std::u16string_view name) {
    units.fill(0);
    std::copy(name.begin(), name.end(), units.begin());
    length = static_cast<std::uint8_t>(name.size());
}

Id Elements::add() {
    if (unused_.empty()) {
        elements_.emplace_back();
        return count() - 1;
    }
    const auto id = unused_.back();
    unused_.pop_back();
    return id;
}

void Elements::drop(Id id) {
    Element fresh;
    fresh.generation = elements_[id].generation + 1;
    elements_[id] = fresh;
    unused_.push_back(id);
}

Element& Elements::change(Id id) {
    auto& element = elements_[id];
    if (recording_ && !element.remembered) {
        before_.push_back({id, element});
        element.remembered = true;
    }
    return element;
}

void Elements::undo() {
    for (const auto& [id, element] : before_) elements_[id] = element;
    before_.clear();
}

void Elements::keep() {
    for (const auto& [id, element] : before_) elements_[id].remembered = false;
    before_.clear();
}

void Elements::attach(Id link, Id up) {
    if (link != noElement && elements_[link].up != up) change(link).up = up;
}

void Elements::setLeft(Id id, Id link) {
    change(id).left = link;
    attach(link, id);
}

void Elements::setRight(Id id, Id link) {
    change(id).right = link;
    attach(link, id);
}

void Elements::setChild(Id id, Id link) {
    change(id).child = link;
    attach(link, id);
}

void Elements::replaceLink(Id from, Id old, Id link) {
    const auto& element = elements_[from];
    if (element.left == old) {
        setLeft(from, link);
    } else if (element.right == old) {
        setRight(from, link);
    } else {
        setChild(from, link);
    }
}

}  // namespace compound
