// The texts of the system's error codes.
#pragma once

#include <string_view>

#include "windef.h"

// The text of the code, with its line end; empty when there is none.
std::string_view systemMessage(DWORD code);
