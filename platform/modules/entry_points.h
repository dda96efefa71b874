// The entry points that the system's modules offer to a lookup by name.
#pragma once

#include <string_view>

#include "windef.h"

namespace machine {

bool isSystemModule(std::string_view name);
FARPROC systemEntryPoint(std::string_view module, std::string_view name);

}  // namespace machine
