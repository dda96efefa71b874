// Threads, and waiting for their end.
#include <sys/syscall.h>
#include <unistd.h>

#include <chrono>
#include <memory>
#include <thread>

#include "core/handles.h"
#include "core/script.h"
#include "host/host_errors.h"
#include "processes/threads.h"
#include "processthreadsapi.h"
#include "synchapi.h"
#include "winerror.h"

using machine::failWith;

// Security, stack size and flags are taken as their defaults, and the number of the thread is not
// told.
HANDLE WINAPI CreateThread(LPSECURITY_ATTRIBUTES security, SIZE_T stackSize,
                           LPTHREAD_START_ROUTINE start, LPVOID parameter, DWORD flags,
                           LPDWORD number) try {
    if (const auto scripted =
            machine::call<&CreateThread>(security, stackSize, start, parameter, flags, number)) {
        return scripted.valueOr(nullptr);
    }
    const auto ending = std::make_shared<machine::Ending>();
    const HANDLE handle =
        machine::handles().insert(std::make_unique<machine::ThreadObject>(ending));
    if (handle == nullptr) return failWith(ERROR_NOT_ENOUGH_MEMORY, HANDLE{nullptr});
    if (machine::startThread(start, parameter, ending)) return handle;
    machine::handles().close(handle);
    return failWith(ERROR_NOT_ENOUGH_MEMORY, HANDLE{nullptr});
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
    if (const auto scripted = machine::call<&WaitForSingleObject>(handle, milliseconds)) {
        return scripted.valueOr(WAIT_FAILED);
    }
    const machine::Pinned<machine::Waitable> object(handle);
    if (!object) return failWith(ERROR_INVALID_HANDLE, WAIT_FAILED);
    return object->wait(milliseconds) ? WAIT_OBJECT_0 : WAIT_TIMEOUT;
} catch (const std::exception&) {
    return machine::outOfMemory(WAIT_FAILED);
}

void WINAPI Sleep(DWORD milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}
