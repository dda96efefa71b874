// Simple case mapping: one character to one character, of the scripts that have case.
#pragma once

#include <string>
#include <string_view>

namespace machine {

char16_t upperCase(char16_t character);
std::u16string upperCase(std::u16string_view text);
bool equalIgnoringCase(std::u16string_view left, std::u16string_view right);

}  // namespace machine
