// Copying files.
#pragma once

#include <string>

#include "names/lookup.h"
#include "windef.h"

namespace machine {

// Both give 0 or the error's code.

// Copies a file to a name that may exist. A target that exists is refused with ERROR_FILE_EXISTS
// where the call asks for that, and always when it guards itself by attributes or open handles.
DWORD copyFile(const Path& source, const Path& target, bool failIfExists);

// A copy of the file's content, times, permissions and stored attributes, made beside the target
// and put in its place in one step, so that a failure leaves the old target. With `replace` false,
// a target that exists is refused with ERROR_FILE_EXISTS.
DWORD copyHostFile(const HostName& from, const std::string& to, bool replace);

}  // namespace machine
