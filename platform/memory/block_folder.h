// The folder that holds the named blocks of a user.
//
// It is "jw32" in the user's runtime folder: that of XDG_RUNTIME_DIR, else the one in /run/user.
// Where neither belongs to the user alone or can hold shared memory, it lies in /dev/shm, as
// "jw32-UID" or, while somebody else has that name, with a number behind it.
#pragma once

#include <string>

#include "files/file_object.h"
#include "host/descriptor.h"

namespace machine {

// The folder, found or made. A process keeps to one folder for as long as it can be opened.
std::string blockFolder();

// Makes the folder when it is missing. Empty, with errno set: it cannot be had, or it is open to
// anybody else.
Descriptor openBlockFolder(const std::string& path);

}  // namespace machine
