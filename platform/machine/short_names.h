// Short names of the form 8.3, made from the long name alone.
//
// A name that has the form already is its own short name. Any other gets two of its characters,
// four of a hash of the whole name in upper case, "~" and a digit of the hash, and up to three
// characters of its extension. Two names of one folder with the same short name (one in some ten
// million pairs that begin and end alike) share it: the first one found is opened by it.
#pragma once

#include <string>
#include <string_view>

namespace machine {

bool isShortForm(std::u16string_view name);

// In upper case only where it was made up; a name that is its own short name stays as it is.
std::u16string shortNameOf(std::u16string_view name);

}  // namespace machine
