// Host names in tables by the hash of their folded form.
#include "names/folded_names.h"

#include <algorithm>

#include "names/short_names.h"
#include "text/case_mapping.h"
#include "text/utf16.h"

namespace machine {

namespace {

// A node of the table with its text, and the table's own share of it.
std::size_t memoryOf(std::string_view host) {
    constexpr std::size_t node = 96;
    return node + host.size();
}

}  // namespace

std::uint64_t foldedHash(std::u16string_view name, std::uint64_t seed) {
    constexpr std::uint64_t start = 0x9E3779B97F4A7C15, factor = 0xD6E8FEB86659FD93;
    std::uint64_t hash = start ^ seed;
    for (const char16_t character : name) {
        hash = (hash ^ upperCase(character)) * factor;
        hash ^= hash >> 32;
    }
    return hash;
}

void FoldedNames::addTo(Table& table, std::u16string_view folded, std::string_view host) {
    const auto hash = hashOf(folded);
    const auto [first, last] = table.equal_range(hash);
    if (std::any_of(first, last, [&](const auto& entry) { return entry.second == host; })) return;
    table.emplace(hash, host);
    memory_ += memoryOf(host);
}

void FoldedNames::removeFrom(Table& table, std::u16string_view folded, std::string_view host) {
    const auto [first, last] = table.equal_range(hashOf(folded));
    const auto found =
        std::find_if(first, last, [&](const auto& entry) { return entry.second == host; });
    if (found == last) return;
    table.erase(found);
    memory_ -= memoryOf(host);
}

void FoldedNames::addShortForm(std::string_view host) {
    const auto name = fromUtf8(host), shortName = shortNameOf(name);
    if (shortName != name) addTo(shortForms_, shortName, host);
}

void FoldedNames::makeShortForms() {
    for (const auto& entry : names_) addShortForm(entry.second);
    hasShortForms_ = true;
}

void FoldedNames::add(std::string_view host) {
    addTo(names_, fromUtf8(host), host);
    if (hasShortForms_) addShortForm(host);
}

void FoldedNames::remove(std::string_view host) {
    const auto name = fromUtf8(host);
    removeFrom(names_, name, host);
    if (hasShortForms_) removeFrom(shortForms_, shortNameOf(name), host);
}

const std::string* FoldedNames::find(std::u16string_view component) {
    const auto exact = toUtf8(component);
    const std::string* found = nullptr;
    const auto [first, last] = names_.equal_range(hashOf(component));
    for (auto entry = first; entry != last; ++entry) {
        if (entry->second == exact) return &entry->second;
        if (equalIgnoringCase(fromUtf8(entry->second), component)) found = &entry->second;
    }
    if (found != nullptr || component.find(u'~') == std::u16string_view::npos) return found;
    if (!hasShortForms_) makeShortForms();
    const auto [firstShort, lastShort] = shortForms_.equal_range(hashOf(component));
    for (auto entry = firstShort; entry != lastShort; ++entry) {
        if (equalIgnoringCase(shortNameOf(fromUtf8(entry->second)), component)) {
            return &entry->second;
        }
    }
    return nullptr;
}

}  // namespace machine
