// The calls that a script has recorded, as one text.
#pragma once

#include <string>

#include "core/testing.h"

// Each call with a blank behind it: those among the names, or all but conversions of names.
inline std::string callsOf(const machine::Script& script, const std::string& names = "") {
    std::string result;
    for (const auto& call : script.calls()) {
        const bool converts = call.name == "MultiByteToWideChar" || call.name == "lstrlenA";
        const bool counts = names.empty() ? !converts : names.find(call.name) != names.npos;
        if (counts) result += call.text() + " ";
    }
    return result;
}
