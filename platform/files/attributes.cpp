// Attributes and times of files.
#include "files/attributes.h"

#include <fcntl.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <mutex>
#include <optional>
#include <string_view>
#include <tuple>

#include "host/host_errors.h"
#include "winerror.h"

namespace machine {

namespace {

constexpr const char* attributeName = "user.DOSATTRIB";
constexpr DWORD storedAttributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                                   FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_TEMPORARY;
constexpr mode_t writeBits = S_IWUSR | S_IWGRP | S_IWOTH;

DWORD usualAttributes(const struct stat& status) {
    return S_ISDIR(status.st_mode) ? 0 : FILE_ATTRIBUTE_ARCHIVE;
}

// A file of the host, by its path or by an open descriptor of it.
class HostFile {
  public:
    explicit HostFile(const std::string& path) : path_(path.c_str()) {}
    explicit HostFile(int file) : file_(file) {}

    ssize_t read(char* value, std::size_t size) const {
        return path_ != nullptr ? ::getxattr(path_, attributeName, value, size)
                                : ::fgetxattr(file_, attributeName, value, size);
    }
    bool write(const char* value, std::size_t size) const {
        const int result = path_ != nullptr ? ::setxattr(path_, attributeName, value, size, 0)
                                            : ::fsetxattr(file_, attributeName, value, size, 0);
        return result == 0;
    }
    timespec birthTime() const {
        struct statx extended {};
        const int flags = path_ != nullptr ? 0 : AT_EMPTY_PATH;
        const int base = path_ != nullptr ? AT_FDCWD : file_;
        const char* const path = path_ != nullptr ? path_ : "";
        if (::statx(base, path, flags, STATX_BTIME, &extended) != 0) return {};
        return {extended.stx_btime.tv_sec, extended.stx_btime.tv_nsec};
    }

  private:
    const char* path_ = nullptr;
    int file_ = -1;
};

// What the file system cannot store. A file is known by its device, its inode and, since a new file
// may get the inode of a deleted one, by the time of its birth.
class Fallback {
  public:
    DWORD get(const HostFile& file, const struct stat& status) {
        const auto identity = identify(file, status);
        const std::lock_guard lock(mutex_);
        const auto found = attributes_.find(identity);
        return found == attributes_.end() ? usualAttributes(status) : found->second;
    }
    void set(const HostFile& file, const struct stat& status, DWORD attributes) {
        const auto identity = identify(file, status);
        const std::lock_guard lock(mutex_);
        if (attributes == usualAttributes(status)) {
            attributes_.erase(identity);
        } else {
            attributes_[identity] = attributes;
        }
    }

  private:
    using Identity = std::tuple<dev_t, ino_t, time_t, long>;
    static Identity identify(const HostFile& file, const struct stat& status) {
        const timespec birth = file.birthTime();
        return {status.st_dev, status.st_ino, birth.tv_sec, birth.tv_nsec};
    }

    std::mutex mutex_;
    std::map<Identity, DWORD> attributes_;
};

Fallback& fallback() {
    static Fallback table;
    return table;
}

std::optional<DWORD> parseStored(std::string_view text) {
    if (!text.starts_with("0x")) return std::nullopt;
    DWORD value = 0;
    const auto result = std::from_chars(text.data() + 2, text.data() + text.size(), value, 16);
    return result.ec == std::errc() ? std::optional(value & storedAttributes) : std::nullopt;
}

// The host keeps no extended attributes of pipes and devices.
bool canHaveExtended(const struct stat& status) {
    return S_ISREG(status.st_mode) || S_ISDIR(status.st_mode);
}

DWORD stored(const HostFile& file, const struct stat& status) {
    if (!canHaveExtended(status)) return fallback().get(file, status);
    std::array<char, 32> text{};
    const auto length = file.read(text.data(), text.size());
    if (length < 0 && errno == ENOTSUP) return fallback().get(file, status);
    const auto size = static_cast<std::size_t>(std::max<ssize_t>(length, 0));
    return parseStored({text.data(), size}).value_or(usualAttributes(status));
}

DWORD store(const HostFile& file, const struct stat& status, DWORD attributes) {
    if (canHaveExtended(status)) {
        std::array<char, 32> text{};
        const auto length = static_cast<std::size_t>(
            std::snprintf(text.data(), text.size(), "0x%x", attributes & storedAttributes));
        if (file.write(text.data(), length)) return ERROR_SUCCESS;
        if (errno != ENOTSUP) return codeOfHostError(errno);
    }
    fallback().set(file, status, attributes & storedAttributes);
    return ERROR_SUCCESS;
}

// The host tells its mask without changing it only here.
mode_t currentUmask() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (!line.starts_with("Umask:")) continue;
        return static_cast<mode_t>(std::strtoul(line.c_str() + 6, nullptr, 8));
    }
    return S_IWGRP | S_IWOTH;
}

