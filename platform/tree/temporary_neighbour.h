// Names beside a file for what is to take its place, and the step that puts it there.
#pragma once

#include <cerrno>
#include <string>

namespace machine {

// Finds a name in the path's folder that nobody has and that `make(name)` can give to something.
// Empty: it failed for another reason than a taken name, and errno tells which.
template <class Make>
std::string makeNeighbour(const std::string& path, Make make);

// Renames a file of the host. Without `replace`, an existing target makes it fail with EEXIST, on
// file systems that cannot refuse by themselves too. 0, or -1 and errno.
int renameFile(const std::string& from, const std::string& to, bool replace);

// A name that was not used before by this process: ".jw32-PID-NUMBER.tmp" in the path's folder.
std::string newNeighbourName(const std::string& path);

}  // namespace machine

template <class Make>
std::string machine::makeNeighbour(const std::string& path, Make make) {
    for (;;) {
        const auto name = newNeighbourName(path);
        if (make(name)) return name;
        if (errno != EEXIST) return {};
    }
}
