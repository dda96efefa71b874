// The elements of a compound file as they are in memory, and what undoes a change of them.
#pragma once

#include <array>
#include <deque>
#include <string_view>
#include <vector>

#include "compound/format.h"

namespace compound {

/// The place of an element in memory; it stays the same while the element exists.
using Id = std::uint32_t;
constexpr Id noElement = noStream, rootId = 0;

enum class Kind : std::uint8_t { none = 0, storage = 1, stream = 2, root = 5 };

/// An element. Its links make the tree of its storage: `left` and `right` lead to siblings, `child` of
/// a storage to the top of its own tree, `up` to the element that leads here.
struct Element {
    std::array<char16_t, 31> units{};
    std::uint8_t length = 0;  // of the name
    Kind kind = Kind::none;
    bool black = true;
    std::uint8_t height = 1;  // of the subtree of siblings, 1 without any
    bool remembered = false;  // its state before the change is known
    bool loose = false;       // a storage whose tree on the device has another shape
    bool placed = false;      // it has an entry on the device
    bool moving = false;      // it is to get another entry
    Id left = noElement, right = noElement, child = noElement, up = noElement;
    std::uint32_t entry = 0;         // its number in the directory
    std::uint32_t generation = 0;    // counts the elements that had this place
    std::uint32_t chainVersion = 0;  // counts the changes of the chain that are more than appending
    std::uint32_t children = 0;      // in the tree of a storage
    std::array<std::byte, 16> classId{};
    std::uint32_t stateBits = 0;
    Sector start = endOfChain;
    std::uint64_t created = 0, modified = 0;
    std::uint64_t size = 0;

    std::u16string_view name() const { return {units.data(), length}; }
    void setName(std::u16string_view name);
    bool isStorage() const { return kind == Kind::storage || kind == Kind::root; }
};

/// The elements, with the state before the change that is under way.
class Elements {
  public:
    const Element& operator[](Id id) const { return elements_[id]; }
    Element& operator[](Id id) { return elements_[id]; }
    Id count() const { return static_cast<Id>(elements_.size()); }

    Id add();
    void drop(Id id);

    /// The element, to be changed: `undo` brings it back as it is now.
    Element& change(Id id);
    struct Before {
        Id id;
        Element element;
    };
    const std::vector<Before>& changed() const { return before_; }
    void undo();
    void keep();
    /// Changes that are made while loading need no undoing.
    void record(bool recording) { recording_ = recording; }

    void replaceLink(Id from, Id old, Id link);
    void setLeft(Id id, Id link);
    void setRight(Id id, Id link);
    void setChild(Id id, Id link);

  private:
    void attach(Id link, Id up);

    std::deque<Element> elements_;
    std::vector<Id> unused_;
    std::vector<Before> before_;
    bool recording_ = true;
};

}  // namespace compound
