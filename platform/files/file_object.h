// An open file or directory, as a handle holds it.
#pragma once

#include <unistd.h>

#include <atomic>
#include <string>
#include <utility>

#include "core/handles.h"
#include "files/sharing.h"
#include "host/descriptor.h"

namespace machine {

// The path that leads to an open file at this moment; empty: the host does not tell.
std::string presentPath(int file);

struct FileObject : HandleObject {
    FileObject(Descriptor file, SharingLocks ownLocks, bool mayRead, bool mayWrite)
        : descriptor(std::move(file)),
          locks(std::move(ownLocks)),
          canRead(mayRead),
          canWrite(mayWrite) {}
    ~FileObject() override;

    // The file ends with this handle, under whatever name it has then. What a fork has copied is no
    // handle: a child that ends it leaves the file to its parent.
    void removeOnClose(const std::string& path);

    const Descriptor descriptor;
    const SharingLocks locks;  // end before the descriptor
    const bool canRead, canWrite;
    // Whether mappings of the file use the same open of the host: they outlive the handle, and what
    // the handle denies to others ends with it.
    std::atomic<bool> isMapped{false};

  private:
    std::string pathToRemove_;  // the name at the opening; empty: the file stays
    pid_t process_ = 0;         // whose handle it is
};

}  // namespace machine
