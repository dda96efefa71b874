// Short names of the form 8.3.
#include "names/short_names.h"

#include <algorithm>
#include <cstdint>

#include "names/path_pieces.h"
#include "text/case_mapping.h"
#include "text/character_set.h"

namespace machine {

namespace {

bool isShortCharacter(char16_t character) {
    constexpr auto refused = CharacterSet(u" .\"/\\[]:;|=,+*?<>\x7F").withControls();
    return character < 0x80 && !refused.holds(character);
}

bool isShortPart(std::u16string_view part, std::size_t longest) {
    return part.size() <= longest && std::all_of(part.begin(), part.end(), isShortCharacter);
}

// FNV-1a, 32 bits.
std::uint32_t hashOf(std::u16string_view name) {
    std::uint32_t hash = 2166136261U;
    for (const char16_t character : name) {
        const std::uint32_t unit = upperCase(character);
        hash = (hash ^ (unit & 0xFF)) * 16777619U;
        hash = (hash ^ (unit >> 8)) * 16777619U;
    }
    return hash;
}

std::u16string shortCharacters(std::u16string_view text, std::size_t most) {
    std::u16string result;
    for (const char16_t character : text) {
        if (result.size() < most && isShortCharacter(character)) result += upperCase(character);
    }
    return result;
}

// Whether a surrogate stands alone in the name: a byte of the host that is not UTF-8.
bool hasLoneSurrogate(std::u16string_view name) {
    for (std::size_t i = 0; i < name.size(); ++i) {
        const auto kind = name[i] & 0xFC00;
        const bool isPair =
            kind == 0xD800 && i + 1 < name.size() && (name[i + 1] & 0xFC00) == 0xDC00;
        if (isPair) {
            ++i;
        } else if (kind == 0xD800 || kind == 0xDC00) {
            return true;
        }
    }
    return false;
}

// Whether the interface can have the host's name, and it leads to this file alone.
bool canBeShown(std::u16string_view name) {
    constexpr auto refused = CharacterSet(u"<>:\"|?*\\/").withControls();
    const bool hasRefused = std::any_of(
        name.begin(), name.end(), [&](char16_t character) { return refused.holds(character); });
    return !hasRefused && name.size() <= longestName && !name.ends_with(u'.') &&
           !name.ends_with(u' ') && deviceOf(name).empty() && !hasLoneSurrogate(name);
}

}  // namespace

bool isShortForm(std::u16string_view name) {
    if (name == u"." || name == u"..") return true;
    const auto dot = name.find(u'.');
    const auto base = name.substr(0, dot);
    const bool hasExtension = dot != std::u16string_view::npos;
    const auto extension = hasExtension ? name.substr(dot + 1) : std::u16string_view();
    return !base.empty() && isShortPart(base, 8) && isShortPart(extension, 3) &&
           hasExtension != extension.empty() && deviceOf(name).empty();
}

std::u16string shortNameOf(std::u16string_view name) {
    if (isShortForm(name)) return std::u16string(name);
    constexpr std::u16string_view digits = u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    const auto dot = name.rfind(u'.');
    auto result = shortCharacters(name.substr(0, dot), 2);
    auto hash = hashOf(name);
    for (int i = 0; i < 4; ++i, hash /= 36) result += digits[hash % 36];
    result += u'~';
    result += digits[1 + hash % 9];
    if (dot == std::u16string_view::npos) return result;
    const auto extension = shortCharacters(name.substr(dot + 1), 3);
    return extension.empty() ? result : result + u'.' + extension;
}

std::u16string shownName(std::u16string_view name) {
    const bool isStep = name == u"." || name == u"..";
    return isStep || canBeShown(name) ? std::u16string(name) : shortNameOf(name);
}

}  // namespace machine
