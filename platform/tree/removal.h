// Removing files and directories.
#pragma once

#include "names/lookup.h"
#include "windef.h"

namespace machine {

// Each gives 0 or the error's code. A read-only file or directory stays, and so does a file that
// somebody has open without sharing its deletion.
DWORD removeFile(const HostName& found);

// Of a link to a directory, the link goes and the target stays.
DWORD removeDirectory(const HostName& found);

}  // namespace machine
