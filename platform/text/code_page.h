// The code pages that the machine can have: UTF-8, 1252 and 932.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace machine {

inline constexpr std::uint32_t utf8CodePage = 65001;

bool isCodePage(std::uint32_t codePage);

// The number of bytes of the text's first character; the text is not empty. A byte that opens no
// valid character counts as one, and so does a lead byte in front of the terminator.
std::size_t firstCharacterLength(std::uint32_t codePage, std::string_view text);

// What is not valid becomes U+FFFD, or in code page 932 U+30FB.
std::u16string decode(std::uint32_t codePage, std::string_view text);

struct Encoded {
    std::string text;
    bool replaced = false;  // whether the substitute stands in the text
};
// The substitute takes the place of what the code page lacks; half a pair becomes U+FFFD in UTF-8.
Encoded encode(std::uint32_t codePage, std::u16string_view text, std::string_view substitute = "?");

}  // namespace machine
