// Writing a change of the directory's trees so that it takes place as a whole.
//
// One write makes the change count: that of the entry of the lowest element above all changed ones, and
// of those changed ones whose entries share its block, which the device writes as a whole. All others
// get new entries before, which nothing names until then.
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
    entries_.place(id, elements_[id].placed);
    taken_.push_back(elements_[id].entry);
}

void Directory::commit(Id top, bool everything) {
    blackenTops();
    const auto changed = changedElements(everything);
    if (changed.existing.empty()) return elements_.keep();  // moved to where it was
    for (const auto id : changed.fresh) place(id);
    const auto ancestor = commonAncestor(changed.existing, top);
    auto plan = planOf(ancestor, changed);
    std::vector<std::uint32_t> left;
    left.reserve(plan.moved.size());
    for (const auto id : plan.moved) {
        left.push_back(elements_[id].entry);
        place(id);
    }
    plan.before.insert(plan.before.end(), plan.moved.begin(), plan.moved.end());
    entries_.write(std::move(plan.before));
    medium_.order();
    entries_.writeTogether(plan.together);
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

// Each changed element is written together with the ancestor, or moves. Then the one above it has
// changed, too.
Directory::Plan Directory::planOf(Id ancestor, const Changed& changed) {
    Plan plan;
    plan.together.push_back(ancestor);
    for (const auto id : changed.fresh)
        (entries_.together(id, ancestor) ? plan.together : plan.before).push_back(id);
    for (auto id : changed.existing) {
        for (; !elements_[id].moving && !entries_.together(id, ancestor); id = elements_[id].up) {
            plan.moved.push_back(id);
            elements_.change(id).moving = true;
        }
        plan.together.push_back(id);
    }
    for (const auto id : plan.moved) elements_[id].moving = false;
    std::erase_if(plan.together, [&](Id id) { return !entries_.together(id, ancestor); });
    return plan;
}

}  // namespace compound
