// Which process this is: asked once, and again in each child.
#include "host/process.h"

#include <pthread.h>
#include <sys/single_threaded.h>
#include <unistd.h>

#include <atomic>

namespace machine {

namespace {

std::atomic<pid_t> number{0};
std::atomic<unsigned> forks{0};

void askHost() {
    number.store(::getpid(), std::memory_order_relaxed);
}

void countFork() {
    forks.fetch_add(1, std::memory_order_relaxed);
}

bool watchForks() {
    askHost();
    return ::pthread_atfork(nullptr, countFork, askHost) == 0;
}

bool forksAreWatched() {
    static const bool watched = watchForks();
    return watched;
}

}  // namespace

pid_t ownProcess() {
    return forksAreWatched() ? number.load(std::memory_order_relaxed) : ::getpid();
}

unsigned forkCount() {
    return forks.load(std::memory_order_relaxed);
}

bool mayBeCopied(unsigned forksBefore) {
    return !__libc_single_threaded || !forksAreWatched() || forkCount() != forksBefore;
}

}  // namespace machine
