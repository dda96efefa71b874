// Names beside a file for what is to take its place, and the step that puts it there.
#include "tree/temporary_neighbour.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>

namespace machine {

namespace {

// For file systems that cannot refuse to replace: by a second name where they have those, and else
// after a look at the target.
int renameWithoutReplacing(const char* from, const char* to) {
    if (::link(from, to) == 0) {
        ::unlink(from);
        return 0;
    }
    struct stat status {};
    if (errno == EEXIST || ::lstat(to, &status) == 0) {
        errno = EEXIST;
        return -1;
    }
    return ::rename(from, to);
}

}  // namespace

std::string newNeighbourName(const std::string& path) {
    static std::atomic<unsigned> counter{0};
    return path.substr(0, path.rfind('/') + 1) + ".jw32-" + std::to_string(::getpid()) + "-" +
           std::to_string(counter.fetch_add(1)) + ".tmp";
}

int renameFile(const std::string& from, const std::string& to, bool replace) {
    const unsigned flags = replace ? 0 : RENAME_NOREPLACE;
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), flags) == 0) return 0;
    if (replace || errno != EINVAL) return -1;
    return renameWithoutReplacing(from.c_str(), to.c_str());
}

}  // namespace machine
