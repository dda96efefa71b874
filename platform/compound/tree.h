// The tree of a storage's elements: ordered by name, balanced by height.
#pragma once

#include "compound/elements.h"
#include "compound/names.h"

namespace compound {

/// The tree of one storage in memory. Heights of siblings' subtrees differ by one at most in trees
/// that were made here; trees of other programs may be less even, up to `mostHeight`. Every change
/// goes through `Elements::change`.
class Tree {
  public:
    Tree(Elements& elements, Id storage, UpperCase upper)
        : elements_(elements), storage_(storage), upper_(upper) {}

    Id find(std::u16string_view name) const;
    /// The first element whose name comes after this one, or `noElement`.
    Id following(std::u16string_view name) const;
    void insert(Id id);
    void erase(Id id);

    /// The first element in the order of the tree, and the one after another; or `noElement`.
    Id first() const;
    Id next(Id id) const;

    /// Makes a tree as low as can be of elements that are in order.
    void build(const std::vector<Id>& ordered);

    /// What the height of a tree must not exceed: 2 log2(count + 1).
    static int mostHeight(std::uint32_t count);
    int height() const { return heightOf(elements_[storage_].child); }

  private:
    int heightOf(Id id) const { return id == noElement ? 0 : elements_[id].height; }
    int lean(Id id) const { return heightOf(elements_[id].left) - heightOf(elements_[id].right); }
    bool measure(Id id);
    Id leftmost(Id id) const;
    Id buildPart(const std::vector<Id>& ordered, std::size_t begin, std::size_t end);
    Id rotateLeft(Id id);
    Id rotateRight(Id id);
    Id straighten(Id id);
    void straightenUp(Id id);
    void replaceBySuccessor(Id id);
    void keepLow();

    Elements& elements_;
    Id storage_;
    UpperCase upper_;
};

}  // namespace compound
