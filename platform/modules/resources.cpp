// Lookups of resources by language, and what string tables and message tables hold.
#include "modules/resources.h"

#include <algorithm>

#include "core/ansi.h"
#include "text/case_mapping.h"
#include "winerror.h"

namespace machine {

namespace {

constexpr WORD stringTableType = 6;
constexpr WORD messageTableType = 11;

constexpr LANGID userLanguage = 0x0409;  // English, United States
constexpr LANGID primaryMask = 0x03FF;

// Characters from the start of the bytes, at most `count`.
std::u16string characters(const CheckedBytes& bytes, std::size_t offset, std::size_t count) {
    const auto span = bytes.part(offset, count * sizeof(char16_t)).span();
    std::u16string text(span.size() / sizeof(char16_t), u'\0');
    std::memcpy(text.data(), span.data(), text.size() * sizeof(char16_t));
    return text;
}

// The text of an entry of a message table, which ends at its first 0 or with the entry.
std::u16string messageText(const CheckedBytes& entry, bool isWide) {
    constexpr std::size_t header = 4;
    if (isWide) {
        const auto text = characters(entry, header, (entry.size() - header) / sizeof(char16_t));
        return text.substr(0, text.find(u'\0'));
    }
    const auto span = entry.span().subspan(header);
    const std::string_view text(reinterpret_cast<const char*>(span.data()), span.size());
    return fromAnsi(text.substr(0, text.find('\0')));
}

// The entries of a block follow each other, each with its own length. The text of the one that is
// `index` places after the first; empty: the block is broken before it.
std::u16string messageInBlock(const CheckedBytes& table, std::uint64_t offset, DWORD index) {
    constexpr WORD wideText = 1;
    for (;; --index) {
        const auto length = table.word(offset);
        const auto flags = table.word(offset + 2);
        if (!length || !flags || *length < 4) return {};
        if (index == 0) return messageText(table.part(offset, *length), (*flags & wideText) != 0);
        offset += *length;
    }
}

}  // namespace

ResourceName::ResourceName(std::u16string_view text) : upperCase_(upperCase(text)) {}

bool ResourceName::isText(std::u16string_view text) const {
    return !id_ && text.size() == upperCase_.size() && upperCase(text) == upperCase_;
}

FoundResource NoResources::find(const ResourceName&, const ResourceName&, LANGID) const {
    return {nullptr, ERROR_RESOURCE_DATA_NOT_FOUND};
}

std::optional<CheckedBytes> NoResources::bytes(const void*) const {
    return std::nullopt;
}

LanguageChoice::LanguageChoice(LANGID wanted)
    : order_{wanted, wanted, wanted},
      anyWillDo_((wanted & primaryMask) == 0),
      bestRank_(order_.size() + 1) {
    if (anyWillDo_) order_ = {0, userLanguage, userLanguage & primaryMask};
}

void LanguageChoice::offer(LANGID language, const void* record) {
    const auto rank =
        static_cast<std::size_t>(std::ranges::find(order_, language) - order_.begin());
    if (rank >= bestRank_ || (rank == order_.size() && !anyWillDo_)) return;
    bestRank_ = rank;
    best_ = record;
}

// A string table holds blocks of 16 strings, each with its length before it; the block's name is
// the number of the block, beginning with 1.
std::u16string resourceString(const Resources& resources, WORD id, DWORD& error) {
    const auto block = static_cast<WORD>(id / 16 + 1);
    const auto found = resources.find(ResourceName(stringTableType), ResourceName(block), 0);
    error = found.error;
    const auto bytes = resources.bytes(found.record);
    if (!bytes) return {};
    error = ERROR_RESOURCE_NAME_NOT_FOUND;
    std::uint64_t offset = 0;
    for (unsigned place = 0;; ++place) {
        const auto length = bytes->word(offset);
        if (!length) return {};
        offset += sizeof *length;
        if (place == id % 16) return characters(*bytes, offset, *length);
        offset += *length * sizeof(char16_t);
    }
}

// A message table holds ranges of numbers, each with the place of its first entry.
std::u16string resourceMessage(const Resources& resources, DWORD id, LANGID language) {
    struct Range {
        DWORD first, last, entries;
    };
    const auto found = resources.find(ResourceName(messageTableType), ResourceName(1), language);
    const auto table = resources.bytes(found.record);
    if (!table) return {};
    const auto ranges = table->dword(0).value_or(0);
    for (std::uint64_t at = 0; at < ranges; ++at) {
        const auto range = table->read<Range>(sizeof(DWORD) + at * sizeof(Range));
        if (!range) return {};
        if (id < range->first || id > range->last) continue;
        return messageInBlock(*table, range->entries, id - range->first);
    }
    return {};
}

}  // namespace machine
