// The end of an open file.
#include "files/file_object.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <exception>

#include "host/descriptor.h"
#include "host/process.h"

namespace machine {

namespace {

// Removes the name, if it is one of the open file. Where the folder cannot be held, as at the limit
// of descriptors, the whole path serves.
bool removeName(const std::string& path, const struct stat& open) {
    const auto cut = path.rfind('/') + 1;
    const Descriptor folder(::open(path.substr(0, cut).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    const int base = folder ? folder.get() : AT_FDCWD;
    const char* const name = path.c_str() + (folder ? cut : 0);
    struct stat named {};
    if (::fstatat(base, name, &named, AT_SYMLINK_NOFOLLOW) != 0) return false;
    if (named.st_dev != open.st_dev || named.st_ino != open.st_ino) return false;
    return ::unlinkat(base, name, S_ISDIR(named.st_mode) ? AT_REMOVEDIR : 0) == 0;
}

bool isRemovable(const struct stat& status) {
    const bool isPlain =
        S_ISREG(status.st_mode) || S_ISDIR(status.st_mode) || S_ISLNK(status.st_mode);
    return isPlain && status.st_nlink > 0;
}

void removeFile(int file, const std::string& formerPath) {
    struct stat status {};
    if (::fstat(file, &status) != 0 || !isRemovable(status)) return;
    constexpr int attempts = 3;  // the file may be moved in between
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const auto path = presentPath(file);
        if (removeName(path.empty() ? formerPath : path, status)) return;
    }
}

// Without memory for its path the file stays: a destructor has nobody to report to.
void removeFileIfPossible(int file, const std::string& formerPath) try {
    removeFile(file, formerPath);
} catch (const std::exception&) {
    return;
}

}  // namespace

std::string presentPath(int file) {
    std::array<char, 4096> path{};
    const auto entry = "/proc/self/fd/" + std::to_string(file);
    const auto length = ::readlink(entry.c_str(), path.data(), path.size());
    return length <= 0 ? std::string() : std::string(path.data(), static_cast<std::size_t>(length));
}

FileObject::~FileObject() {
    if (!pathToRemove_.empty() && process_ == ownProcess()) {
        removeFileIfPossible(descriptor.get(), pathToRemove_);
    }
    if (isMapped) locks.release();
}

void FileObject::removeOnClose(const std::string& path) {
    pathToRemove_ = path;
    process_ = ownProcess();
}

}  // namespace machine
