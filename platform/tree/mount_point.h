// Mount points, as control codes of file systems set them.
#pragma once

#include <cstddef>

#include "files/file_object.h"
#include "windef.h"

namespace machine {

// Makes the open directory a link to the directory that a REPARSE_DATA_BUFFER names, which may be
// missing. Every offset and length of the buffer is checked. 0 or the error's code.
DWORD setMountPoint(const FileObject& file, const char* bytes, std::size_t size);

}  // namespace machine
