// Short names of the form 8.3, made from the long name alone.
//
// A name that has the form already is its own short name. Any other gets two of its characters,
// four of a hash of the whole name in upper case, "~" and a digit of the hash, and up to three
// characters of its extension. Two names of one folder with the same short name (one in some ten
// million pairs that begin and end alike) share it: the first one found is opened by it.
//
// The host allows names that the interface does not: with a backslash, a colon or a wildcard, with
// a dot or a blank at the end, of a device, or in no UTF-8. They are shown by their short names
// alone, which lead to them, since their own would lead elsewhere or nowhere.
#pragma once

#include <string>
#include <string_view>

namespace machine {

inline constexpr std::size_t longestName = 255;

// A name of the host as the interface shows it: as it is, or its short name.
std::u16string shownName(std::u16string_view name);

// Whether the name is its own short name; that of a device is none.
bool isShortForm(std::u16string_view name);

// In upper case only where it was made up; a name that is its own short name stays as it is.
std::u16string shortNameOf(std::u16string_view name);

}  // namespace machine
