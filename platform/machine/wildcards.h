// Wildcards of searches.
#pragma once

#include <string_view>

namespace machine {

bool hasWildcards(std::u16string_view pattern);

// Without regard to case; "*" stands for any characters, "?" for one. "*.*" fits every name, and a
// pattern that ends in "." fits names without a dot.
bool fitsPattern(std::u16string_view name, std::u16string_view pattern);

}  // namespace machine
