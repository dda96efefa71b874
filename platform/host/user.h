// Who runs the process.
#pragma once

#include <string>

namespace machine {

// UTF-8; the host's number where it has no name.
std::string userName();

// The folder that the host keeps for the user; empty where it knows none.
std::string userFolder();

}  // namespace machine
