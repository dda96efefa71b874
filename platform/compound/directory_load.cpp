// Reading the directory: every link is checked, and trees that are too deep get another shape.
#include <algorithm>

#include "compound/directory.h"

namespace compound {

void Directory::load() {
    elements_.record(false);
    entries_.load();
    if (elements_[rootId].kind != Kind::root) throw Failure{Error::corrupt};
    elements_[rootId].placed = true;
    elements_[rootId].left = elements_[rootId].right = noElement;
    std::vector<Id> storages{rootId};
    while (!storages.empty()) {
        const auto storage = storages.back();
        storages.pop_back();
        readTree(storage, storages);
    }
    entries_.settle();
    elements_.record(true);
}

// An element that is reached a second time is part of a cycle or of two trees.
void Directory::claim(Id id, Id up) {
    if (id >= elements_.count()) throw Failure{Error::corrupt};
    auto& element = elements_[id];
    const bool sound = (element.kind == Kind::storage || element.kind == Kind::stream) &&
                       element.length > 0 && !element.placed;
    if (!sound) throw Failure{Error::corrupt};
    element.placed = true;
    element.up = up;
}

void Directory::readTree(Id storage, std::vector<Id>& storages) {
    struct Step {
        Id id;
        std::uint32_t depth;
    };
    std::vector<Step> path;
    std::vector<Id> ordered;
    std::uint32_t deepest = 0;
    auto descend = [&](Id id, Id up, std::uint32_t depth) {
        for (; id != noElement; up = id, id = elements_[id].left) {
            claim(id, up);
            path.push_back({id, ++depth});
            deepest = std::max(deepest, depth);
        }
    };
    descend(elements_[storage].child, storage, 0);
    while (!path.empty()) {
        const auto [id, depth] = path.back();
        path.pop_back();
        ordered.push_back(id);
        if (elements_[id].isStorage()) storages.push_back(id);
        descend(elements_[id].right, id, depth);
    }
    elements_[storage].children = static_cast<std::uint32_t>(ordered.size());
    const auto inOrder = [&](Id left, Id right) {
        return compareNames(elements_[left].name(), elements_[right].name(), upper_) < 0;
    };
    const bool sorted = std::is_sorted(ordered.begin(), ordered.end(), inOrder);
    const auto allowed = Tree::mostHeight(elements_[storage].children);
    if (sorted && deepest <= static_cast<std::uint32_t>(allowed)) {
        measureAll(elements_[storage].child);
    } else {
        loosen(storage, ordered);
    }
}

// The depth is at most that of a balanced tree here.
void Directory::measureAll(Id id) {
    if (id == noElement) return;
    auto& element = elements_[id];
    measureAll(element.left);
    measureAll(element.right);
    const auto heightOf = [&](Id link) { return link == noElement ? 0 : elements_[link].height; };
    element.height =
        static_cast<std::uint8_t>(std::max(heightOf(element.left), heightOf(element.right)) + 1);
}

// In memory the tree is even and in order, so that looking up is fast. On the device it stays as it
// is until something in it changes.
void Directory::loosen(Id storage, std::vector<Id>& ordered) {
    std::stable_sort(ordered.begin(), ordered.end(), [&](Id left, Id right) {
        return compareNames(elements_[left].name(), elements_[right].name(), upper_) < 0;
    });
    tree(storage).build(ordered);
    elements_[storage].loose = true;
}

}  // namespace compound
