// Folders of the host.
#include "host/host_folders.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace machine {

namespace {

using HostText = std::unique_ptr<char, void (*)(void*)>;

// Goes on from a folder without links, "/" or without a last slash, by what does not exist.
std::string extended(std::string folder, std::string_view rest) {
    while (!rest.empty()) {
        const auto name = rest.substr(0, rest.find('/'));
        rest.remove_prefix(std::min(name.size() + 1, rest.size()));
        if (name.empty() || name == ".") continue;
        if (name != ".." && !folder.ends_with('/')) folder += '/';
        if (name != "..") folder += name;
        if (name == "..") folder.resize(std::max<std::size_t>(folder.rfind('/'), 1));
    }
    return folder;
}

}  // namespace

void makeHostFolders(const std::string& path) {
    constexpr mode_t newDirectoryMode = 0777;
    for (std::size_t at = 0; at < path.size();) {
        at = std::min(path.find('/', at + 1), path.size());
        ::mkdir(path.substr(0, at).c_str(), newDirectoryMode);
    }
}

std::string canonicalHostPath(const std::string& path) {
    if (path.empty()) return {};
    if (path[0] != '/') {
        const auto here = currentHostFolder();
        return here.empty() ? std::string() : canonicalHostPath(here + "/" + path);
    }
    for (auto end = path.size(); end > 0; end = path.rfind('/', end - 1)) {
        const HostText found(::realpath(path.substr(0, end).c_str(), nullptr), std::free);
        if (found != nullptr) return extended(found.get(), std::string_view(path).substr(end));
    }
    return extended("/", path);
}

std::string currentHostFolder() {
    const HostText path(::getcwd(nullptr, 0), std::free);
    const bool isReachable = path != nullptr && *path == '/';
    return isReachable ? path.get() : std::string();
}

}  // namespace machine
