// Names of elements: which are allowed, and their order.
#include "compound/names.h"

namespace compound {
namespace {

constexpr std::size_t longestName = 31;

constexpr bool within(char16_t unit, char16_t first, char16_t last) {
    return first <= unit && unit <= last;
}

// Blocks in which an upper-case letter has an even or odd number, and its lower case the next one.
char16_t upperOfPair(char16_t unit) {
    const bool oddIsLower = within(unit, 0x100, 0x137) || within(unit, 0x14A, 0x177) ||
                            within(unit, 0x460, 0x481) || within(unit, 0x48A, 0x4BF) ||
                            within(unit, 0x4D0, 0x52F) || within(unit, 0x1E00, 0x1E95) ||
                            within(unit, 0x1EA0, 0x1EFF);
    if (oddIsLower && unit != 0x131) return static_cast<char16_t>(unit & ~1);
    const bool evenIsLower = within(unit, 0x139, 0x148) || within(unit, 0x179, 0x17E);
    if (evenIsLower && unit % 2 == 0) return static_cast<char16_t>(unit - 1);
    return unit;
}

}  // namespace

char16_t simpleUpperCase(char16_t unit) {
    if (unit < 0x80) return within(unit, u'a', u'z') ? static_cast<char16_t>(unit - 32) : unit;
    const bool latin = within(unit, 0xE0, 0xFE) && unit != 0xF7;
    const bool greek = within(unit, 0x3B1, 0x3CB) && unit != 0x3C2;
    const bool cyrillic = within(unit, 0x430, 0x44F);
    if (latin || greek || cyrillic) return static_cast<char16_t>(unit - 32);
    if (unit == 0xFF) return 0x178;
    if (within(unit, 0x450, 0x45F)) return static_cast<char16_t>(unit - 80);
    return upperOfPair(unit);
}

bool isValidName(std::u16string_view name) {
    using namespace std::string_view_literals;
    return !name.empty() && name.size() <= longestName &&
           name.find_first_of(u"/\\:!\0"sv) == name.npos;
}

std::strong_ordering compareNames(std::u16string_view left, std::u16string_view right,
                                  UpperCase upper) {
    if (left.size() != right.size()) return left.size() <=> right.size();
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (left[i] == right[i]) continue;
        const auto order = upper(left[i]) <=> upper(right[i]);
        if (order != 0) return order;
    }
    return std::strong_ordering::equal;
}

}  // namespace compound
