// Names that are about to be made, kept from all others who would make them at the same moment.
//
// Each folded name of a folder has one byte far behind the end of the folder's file. Who is about to
// make a name places a read lock on its byte and looks whether anyone else has one there; of two
// who do so, at least one sees the other. The locks hold between threads and processes, and end
// with the process. File systems without such locks, and folders that cannot be read, keep no
// names.
#pragma once

#include <sys/types.h>

#include <string_view>

#include "host/descriptor.h"

namespace machine {

class NameLock {
  public:
    NameLock() = default;
    ~NameLock() { release(); }
    NameLock(const NameLock&) = delete;
    NameLock& operator=(const NameLock&) = delete;

    // Waits until nobody else has the name, in whatever case, for two seconds at most: a process
    // that is stopped in the middle does not stop all others for ever.
    void take(Descriptor folder, std::u16string_view name);
    void release();

  private:
    Descriptor folder_{};  // empty: no name is kept
    off_t byte_ = 0;
};

}  // namespace machine
