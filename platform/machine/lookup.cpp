// Names of the interface found on the host.
#include "machine/lookup.h"

#include <dirent.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>

#include "machine/host_errors.h"
#include "machine/short_names.h"
#include "machine/text.h"
#include "winerror.h"

namespace machine {

namespace {

using Directory = std::unique_ptr<DIR, int (*)(DIR*)>;

int status(const std::string& path, struct stat& result) {
    if (::stat(path.c_str(), &result) == 0) return 0;
    if (errno == ENOENT && ::lstat(path.c_str(), &result) == 0) return 0;
    return errno;
}

// The host's name of the component in the folder: equal but for case, else by its short form.
std::string matchIn(const std::string& folder, const std::u16string& component) {
    const Directory directory(::opendir(folder.c_str()), ::closedir);
    if (directory == nullptr) return {};
    const bool mayBeShort = component.find(u'~') != std::u16string::npos;
    std::string byShortName;
    while (const auto* const entry = ::readdir(directory.get())) {
        const auto name = fromUtf8(entry->d_name);
        if (equalIgnoringCase(name, component)) return entry->d_name;
        if (mayBeShort && byShortName.empty() && equalIgnoringCase(shortNameOf(name), component)) {
            byShortName = entry->d_name;
        }
    }
    return byShortName;
}

// The slow way, when the name does not exist as it stands: component by component.
HostName findByComponents(const Path& path) {
    HostName found;
    found.path = path.hostRoot();
    for (std::size_t i = 0; i < path.components.size(); ++i) {
        const auto& component = path.components[i];
        const auto folder = found.path.empty() ? std::string("/") : found.path;
        auto name = toUtf8(component);
        if (status(found.path + "/" + name, found.status) != 0) name = matchIn(folder, component);
        if (name.empty()) {
            const bool last = i + 1 == path.components.size();
            found.error = last ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
            found.path += "/" + toUtf8(component);
            return found;
        }
        found.path += "/" + name;
        if (const int error = status(found.path, found.status)) {
            found.error = codeOfHostError(error);
            return found;
        }
        if (i + 1 < path.components.size() && !found.isDirectory()) {
            found.error = ERROR_PATH_NOT_FOUND;
            return found;
        }
    }
    return found;
}

}  // namespace

bool HostName::canBeMade() const {
    return error == ERROR_FILE_NOT_FOUND;
}

std::string literalHostPath(const Path& path) {
    auto result = path.hostRoot();
    for (const auto& component : path.components) result += "/" + toUtf8(component);
    return result.empty() ? "/" : result;
}

Path parentOf(const Path& path) {
    auto parent = path;
    parent.components.pop_back();
    return parent;
}

HostName findOnHost(const Path& path) {
    HostName found;
    found.path = literalHostPath(path);
    const int error = status(found.path, found.status);
    if (error != 0 && (path.isRoot() || (error != ENOENT && error != ENOTDIR))) {
        found.error = path.isRoot() ? ERROR_PATH_NOT_FOUND : codeOfHostError(error);
        return found;
    }
    if (error != 0) found = findByComponents(path);
    const bool isFile = found.exists() && S_ISREG(found.status.st_mode);
    if (isFile && path.trailingSeparator) found.error = ERROR_INVALID_NAME;
    return found;
}

}  // namespace machine
