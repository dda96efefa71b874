// The calls that a script has recorded, as one text.
#pragma once

#include <string>

#include "machine/testing.h"

// Each call with a blank behind it; conversions of names are left out.
inline std::string callsOf(const machine::Script& script) {
    std::string result;
    for (const auto& text : script.texts()) {
        if (!text.starts_with("MultiByte") && !text.starts_with("lstrlen")) result += text + " ";
    }
    return result;
}
