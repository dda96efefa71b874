// The first match of a search.
#pragma once

#include <windows.h>

#include <optional>

/// The attributes of the first thing that a name finds; nothing, with the last error set, when it
/// finds none. The search is closed.
std::optional<DWORD> attributesOfFirstMatch(const char* name);
