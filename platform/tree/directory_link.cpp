// Links between directories.
#include "tree/directory_link.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <string_view>

#include "host/host_errors.h"
#include "tree/temporary_neighbour.h"
#include "winerror.h"

namespace machine {

namespace {

bool isLink(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

// A directory that cannot be read does not count as empty.
bool isEmpty(const std::string& path) {
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(::opendir(path.c_str()), ::closedir);
    if (directory == nullptr) return false;
    while (const auto* const entry = ::readdir(directory.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") return false;
    }
    return true;
}

// The link and the directory change places, and the directory goes when it is empty still.
DWORD exchange(const std::string& link, const std::string& directory) {
    if (!isEmpty(directory)) return ERROR_DIR_NOT_EMPTY;
    const auto swap = [&] {
        return ::renameat2(AT_FDCWD, link.c_str(), AT_FDCWD, directory.c_str(), RENAME_EXCHANGE);
    };
    if (swap() != 0) return codeOfHostError(errno);
    if (::rmdir(link.c_str()) == 0) return ERROR_SUCCESS;
    const DWORD code = codeOfHostError(errno);
    swap();
    return code;
}

}  // namespace

DWORD placeDirectoryLink(const std::string& path, const std::string& target) {
    const auto link = makeNeighbour(path, [&](const std::string& name) {
        return ::symlink(target.c_str(), name.c_str()) == 0;
    });
    if (link.empty()) return codeOfHostError(errno);
    DWORD code = ERROR_SUCCESS;
    if (!isLink(path)) {
        code = exchange(link, path);
    } else if (::rename(link.c_str(), path.c_str()) != 0) {
        code = codeOfHostError(errno);
    }
    if (code != ERROR_SUCCESS) ::unlink(link.c_str());
    return code;
}

}  // namespace machine
