// The folder that holds the named blocks of a user.
#include "memory/block_folder.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <mutex>

#include "host/descriptor.h"
#include "host/host_variables.h"

namespace machine {

namespace {

constexpr mode_t ownFolder = 0700;

// The folder if it is the user's own and closed to others; else empty, with errno set.
Descriptor openOwn(const std::string& path) {
    Descriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat status {};
    if (!folder || ::fstat(folder.get(), &status) != 0) return Descriptor();
    if (status.st_uid == ::geteuid() && (status.st_mode & 0777) == ownFolder) return folder;
    errno = EACCES;
    return Descriptor();
}

// Whether a file there can be mapped by several and locked, which some file systems do not grant.
bool canHoldBlocks(const std::string& folder) {
    const Descriptor file(::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600));
    struct flock lock {};
    lock.l_type = F_RDLCK;
    lock.l_len = 1;
    if (!file || ::posix_fallocate(file.get(), 0, 1) != 0) return false;
    if (::fcntl(file.get(), F_OFD_SETLK, &lock) != 0) return false;
    void* const view = ::mmap(nullptr, 1, PROT_READ | PROT_WRITE, MAP_SHARED, file.get(), 0);
    return view != MAP_FAILED && ::munmap(view, 1) == 0;
}

// The folder in the user's runtime folder; empty: the runtime folder does not serve.
std::string inRuntimeFolder(const std::string& runtime) {
    if (!runtime.starts_with('/') || !openOwn(runtime)) return {};
    const auto folder = runtime + "/jw32";
    return openBlockFolder(folder) && canHoldBlocks(folder) ? folder : std::string();
}

// Names of others are passed over. A folder that is there goes before one that would have to be
// made, so that processes agree also after somebody else has given up a name.
std::string inSharedMemory() {
    constexpr int mostNames = 16;
    const auto plain = "/dev/shm/jw32-" + std::to_string(::geteuid());
    for (const bool makes : {false, true}) {
        for (int number = 0; number < mostNames; ++number) {
            const auto folder = number == 0 ? plain : plain + "-" + std::to_string(number);
            if (makes ? openBlockFolder(folder) : openOwn(folder)) return folder;
        }
    }
    return plain;
}

std::string chooseFolder() {
    auto folder = inRuntimeFolder(hostVariable("XDG_RUNTIME_DIR").value_or(""));
    if (folder.empty()) folder = inRuntimeFolder("/run/user/" + std::to_string(::geteuid()));
    return folder.empty() ? inSharedMemory() : folder;
}

}  // namespace

std::string blockFolder() {
    static std::mutex mutex;
    static std::string chosen;
    const std::lock_guard lock(mutex);
    if (chosen.empty() || !openOwn(chosen)) chosen = chooseFolder();
    return chosen;
}

Descriptor openBlockFolder(const std::string& path) {
    if (::mkdir(path.c_str(), ownFolder) != 0 && errno != EEXIST) return Descriptor();
    return openOwn(path);
}

}  // namespace machine
