// Names of the interface found on the host: without regard to case, exact match first, and by their
// short form too.
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

#include "names/name_lock.h"
#include "names/paths.h"
#include "windef.h"

namespace machine {

// A name on the host. Where it does not exist, the folder does, and the last component is as given.
struct HostName {
    std::string path;
    DWORD error = 0;  // 0: exists; else ERROR_FILE_NOT_FOUND or ERROR_PATH_NOT_FOUND and others
    struct stat status {};                         // through links, where they lead anywhere
    std::optional<timespec> birth = std::nullopt;  // where the file system keeps it

    bool exists() const { return error == 0; }
    bool canBeMade() const;  // it does not exist, but its folder does
    bool isDirectory() const { return S_ISDIR(status.st_mode); }
};

// A dangling symbolic link counts as existing. A file with a separator behind its name is none.
HostName findOnHost(const Path& path);

// The same for a name that may be made. Where it is not there as it is given, the lock keeps it in
// whatever case, so that it stays as it was found until it is made and the lock ends.
HostName findToMake(const Path& path, NameLock& lock);

// What is at the very path on the host.
HostName atHostPath(const std::string& path);

// The same with one call of the host less for a name that is mostly new, of a path that is no root.
HostName findNewName(const Path& path, NameLock& lock);

// Keeps the last name of a host path. The result is the path under which it is there in whatever
// case, or else the path itself.
std::string keepName(const std::string& hostPath, NameLock& lock);

// The folder that holds the last component of a path that is not a root.
Path parentOf(const Path& path);

// The host path of the name taken as it stands, existing or not.
std::string literalHostPath(const Path& path);

}  // namespace machine
