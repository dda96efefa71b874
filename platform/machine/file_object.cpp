// The end of an open file that goes away with its handle.
#include "machine/file_object.h"

#include <sys/stat.h>

#include <array>
#include <climits>
#include <string>

namespace machine {

void removeOpenFile(int file) {
    std::array<char, PATH_MAX> path{};
    const auto link = "/proc/self/fd/" + std::to_string(file);
    const auto length = ::readlink(link.c_str(), path.data(), path.size() - 1);
    struct stat opened {
    }, named{};
    if (length <= 0 || ::fstat(file, &opened) != 0 || ::lstat(path.data(), &named) != 0) return;
    const bool same = opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
    if (same && S_ISREG(opened.st_mode)) ::unlink(path.data());  // never a device of the host
}

}  // namespace machine
