// Named blocks of shared memory as locked files.
#include "memory/named_blocks.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <mutex>

#include "host/descriptor.h"
#include "host/file_room.h"
#include "host/host_errors.h"
#include "memory/block_folder.h"
#include "text/utf16.h"
#include "winerror.h"

namespace machine {

namespace {

constexpr mode_t ownFile = 0600;
constexpr off_t lockedByte = off_t{1} << 61;  // far behind the end of any block
constexpr std::size_t longestPlainName = 200;
constexpr std::size_t longestName = 259;  // characters

// Holds the lock of the folder in which a block lies or is to lie. False, with errno set: the folder
// cannot be had.
class FolderLock {
  public:
    explicit FolderLock(const std::string& block)
        : path_(block.substr(0, block.rfind('/'))), folder_(openBlockFolder(path_)) {
        // A folder that was removed before it was locked keeps nobody out.
        while (folder_ && acquire() && isRemoved()) folder_ = openBlockFolder(path_);
    }
    // Closing the descriptor is not enough: a process forked meanwhile would keep the lock.
    ~FolderLock() {
        if (folder_) ::flock(folder_.get(), LOCK_UN);
    }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    explicit operator bool() const { return static_cast<bool>(folder_); }
    const std::string& path() const { return path_; }

  private:
    bool acquire() {
        while (::flock(folder_.get(), LOCK_EX) != 0) {
            if (errno == EINTR) continue;
            folder_ = Descriptor();
            return false;
        }
        return true;
    }
    bool isRemoved() const {
        struct stat status {};
        return ::fstat(folder_.get(), &status) == 0 && status.st_nlink == 0;
    }

    const std::string path_;
    Descriptor folder_;
};

bool setLock(int file, short type) {
    struct flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = lockedByte;
    lock.l_len = 1;
    return ::fcntl(file, F_OFD_SETLK, &lock) == 0;
}

// Only asks: a descriptor's own lock does not count.
bool isLockedByOthers(int file) {
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = lockedByte;
    lock.l_len = 1;
    return ::fcntl(file, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

// FNV-1a with 64 bits, from one of two offsets, so that both together have 128 bits.
std::uint64_t hash(std::string_view text, std::uint64_t value) {
    constexpr std::uint64_t prime = 0x100000001B3;
    for (const char character : text) {
        value = (value ^ static_cast<unsigned char>(character)) * prime;
    }
    return value;
}

std::string hashedName(std::string_view text) {
    char name[40];
    std::snprintf(name, sizeof name, "%%%016llx%016llx",
                  static_cast<unsigned long long>(hash(text, 0xCBF29CE484222325)),
                  static_cast<unsigned long long>(hash(text, 0x9E3779B97F4A7C15)));
    return name;
}

// The name as one of a file: what a file name cannot hold stands as "%" with two digits, and a name
// too long for that as its hash.
std::string fileNameOf(std::string_view text) {
    std::string name;
    for (const char character : text) {
        if (character != '/' && character != '%') {
            name += character;
            continue;
        }
        char digits[4];
        std::snprintf(digits, sizeof digits, "%%%02X", static_cast<unsigned>(character));
        name += digits;
    }
    return name.size() <= longestPlainName ? name : hashedName(text);
}

bool takePrefix(std::u16string_view& name, std::u16string_view prefix) {
    if (!name.starts_with(prefix)) return false;
    name.remove_prefix(prefix.size());
    return true;
}

// Names of the session, with or without "Local\", and those of the whole system, with "Global\",
// are kept apart: one letter in front of the file's name tells them. The result's path is empty
// when the name is refused.
NamedBlock place(std::u16string_view name) {
    if (name.size() > longestName) return {.error = ERROR_FILENAME_EXCED_RANGE};
    const bool global = takePrefix(name, u"Global\\");
    if (!global) takePrefix(name, u"Local\\");
    if (name.empty()) return {.error = ERROR_INVALID_NAME};
    if (name.find(u'\\') != std::u16string_view::npos) return {.error = ERROR_PATH_NOT_FOUND};
    const auto file = (global ? "g-" : "l-") + fileNameOf(toUtf8(name));
    return {.path = blockFolder() + "/" + file};
}

// Whether the path still leads to the open file.
bool leadsTo(const std::string& path, int file) {
    struct stat named {};
    struct stat open {};
    return ::lstat(path.c_str(), &named) == 0 && ::fstat(file, &open) == 0 &&
           named.st_dev == open.st_dev && named.st_ino == open.st_ino;
}

// Under the folder's lock: gives back the memory of all blocks that no process holds.
void clearAbandoned(const std::string& folder) {
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(::opendir(folder.c_str()), ::closedir);
    while (const auto* const entry = directory == nullptr ? nullptr : ::readdir(directory.get())) {
        const auto path = folder + "/" + entry->d_name;
        const Descriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW));
        if (file && !isLockedByOthers(file.get())) ::unlink(path.c_str());
    }
}

// Under the folder's lock: joins the block at the place, and clears away what no process holds.
void join(NamedBlock& block) {
    Descriptor file(::open(block.path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW));
    struct stat status {};
    if (!file || ::fstat(file.get(), &status) != 0) {
        block.error = codeOfHostError(errno);
        return;
    }
    if (!isLockedByOthers(file.get())) {
        ::unlink(block.path.c_str());
        block.error = ERROR_FILE_NOT_FOUND;
        return;
    }
    if (!setLock(file.get(), F_RDLCK)) {
        block.error = codeOfHostError(errno);
        return;
    }
    block.size = static_cast<std::uint64_t>(status.st_size);
    block.file = std::move(file);
}

// Under the folder's lock: makes the block. Its memory is set aside at once, so that no access to
// it can fail later.
void make(NamedBlock& block, std::uint64_t size) {
    Descriptor file(::open(block.path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, ownFile));
    if (!file) {
        block.error = codeOfHostError(errno);
        return;
    }
    if (setAside(file.get(), 0, size) != 0 || !setLock(file.get(), F_RDLCK)) {
        ::unlink(block.path.c_str());
        block.error = ERROR_COMMITMENT_LIMIT;
        return;
    }
    block.size = size;
    block.file = std::move(file);
}

}  // namespace

NamedBlock openBlock(std::u16string_view name) {
    auto block = place(name);
    if (block.error != 0) return block;
    const FolderLock folder(block.path);
    if (folder) {
        join(block);
    } else {
        block.error = codeOfHostError(errno);
    }
    return block;
}

NamedBlock createBlock(std::u16string_view name, std::uint64_t size) {
    auto block = place(name);
    if (block.error != 0) return block;
    const FolderLock folder(block.path);
    if (!folder) {
        block.error = codeOfHostError(errno);
        return block;
    }
    static std::once_flag once;
    std::call_once(once, clearAbandoned, folder.path());
    join(block);
    if (block.error == ERROR_FILE_NOT_FOUND) {
        block.error = 0;
        make(block, size);
    } else if (block.error == 0) {
        block.error = ERROR_ALREADY_EXISTS;
    }
    return block;
}

NamedMappingObject::~NamedMappingObject() {
    if (::getpid() != process) return;
    try {
        const FolderLock folder(path);
        const bool isLast = folder && !isLockedByOthers(descriptor.get());
        if (isLast && leadsTo(path, descriptor.get())) ::unlink(path.c_str());
        // The lock of this handle ends before the folder's does, and not only with the descriptor.
        setLock(descriptor.get(), F_UNLCK);
    } catch (const std::exception&) {
        setLock(descriptor.get(), F_UNLCK);  // the next one who asks for the name clears it away
    }
}

}  // namespace machine
