// The directory: the elements, their trees, and changes of them that take place as a whole.
#include "compound/directory.h"

namespace compound {

Directory::Directory(Medium& medium, Header& header, SectorSpace& space, UpperCase upper)
    : medium_(medium), entries_(medium, header, space, elements_), upper_(upper) {}

Id Directory::storageOf(Id id) const {
    auto up = elements_[id].up;
    for (; elements_[up].child != id; up = elements_[up].up) id = up;
    return up;
}

// When a change fails, the entries that it has taken are free again and memory is as before.
template <class Step>
void Directory::change(const Step& step) {
    taken_.clear();
    try {
        step();
    } catch (...) {
        elements_.undo();
        for (const auto entry : taken_) entries_.leave(entry);
        throw;
    }
}

Id Directory::create(Id storage, Kind kind, std::u16string_view name, std::uint64_t time) {
    fix(storage);
    const auto id = elements_.add();
    try {
        auto& element = elements_[id];
        element.kind = kind;
        element.setName(name);
        element.created = element.modified = time;
        change([&] {
            tree(storage).insert(id);
            commit(storage, false);
        });
    } catch (...) {
        elements_.drop(id);
        throw;
    }
    return id;
}

void Directory::move(Id id, Id storage, std::u16string_view name) {
    const auto from = storageOf(id);
    fix(from);
    fix(storage);
    change([&] {
        tree(from).erase(id);
        elements_.change(id).setName(name);
        tree(storage).insert(id);
        commit(from == storage ? storage : rootId, false);
    });
}

void Directory::unlink(Id id) {
    const auto storage = storageOf(id);
    fix(storage);
    change([&] {
        tree(storage).erase(id);
        elements_.change(id).up = noElement;
        commit(storage, false);
    });
}

// A family is listed from the top, so that it needs no more memory than the list.
std::vector<Id> Directory::family(Id id) {
    std::vector<Id> ids{id};
    for (std::size_t i = 0; i < ids.size(); ++i) {
        if (!elements_[ids[i]].isStorage()) continue;
        const auto children = tree(ids[i]);
        for (auto child = children.first(); child != noElement; child = children.next(child))
            ids.push_back(child);
    }
    return ids;
}

void Directory::discard(const std::vector<Id>& ids) {
    for (const auto id : ids) {
        entries_.leave(elements_[id].entry);
        elements_.drop(id);
    }
    entries_.clearLeft();
}

void Directory::update(Id id, const Element& changed) {
    entries_.write(changed);
    elements_[id] = changed;
}

// A tree whose shape in memory is not that on the device is written as a whole first.
void Directory::fix(Id storage) {
    if (!elements_[storage].loose) return;
    change([&] {
        elements_.change(storage).loose = false;
        const auto fixed = tree(storage);
        for (auto id = fixed.first(); id != noElement; id = fixed.next(id))
            elements_.change(id).black = true;
        commit(storage, true);
    });
}

}  // namespace compound
