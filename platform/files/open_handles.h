// What the open handles of a file allow others to do with it.
#pragma once

#include "files/sharing.h"
#include "names/lookup.h"
#include "windef.h"

namespace machine {

// Why the open handles of a file do not let it be used so; 0: they do. Where a lack of descriptors
// or memory keeps them from being asked, that is the answer.
DWORD objectionOfHandles(const HostName& name, const Sharing& sharing);

// The same for deleting and moving.
DWORD objectionToMoving(const HostName& name);

}  // namespace machine
