// Names of elements: which are allowed, and their order.
#pragma once

#include <compare>
#include <string_view>

namespace compound {

/// Maps a UTF-16 unit to its upper case, one to one.
using UpperCase = char16_t (*)(char16_t);

/// The upper case of Latin, Greek and Cyrillic letters; units without a simple one stay.
char16_t simpleUpperCase(char16_t unit);

/// 1 to 31 units, none of them / \ : ! or zero.
bool isValidName(std::u16string_view name);

/// The order of a directory: by length first, then by upper case, unit by unit.
std::strong_ordering compareNames(std::u16string_view left, std::u16string_view right,
                                  UpperCase upper);

}  // namespace compound
