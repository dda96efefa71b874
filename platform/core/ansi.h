// Text in the machine's code page, as callers of the ANSI operations give and get it.
#pragma once

#include <string>
#include <string_view>

namespace machine {

std::u16string fromAnsi(std::string_view text);
// What the code page lacks becomes its replacement character.
std::string toAnsi(std::u16string_view text);

}  // namespace machine
