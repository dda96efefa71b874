// What can be waited for, as WaitForSingleObject does.
#pragma once

#include "windef.h"

namespace machine {

class Waitable {
  public:
    virtual ~Waitable() = default;
    // Waits for that many milliseconds, or without end for INFINITE. False: the time is over.
    virtual bool wait(DWORD milliseconds) = 0;
};

}  // namespace machine
