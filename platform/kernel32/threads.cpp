// Threads, their notifications, and waiting for their end.
#include <sys/syscall.h>
#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>

#include "core/handles.h"
#include "core/script.h"
#include "handleapi.h"
#include "host/host_errors.h"
#include "libloaderapi.h"
#include "modules/modules.h"
#include "processthreadsapi.h"
#include "synchapi.h"
#include "winerror.h"

namespace {

using machine::failWith;

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

struct ThreadObject : machine::KernelObject {
    static constexpr machine::ObjectKind objectKind = machine::ObjectKind::Thread;

    explicit ThreadObject(std::shared_ptr<Ending> end)
        : KernelObject(objectKind), ending(std::move(end)) {}

    const std::shared_ptr<Ending> ending;
};

void runThread(LPTHREAD_START_ROUTINE start, LPVOID parameter, Ending& ending) {
    machine::notifyModules(DLL_THREAD_ATTACH);
    start(parameter);
    machine::notifyModules(DLL_THREAD_DETACH);
    ending.reached();
}

}  // namespace

// Security, stack size and flags are taken as their defaults, and the number of the thread is not
// told.
HANDLE WINAPI CreateThread(LPSECURITY_ATTRIBUTES, SIZE_T, LPTHREAD_START_ROUTINE start,
                           LPVOID parameter, DWORD, LPDWORD) try {
    if (const auto scripted = machine::call("CreateThread")) return scripted.or_(HANDLE{nullptr});
    const auto ending = std::make_shared<Ending>();
    const HANDLE handle = machine::insertObject(std::make_unique<ThreadObject>(ending));
    if (handle == nullptr) return failWith(ERROR_NOT_ENOUGH_MEMORY, HANDLE{nullptr});
    try {
        std::thread([=] { runThread(start, parameter, *ending); }).detach();
    } catch (const std::system_error&) {
        machine::closeObject(handle);
        return failWith(ERROR_NOT_ENOUGH_MEMORY, HANDLE{nullptr});
    }
    return handle;
} catch (const std::exception&) {
    return machine::outOfMemory(HANDLE{nullptr});
}

DWORD WINAPI GetCurrentThreadId() {
    return static_cast<DWORD>(::syscall(SYS_gettid));
}

DWORD WINAPI GetCurrentProcessId() {
    return static_cast<DWORD>(::getpid());
}

DWORD WINAPI WaitForSingleObject(HANDLE handle, DWORD milliseconds) try {
    if (const auto scripted = machine::call("WaitForSingleObject", handle, milliseconds)) {
        return scripted.or_(WAIT_FAILED);
    }
    const machine::Pinned<ThreadObject> thread(handle);
    if (!thread) return failWith(ERROR_INVALID_HANDLE, WAIT_FAILED);
    return thread->ending->await(milliseconds) ? WAIT_OBJECT_0 : WAIT_TIMEOUT;
} catch (const std::exception&) {
    return machine::outOfMemory(WAIT_FAILED);
}

void WINAPI Sleep(DWORD milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}
