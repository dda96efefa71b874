// Opening and creating files.
#pragma once

#include <memory>

#include "files/file_object.h"
#include "names/paths.h"
#include "windef.h"

namespace machine {

// The arguments of CreateFileW that decide.
struct OpenRequest {
    DWORD access, share, disposition, flags;
};

// Without a file, the code says why. With one, it is ERROR_ALREADY_EXISTS where the request would
// have made the file, or 0.
struct OpenedFile {
    std::unique_ptr<FileObject> file;
    DWORD code;
};

OpenedFile openFile(const Path& path, const OpenRequest& request);

}  // namespace machine