// Whoever may read gets the permission to write back, as far as the umask allows; the owner does
// in any case.
mode_t writableMode(mode_t mode) {
    const mode_t readersAsWriters = (mode & (S_IRUSR | S_IRGRP | S_IROTH)) >> 1;
    return mode | S_IWUSR | (readersAsWriters & ~currentUmask());
}

bool hasAbsoluteText(const std::string& link) {
    char first = '\0';
    return ::readlink(link.c_str(), &first, 1) == 1 && first == '/';
}

bool isLink(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

bool earlier(const timespec& left, const timespec& right) {
    return left.tv_sec != right.tv_sec ? left.tv_sec < right.tv_sec : left.tv_nsec < right.tv_nsec;
}

}  // namespace

bool isDirectoryLink(const std::string& path, const struct stat& status) {
    if (S_ISLNK(status.st_mode)) return hasAbsoluteText(path);
    return S_ISDIR(status.st_mode) && isLink(path);
}

bool isReadOnly(const struct stat& status) {
    return (status.st_mode & writeBits) == 0;
}

DWORD attributesOf(const std::string& path, const struct stat& status) {
    if (isDirectoryLink(path, status)) return directoryLinkAttributes;
    const bool directory = S_ISDIR(status.st_mode);
    DWORD attributes = stored(HostFile(path), status);
    if (isReadOnly(status)) attributes |= FILE_ATTRIBUTE_READONLY;
    if (directory) attributes |= FILE_ATTRIBUTE_DIRECTORY;
    return attributes != 0 ? attributes : FILE_ATTRIBUTE_NORMAL;
}

DWORD setAttributes(const std::string& path, const struct stat& status, DWORD attributes) {
    if (isDirectoryLink(path, status)) return ERROR_NOT_SUPPORTED;
    // An extended attribute can be set only while the file can be written.
    const mode_t mode = status.st_mode & 07777;
    const mode_t writable = isReadOnly(status) ? writableMode(mode) : mode;
    if (writable != mode && ::chmod(path.c_str(), writable) != 0) return codeOfHostError(errno);
    if (const DWORD error = store(HostFile(path), status, attributes)) {
        if (writable != mode) ::chmod(path.c_str(), mode);
        return error;
    }
    if ((attributes & FILE_ATTRIBUTE_READONLY) == 0) return ERROR_SUCCESS;
    return ::chmod(path.c_str(), writable & ~writeBits) == 0 ? ERROR_SUCCESS
                                                             : codeOfHostError(errno);
}

DWORD copyStoredAttributes(int from, const struct stat& status, int to) {
    const DWORD attributes = stored(HostFile(from), status);
    if (attributes == usualAttributes(status)) return ERROR_SUCCESS;
    struct stat target {};
    if (::fstat(to, &target) != 0) return codeOfHostError(errno);
    return store(HostFile(to), target, attributes);
}

FILETIME fileTime(const struct timespec& time) {
    constexpr std::int64_t secondsFrom1601To1970 = 11644473600;
    const auto ticks = static_cast<std::uint64_t>(
        (std::int64_t{time.tv_sec} + secondsFrom1601To1970) * 10000000 + time.tv_nsec / 100);
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

FileTimes timesOf(const struct stat& status, const std::optional<timespec>& birth) {
    const auto creation =
        birth.value_or(std::min({status.st_mtim, status.st_ctim, status.st_atim}, earlier));
    return {fileTime(creation), fileTime(status.st_atim), fileTime(status.st_mtim)};
}

}  // namespace machine
