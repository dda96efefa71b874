// The part of a temporary file's name that nobody can guess.
#pragma once

#include <string>
#include <string_view>

namespace machine {

// Thirteen letters and digits by chance, 64 bits of it; two calls never meet in practice. Empty: the
// host has no random numbers.
std::string newTemporaryName();

// Whether the name ends in one of the last 1,024 that this process was given: its file is to be the
// user's alone.
bool isTemporaryName(std::string_view name);

}  // namespace machine
