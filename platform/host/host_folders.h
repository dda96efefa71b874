// Folders of the host: made, and brought to the one path that has no links in it.
#pragma once

#include <string>

namespace machine {

// Makes the folder and those above it that are missing. What cannot be made is missing afterwards.
void makeHostFolders(const std::string& path);

// The path without links, "." and "..", without a last slash unless it is "/". What does not exist
// stays as it is written. A relative path counts from the current directory of the process. Empty:
// the path is, or it is relative and there is no current directory any more.
std::string canonicalHostPath(const std::string& path);

// The current directory of the process; empty: it was removed, or lies out of reach.
std::string currentHostFolder();

}  // namespace machine
