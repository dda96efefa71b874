// Reading UTF-8 one character at a time (RFC 3629).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace machine {

struct Utf8Character {
    std::uint32_t codePoint;
    std::size_t length;  // bytes; 0: the text does not begin with a valid character
};

// The first character of a text that is not empty. Overlong forms, surrogates and values beyond
// U+10FFFF are not valid.
Utf8Character firstUtf8Character(std::string_view text);

}  // namespace machine
