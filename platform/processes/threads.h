// Threads of the process, as handles hold them.
#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>

#include "core/handles.h"
#include "minwinbase.h"
#include "processes/waitable.h"
#include "processthreadsapi.h"
#include "synchapi.h"
#include "windef.h"

namespace machine {

// The end of a thread, known to its handle and to itself.
class Ending {
  public:
    void reached() {
        const std::lock_guard lock(mutex_);
        over_ = true;
        changed_.notify_all();
    }
    bool await(DWORD milliseconds) {
        std::unique_lock lock(mutex_);
        const auto isOver = [this] { return over_; };
        if (milliseconds != INFINITE) {
            return changed_.wait_for(lock, std::chrono::milliseconds(milliseconds), isOver);
        }
        changed_.wait(lock, isOver);
        return true;
    }

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool over_ = false;
};

class ThreadObject : public HandleObject, public Waitable {
  public:
    explicit ThreadObject(std::shared_ptr<Ending> ending) : ending_(std::move(ending)) {}
    bool wait(DWORD milliseconds) override { return ending_->await(milliseconds); }

  private:
    const std::shared_ptr<Ending> ending_;
};

// Runs the routine in a new thread, between the notifications of the modules. False: the host has no
// room for another thread.
bool startThread(LPTHREAD_START_ROUTINE start, LPVOID parameter,
                 const std::shared_ptr<Ending>& ending);

}  // namespace machine
