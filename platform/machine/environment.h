// The environment of the process, in the text of the machine's code page. Threads may change and
// read it through these at the same time.
#pragma once

#include <optional>
#include <string>

namespace machine {

// The variable as the host has it, in no code page.
std::optional<std::string> hostVariable(const std::string& name);

std::optional<std::string> environmentVariable(const std::string& name);

// No value: the variable is taken away. False: the name is empty or there is no memory.
bool setEnvironmentVariable(const std::string& name, const std::optional<std::string>& value);

}  // namespace machine
