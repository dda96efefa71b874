// Attributes and times of files.
#include "machine/attributes.h"

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
#include <utility>

#include "machine/host_errors.h"
#include "machine/links.h"
#include "winerror.h"

namespace machine {

namespace {

constexpr const char* attributeName = "user.DOSATTRIB";
constexpr DWORD storedAttributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                                   FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_TEMPORARY;
constexpr mode_t writeBits = S_IWUSR | S_IWGRP | S_IWOTH;

// What the file system cannot store, by device and inode.
class Fallback {
  public:
    std::optional<DWORD> get(const struct stat& status) {
        const std::lock_guard lock(mutex_);
        const auto found = attributes_.find({status.st_dev, status.st_ino});
        return found == attributes_.end() ? std::nullopt : std::optional(found->second);
    }
    void set(const struct stat& status, DWORD attributes) {
        const std::lock_guard lock(mutex_);
        attributes_[{status.st_dev, status.st_ino}] = attributes;
    }

  private:
    std::mutex mutex_;
    std::map<std::pair<dev_t, ino_t>, DWORD> attributes_;
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

std::optional<DWORD> stored(const std::string& path, const struct stat& status) {
    std::array<char, 32> text{};
    const auto length = ::getxattr(path.c_str(), attributeName, text.data(), text.size());
    if (length >= 0) return parseStored({text.data(), static_cast<std::size_t>(length)});
    return errno == ENOTSUP ? fallback().get(status) : std::nullopt;
}

DWORD store(const std::string& path, const struct stat& status, DWORD attributes) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "0x%x", attributes & storedAttributes);
    if (::setxattr(path.c_str(), attributeName, text.data(), std::strlen(text.data()), 0) == 0) {
        return ERROR_SUCCESS;
    }
    if (errno != ENOTSUP && errno != EPERM) return codeOfHostError(errno);
    fallback().set(status, attributes & storedAttributes);
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

bool earlier(const timespec& left, const timespec& right) {
    return left.tv_sec != right.tv_sec ? left.tv_sec < right.tv_sec : left.tv_nsec < right.tv_nsec;
}

}  // namespace

bool isReadOnly(const struct stat& status) {
    return (status.st_mode & writeBits) == 0;
}

DWORD attributesOf(const std::string& path, const struct stat& status) {
    if (isDirectoryLink(path, status)) return directoryLinkAttributes;
    const bool directory = S_ISDIR(status.st_mode);
    const DWORD usual = directory ? 0 : FILE_ATTRIBUTE_ARCHIVE;
    DWORD attributes = stored(path, status).value_or(usual);
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
    if (const DWORD error = store(path, status, attributes)) return error;
    if ((attributes & FILE_ATTRIBUTE_READONLY) == 0) return ERROR_SUCCESS;
    return ::chmod(path.c_str(), writable & ~writeBits) == 0 ? ERROR_SUCCESS
                                                             : codeOfHostError(errno);
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
