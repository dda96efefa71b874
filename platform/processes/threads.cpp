// Threads of the process.
#include "processes/threads.h"

#include <system_error>
#include <thread>

#include "libloaderapi.h"
#include "modules/modules.h"
#include "winnt.h"

namespace machine {

namespace {

void runThread(LPTHREAD_START_ROUTINE start, LPVOID parameter, Ending& ending) {
    notifyModules(DLL_THREAD_ATTACH);
    start(parameter);
    notifyModules(DLL_THREAD_DETACH);
    ending.reached();
}

}  // namespace

bool startThread(LPTHREAD_START_ROUTINE start, LPVOID parameter,
                 const std::shared_ptr<Ending>& ending) try {
    std::thread([=] { runThread(start, parameter, *ending); }).detach();
    return true;
} catch (const std::system_error&) {
    return false;
}

}  // namespace machine
