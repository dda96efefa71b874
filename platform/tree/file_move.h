// Moving and renaming files and directories.
#pragma once

#include "names/paths.h"
#include "windef.h"

namespace machine {

// Moves a file, to another drive too, or a directory on its drive. What exists is never replaced.
// 0 or the error's code.
DWORD moveFile(const Path& source, const Path& target);

}  // namespace machine
