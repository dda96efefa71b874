// Which process this is, without a call of the host each time.
#pragma once

#include <sys/types.h>

namespace machine {

// The number of the process, also in a child after a fork.
pid_t ownProcess();

// How often the process has forked. A child goes on counting.
unsigned forkCount();

// Whether another process may have a copy of a descriptor that was opened when so many forks were
// counted: a child, or one that another thread is about to start a program with.
bool mayBeCopied(unsigned forksBefore);

}  // namespace machine
