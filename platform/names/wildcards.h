// Wildcards of searches.
#pragma once

#include <string_view>

namespace machine {

bool hasWildcards(std::u16string_view pattern);

// Without regard to case; "*" stands for any characters, "?" for one, and ".*" also for nothing at
// the end of a name. A pattern that ends in "." fits names without a dot.
bool fitsPattern(std::u16string_view name, std::u16string_view pattern);

}  // namespace machine
