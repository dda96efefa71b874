// The environment of the process. Threads may change and read it through these at the same time.
#pragma once

#include <optional>
#include <string>

namespace machine {

std::optional<std::string> hostVariable(const std::string& name);

// No value: the variable is taken away. False: the name is empty or there is no memory.
bool setHostVariable(const std::string& name, const std::optional<std::string>& value);

}  // namespace machine
