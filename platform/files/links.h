// Links between directories: symbolic links of the host, shown as mount points.
#pragma once

#include <sys/stat.h>

#include <string>

#include "windef.h"

namespace machine {

// Whether the name, whose status was found through the link, is that of a link to a directory. A
// link to nothing counts as one when its text is an absolute path.
bool isDirectoryLink(const std::string& path, const struct stat& status);

// Puts a link to the target in the place of an empty directory, or of another link. Whoever looks
// finds the one or the other; after a failure the directory is as it was. The result is 0 or the
// error's code.
DWORD placeDirectoryLink(const std::string& path, const std::string& target);

}  // namespace machine
