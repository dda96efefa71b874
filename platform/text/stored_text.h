// Texts as results of the operations on paths.
#pragma once

#include <algorithm>

#include "windef.h"

namespace machine {

// Stores the text when it fits, and gives its length without the terminator; else nothing is
// stored, and the result is the room that it needs with it.
template <class Text, class Character>
DWORD deliver(const Text& text, Character* buffer, DWORD size) {
    const auto length = static_cast<DWORD>(text.size());
    if (length >= size) return length + 1;
    std::copy(text.begin(), text.end(), buffer);
    buffer[length] = 0;
    return length;
}

}  // namespace machine
