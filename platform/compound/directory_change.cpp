// Writing a change of the directory's trees so that it takes place as a whole.
//
// Where the changed entries share a block that the device writes as a whole, one write does. Otherwise
// the changed elements get new entries, which nothing names, up to the lowest element above all of
// them; the write of that one entry switches from the old ones to the new ones.
#include <algorithm>

#include "compound/directory.h"

namespace compound {
namespace {

bool differ(const Element& before, const Element& now) {
    return before.left != now.left || before.right != now.right || before.child != now.child ||
           before.black != now.black || before.name() != now.name();
}

}  // namespace

Directory::Changed Directory::changedElements(bool everything) {
    Changed changed;
    for (const auto& [id, before] : elements_.changed()) {
        const auto& now = elements_[id];
        const bool takenOut = now.up == noElement && id != rootId;
        if (takenOut) continue;
        if (!before.placed) {
            changed.fresh.push_back(id);
        } else if (everything || differ(before, now)) {
            changed.existing.push_back(id);
        }
    }
    return changed;
}

// All elements whose links changed are black, so that no two red ones meet; and so are the tops of
// the trees.
void Directory::blackenTops() {
    const auto changed = changedElements(false);
    for (const auto id : changed.existing) {
        elements_.change(id).black = true;
        const auto child = elements_[id].child;
        if (child != noElement && !elements_[child].black) elements_.change(child).black = true;
    }
}

void Directory::place(Id id) {
    taken_.reserve(taken_.size() + 1);
    entries_.place(id);
    taken_.push_back(elements_[id].entry);
}

void Directory::commit(Id top, bool everything) {
    blackenTops();
    const auto changed = changedElements(everything);
    for (const auto id : changed.fresh) place(id);
    auto all = changed.existing;
    all.insert(all.end(), changed.fresh.begin(), changed.fresh.end());
    if (entries_.writeTogether(all)) {
        elements_.keep();
        taken_.clear();
        medium_.order();
    } else {
        commitByMoving(top, changed);
    }
}

void Directory::commitByMoving(Id top, const Changed& changed) {
    const auto ancestor = commonAncestor(changed.existing, top);
    auto moved = pathsTo(ancestor, changed.existing);
    std::vector<std::uint32_t> left;
    left.reserve(moved.size());
    for (const auto id : moved) {
        left.push_back(elements_[id].entry);
        place(id);
    }
    moved.insert(moved.end(), changed.fresh.begin(), changed.fresh.end());
    if (!moved.empty()) entries_.write(std::move(moved));
    medium_.order();
    entries_.write(elements_[ancestor]);
    elements_.keep();
    taken_.clear();
    medium_.order();
    for (const auto entry : left) entries_.leave(entry);
}

std::uint32_t Directory::depthBelow(Id top, Id id) const {
    std::uint32_t depth = 0;
    for (; id != top; id = elements_[id].up) ++depth;
    return depth;
}

Id Directory::commonAncestor(const std::vector<Id>& ids, Id top) const {
    auto common = ids.front();
    auto depth = depthBelow(top, common);
    for (auto id : ids) {
        auto other = depthBelow(top, id);
        for (; other > depth; --other) id = elements_[id].up;
        for (; depth > other; --depth) common = elements_[common].up;
        for (; common != id; --depth) {
            common = elements_[common].up;
            id = elements_[id].up;
        }
    }
    return common;
}

// All elements from the given ones up to the ancestor, without it.
std::vector<Id> Directory::pathsTo(Id ancestor, const std::vector<Id>& ids) {
    std::vector<Id> paths;
    for (auto id : ids) {
        for (; id != ancestor && !elements_[id].moving; id = elements_[id].up) {
            paths.push_back(id);
            elements_.change(id).moving = true;
        }
    }
    for (const auto id : paths) elements_[id].moving = false;
    return paths;
}

}  // namespace compound
