// Sharing modes of open files, between the processes of a host too.
//
// Each right that a handle uses and each right that it denies to others is a read lock on one byte
// far behind the end of the file, held by the open file description. The host gives the locks back
// when the handle's process ends, however it ends. File systems without such locks share
// everything.
#pragma once

#include "windef.h"

namespace machine {

struct Rights {
    bool read = false, write = false, remove = false;
};

struct Sharing {
    Rights uses, denies;
};

Sharing sharingOf(DWORD access, DWORD share);

// Places the locks. False: another handle stands against it; then none are left.
bool share(int file, const Sharing& sharing);

// Takes the locks of an open file away, from all descriptors of that open.
void unshare(int file);

// Whether the file could be opened with the sharing at this moment.
bool couldShare(int file, const Sharing& sharing);

}  // namespace machine
