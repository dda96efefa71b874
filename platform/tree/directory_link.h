// Links between directories: symbolic links of the host, shown as mount points.
#pragma once

#include <string>

#include "windef.h"

namespace machine {

// Puts a link to the target in the place of an empty directory, or of another link. Whoever looks
// finds the one or the other; after a failure the directory is as it was. The result is 0 or the
// error's code.
DWORD placeDirectoryLink(const std::string& path, const std::string& target);

}  // namespace machine
