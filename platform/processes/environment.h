// The environment of the process, in the text of the machine's code page.
#pragma once

#include <optional>
#include <string>

namespace machine {

std::optional<std::string> environmentVariable(const std::string& name);

// No value: the variable is taken away. False: the name is empty or there is no memory.
bool setEnvironmentVariable(const std::string& name, const std::optional<std::string>& value);

}  // namespace machine
