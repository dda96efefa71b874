// The pieces of a path's text: separators, drives, components and the names of devices.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace machine {

using Components = std::vector<std::u16string>;

bool isSeparator(char16_t character);

// "X:", whatever follows.
bool beginsWithDrive(std::u16string_view text);

// The parts of a share's root; empty where the text ends before them.
struct ShareParts {
    std::u16string server{}, name{};
};

// Takes server and share off what follows the two first separators. They are names of their own,
// also where they look like "..": no step up leaves them. Dots and blanks at the end of the path do
// not count.
ShareParts takeShare(std::u16string_view& text);

// Adds a piece of a path to the components: "." stays where it is, and ".." goes up but never above
// the root. A single dot at the end of each name does not count, nor do dots and blanks at the end
// of the path. Gives whether the path then ends behind a separator.
bool addComponents(Components& components, std::u16string_view text);

// Adds a path that is taken as it stands, as behind "\\?\".
void addVerbatim(Components& components, std::u16string_view text);

// The device that a component stands for ("NUL" for "nul.txt"), as it is written; empty: none.
std::u16string deviceOf(std::u16string_view component);

bool isNullDevice(std::u16string_view component);

// The full form of a path, made from its text and the current directory alone: drives and shares
// need not exist, and names are not checked. Empty: the text is, or it is longer than any path, or
// there is no current directory any more.
std::u16string fullPathOf(std::u16string_view text);

}  // namespace machine
