// The directory: the elements, their trees, and changes of them that take place as a whole.
#pragma once

#include "compound/entries.h"
#include "compound/tree.h"

namespace compound {

/// The directory in memory and on the device. A change of trees is first made in memory and then
/// written so that one write makes it count; when that fails, memory is as before.
class Directory {
  public:
    Directory(Medium& medium, Header& header, SectorSpace& space, UpperCase upper);

    /// Reads the directory; throws `corrupt` when its links contradict each other.
    void load();

    const Elements& elements() const { return elements_; }
    const Element& operator[](Id id) const { return elements_[id]; }
    const Entries& entries() const { return entries_; }
    Tree tree(Id storage) { return {elements_, storage, upper_}; }
    Id storageOf(Id id) const;

    Id create(Id storage, Kind kind, std::u16string_view name, std::uint64_t time);
    void rename(Id id, std::u16string_view name) { move(id, storageOf(id), name); }
    void move(Id id, Id storage, std::u16string_view name);
    /// Takes an element and all below it out of its storage. They keep their places in memory.
    void unlink(Id id);
    /// Forgets elements that were taken out.
    void discard(const std::vector<Id>& ids);
    /// An element and all below it.
    std::vector<Id> family(Id id);

    /// Writes an element with other properties. Links and name stay.
    void update(Id id, const Element& changed);
    /// Notes that an element's chain is not what it was.
    void chainChanged(Id id) { ++elements_[id].chainVersion; }
    /// Clears the entries that elements have left.
    void clearLeft() { entries_.clearLeft(); }

  private:
    void readTree(Id storage, std::vector<Id>& storages);
    void claim(Id id, Id up);
    void measureAll(Id id);
    void loosen(Id storage, std::vector<Id>& ordered);
    void fix(Id storage);

    template <class Step>
    void change(const Step& step);
    /// Elements whose entries are to be written: those that have one, and new ones.
    struct Changed {
        std::vector<Id> existing, fresh;
    };
    Changed changedElements(bool everything);
    void blackenTops();
    void place(Id id);
    void commit(Id top, bool everything);
    std::uint32_t depthBelow(Id top, Id id) const;
    Id commonAncestor(const std::vector<Id>& ids, Id top) const;
    /// How a change is written: elements that get new entries, those whose entries are written
    /// before the change counts, and those that are written to make it count.
    struct Plan {
        std::vector<Id> moved, before, together;
    };
    Plan planOf(Id ancestor, const Changed& changed);

    Medium& medium_;
    Elements elements_;
    Entries entries_;
    UpperCase upper_;
    std::vector<std::uint32_t> taken_;  // entries that a change has placed elements in
};

}  // namespace compound
