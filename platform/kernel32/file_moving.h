// What deleting, moving and copying share.
#pragma once

#include <string>

#include "files/sharing.h"
#include "names/lookup.h"
#include "windef.h"

// Why the open handles of a file do not let it be used so; 0: they do. Where a lack of descriptors
// or memory keeps them from being asked, that is the answer.
DWORD objectionOfHandles(const machine::HostName& name, const machine::Sharing& sharing);

// The same for deleting and moving.
DWORD objectionToMoving(const machine::HostName& name);

// A copy of the file's content, times, permissions and stored attributes, made beside the target
// and put in its place in one step, so that a failure leaves the old target. With `replace` false,
// a target that exists is refused with ERROR_FILE_EXISTS. 0 or the error's code.
DWORD copyHostFile(const machine::HostName& from, const std::string& to, bool replace);
