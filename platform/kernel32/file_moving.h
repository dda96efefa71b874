// What deleting, moving and copying share.
#pragma once

#include <string>

#include "machine/lookup.h"
#include "windef.h"

// Why the file may not be moved or deleted; 0: every open handle of it shares its deletion.
DWORD objectionToMove(const std::string& hostPath);

// A copy of the file's content, times, permissions and stored attributes, made beside the target
// and put in its place in one step, so that a failure leaves the old target. With `replace` false,
// a target that exists is refused with ERROR_FILE_EXISTS. 0 or the error's code.
DWORD copyHostFile(const machine::HostName& from, const std::string& to, bool replace);
