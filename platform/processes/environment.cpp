// The environment of the process, in the text of the machine's code page.
#include "processes/environment.h"

#include "core/ansi.h"
#include "host/host_variables.h"
#include "text/utf16.h"

namespace machine {

std::optional<std::string> environmentVariable(const std::string& name) {
    const auto value = hostVariable(name);
    return value ? std::optional(toAnsi(fromUtf8(*value))) : std::nullopt;
}

bool setEnvironmentVariable(const std::string& name, const std::optional<std::string>& value) {
    return setHostVariable(name, value ? std::optional(toUtf8(fromAnsi(*value))) : std::nullopt);
}

}  // namespace machine
