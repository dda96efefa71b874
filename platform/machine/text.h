// Text of the machine: UTF-16 inside, UTF-8 on the host, and the machine's code page for callers.
//
// Host names survive both ways: a lone surrogate stands as its three bytes, and a host byte that is
// not valid UTF-8 stands as the surrogate U+DC00 + byte.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace machine {

std::string toUtf8(std::u16string_view text);
std::u16string fromUtf8(std::string_view text);

// Wide text of the interface, terminated; null counts as empty.
std::u16string fromWide(const wchar_t* text);
std::string toUtf8(const wchar_t* text);

// Text in the machine's code page; what cannot be told becomes the code page's replacement.
std::u16string fromAnsi(std::string_view text);
std::string toAnsi(std::u16string_view text);

// Simple case mapping: one character to one character, of the scripts that have case.
char16_t upperCase(char16_t character);
std::u16string upperCase(std::u16string_view text);
bool equalIgnoringCase(std::u16string_view left, std::u16string_view right);

}  // namespace machine
