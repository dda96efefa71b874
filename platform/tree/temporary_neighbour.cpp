// Names beside a file for what is to take its place, and the step that puts it there.
#include "tree/temporary_neighbour.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>

namespace machine {

std::string newNeighbourName(const std::string& path) {
    static std::atomic<unsigned> counter{0};
    return path.substr(0, path.rfind('/') + 1) + ".jw32-" + std::to_string(::getpid()) + "-" +
           std::to_string(counter.fetch_add(1)) + ".tmp";
}

int renameFile(const std::string& from, const std::string& to, bool replace) {
    const unsigned flags = replace ? 0 : RENAME_NOREPLACE;
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), flags) == 0) return 0;
    if (replace || errno != EINVAL || ::link(from.c_str(), to.c_str()) != 0) return -1;
    ::unlink(from.c_str());  // a file system without the flag
    return 0;
}

}  // namespace machine
