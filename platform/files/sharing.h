// Sharing modes of open files, between the processes of a host too.
//
// Each right that a handle uses and each right that it denies to others is a read lock on a byte far
// beyond the end of the file, held by the open file description. There are two rows of such bytes:
// one for what an opener intends, and one for what is settled. An opener first places its intention,
// so that of two that race at least one sees the other. What is settled refuses at once; two
// intentions that exclude each other are withdrawn, and both try again. So nobody is refused because
// of an opener that is about to be refused itself.
//
// The host takes the locks back when the handle's process ends, however it ends. File systems
// without such locks share everything.
#pragma once

#include <sys/types.h>

#include <optional>
#include <utility>

#include "windef.h"

namespace machine {

struct Rights {
    bool read = false, write = false, remove = false;
};

struct Sharing {
    Rights uses, denies;
};

Sharing sharingOf(DWORD access, DWORD share);

// The locks of an open file. Where a process that was forked meanwhile may have the same open file,
// they are taken back explicitly; else the host does so with the descriptor, which saves a call. In
// such a child they belong to the parent, and stay.
class SharingLocks {
  public:
    SharingLocks() = default;
    explicit SharingLocks(int file);
    SharingLocks(SharingLocks&& other) noexcept
        : file_(std::exchange(other.file_, -1)), process_(other.process_), forks_(other.forks_) {}
    SharingLocks& operator=(SharingLocks&&) = delete;
    ~SharingLocks();

    // Takes the locks back from everything that uses the same open file.
    void release() const;

  private:
    int file_ = -1;
    pid_t process_ = 0;
    unsigned forks_ = 0;
};

// Places the locks, which end with the result. None: another handle objects. The descriptor must
// outlive the result.
std::optional<SharingLocks> share(int file, const Sharing& sharing);

// Whether the file could be opened with the sharing at this moment.
bool couldShare(int file, const Sharing& sharing);

}  // namespace machine
