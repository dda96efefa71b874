// The report of a reduced traverse as lines of text.
#pragma once

#include <string>
#include <vector>

#include "traverse.h"

namespace fieldbook {

using Lines = std::vector<std::string>;

// Angles in the book's unit: degrees, minutes, and seconds with two decimals, or gons with five.
// Lengths in metres with three. What is shown is rounded in whole units of the last digit, so that
// every build gives the same text.
Lines reportLines(const std::string& bookName, const Book& book, const Traverse& traverse);

// "packed degrees" or "gons".
std::string unitName(Unit unit);

}  // namespace fieldbook
