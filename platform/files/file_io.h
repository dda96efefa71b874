// Reading from and writing to open files of the host.
#pragma once

#include "windef.h"

namespace machine {

// Reads up to `count` bytes. The result is 0 or the error's code; an error after the first bytes
// shows at the next call.
DWORD readBytes(int file, char* target, DWORD count, DWORD& moved);

// Writes all or fails, as files on a disk do. The position is then where it was; bytes that had room
// may remain in the file. A pipe has no position, and what it took is reported.
DWORD writeBytes(int file, const char* source, DWORD count, DWORD& moved);

}  // namespace machine
