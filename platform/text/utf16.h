// Conversions between UTF-16, as the machine keeps text, and the host's UTF-8.
//
// Host names survive both ways: a lone surrogate stands as its three bytes, and a host byte that is
// not valid UTF-8 stands as the surrogate U+DC00 + byte.
#pragma once

#include <string>
#include <string_view>

namespace machine {

std::string toUtf8(std::u16string_view text);
std::u16string fromUtf8(std::string_view text);

// Wide text of the interface, terminated; null counts as empty.
std::u16string fromWide(const wchar_t* text);
std::string toUtf8(const wchar_t* text);

}  // namespace machine
