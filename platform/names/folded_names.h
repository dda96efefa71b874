// The host's names of one folder, found without regard to case and by their short form.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace machine {

// Equal for names that differ by case alone. The seed makes another function of it.
std::uint64_t foldedHash(std::u16string_view name, std::uint64_t seed = 0);

// Whatever needs memory may throw std::bad_alloc; what was there before is there still.
class FoldedNames {
  public:
    // The seed is to be unknown to those who choose the names, so that they cannot choose names
    // that are all in one place of the table.
    explicit FoldedNames(std::uint64_t seed) : seed_(seed) {}

    void add(std::string_view host);  // a name that is there already stays once
    void remove(std::string_view host);

    // The host's name that equals the component but for case, the very same one first, or else the
    // one whose short form does; null: there is none. It lasts until the next change.
    const std::string* find(std::u16string_view component);

    // Bytes, somewhat more than less.
    std::size_t memory() const { return memory_; }

  private:
    using Table = std::unordered_multimap<std::uint64_t, std::string>;

    std::uint64_t hashOf(std::u16string_view name) const { return foldedHash(name, seed_); }
    void addTo(Table& table, std::u16string_view folded, std::string_view host);
    void removeFrom(Table& table, std::u16string_view folded, std::string_view host);
    void addShortForm(std::string_view host);
    void makeShortForms();

    std::uint64_t seed_;
    Table names_{};
    Table shortForms_{};  // only of names that are not their own short form
    bool hasShortForms_ = false;
    std::size_t memory_ = 0;
};

}  // namespace machine
