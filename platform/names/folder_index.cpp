// Folders that were read, kept true by inotify.
#include "names/folder_index.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <pthread.h>
#include <sys/inotify.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <list>
#include <memory>
#include <mutex>
#include <new>
#include <optional>

#include "host/descriptor.h"
#include "names/folded_names.h"
#include "names/short_names.h"
#include "text/case_mapping.h"
#include "text/utf16.h"

namespace machine {

namespace {

constexpr std::size_t mostFolders = 64;
constexpr std::size_t mostMemory = std::size_t{64} << 20;

using Directory = std::unique_ptr<DIR, int (*)(DIR*)>;

// Reads the open folder from its beginning, through a descriptor of its own. False: the whole of it
// could not be read. It ends early when the action gives false.
template <class Action>
bool forEachName(int folder, Action action) {
    const int own = ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const Directory directory(own < 0 ? nullptr : ::fdopendir(own), ::closedir);
    if (directory == nullptr) {
        if (own >= 0) ::close(own);
        return false;
    }
    for (;;) {
        errno = 0;
        const auto* const entry = ::readdir(directory.get());
        if (entry == nullptr) return errno == 0;
        const std::string_view name = entry->d_name;
        if (name != "." && name != ".." && !action(name)) return true;
    }
}

std::optional<std::string> nameByReading(int folder, std::u16string_view component) {
    const bool mayBeShort = component.find(u'~') != std::u16string_view::npos;
    const auto exact = toUtf8(component);
    std::string byCase, byShortName;
    const bool complete = forEachName(folder, [&](std::string_view host) {
        const auto name = fromUtf8(host);
        if (equalIgnoringCase(name, component)) {
            byCase = host;
        } else if (mayBeShort && byShortName.empty() &&
                   equalIgnoringCase(shortNameOf(name), component)) {
            byShortName = host;
        }
        return byCase != exact;
    });
    if (!complete) return std::nullopt;
    return byCase.empty() ? byShortName : byCase;
}

// File systems whose changes all go through this host.
bool isOfThisHost(int folder) {
    struct statfs status {};
    if (::fstatfs(folder, &status) != 0) return false;
    constexpr unsigned long f2fs = 0xF2F52010;
    constexpr std::array<unsigned long, 7> known = {
        EXT4_SUPER_MAGIC,     XFS_SUPER_MAGIC, BTRFS_SUPER_MAGIC, TMPFS_MAGIC, RAMFS_MAGIC, f2fs,
        OVERLAYFS_SUPER_MAGIC};
    return std::ranges::find(known, static_cast<unsigned long>(status.f_type)) != known.end();
}

std::uint64_t randomSeed() {
    std::uint64_t seed = 0;
    return ::getrandom(&seed, sizeof seed, GRND_NONBLOCK) == ssize_t{sizeof seed} ? seed : 0;
}

struct Folder {
    dev_t device;
    ino_t inode;
    int watch;  // -1: too large to be remembered
    FoldedNames names;
    std::string movedIn{};     // the name of the last change, if that moved something in
    bool mayHoldGone = false;  // whether there may be names that are gone
};

class FolderIndex {
  public:
    // The name; empty: there is none; unset: the folder is not remembered.
    std::optional<std::string> find(int folder, std::u16string_view component) noexcept {
        const std::lock_guard lock(mutex_);
        try {
            catchUp();
            Folder* const known = folderOf(folder);
            if (known == nullptr || known->watch < 0) return std::nullopt;
            const auto name = existing(folder, *known, component);
            trim();
            return name;
        } catch (const std::bad_alloc&) {
            forget();
            return std::nullopt;
        }
    }

    // For forks: the child finds the index unlocked and empty.
    void lock() { mutex_.lock(); }
    void unlock() { mutex_.unlock(); }
    void forget() {
        folders_.clear();
        queue_ = Descriptor();
    }

  private:
    static std::string existing(int folder, Folder& known, std::u16string_view component) {
        while (const auto* const found = known.names.find(component)) {
            const std::string name = *found;
            struct stat status {};
            const bool gone = known.mayHoldGone &&
                              ::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 &&
                              errno == ENOENT;
            if (!gone) return name;
            known.names.remove(name);
        }
        return {};
    }

    void catchUp();
    void apply(const inotify_event& event);
    Folder* folderOf(int folder);
    Folder* read(int folder, const struct stat& status);
    void trim();

    std::mutex mutex_;
    const std::uint64_t seed_ = randomSeed();
    Descriptor queue_{};           // the notifications; empty: none are asked for
    std::list<Folder> folders_{};  // those used last first
    alignas(inotify_event) std::array<char, 1 << 16> events_{};
};

// Takes in all changes that happened until now.
void FolderIndex::catchUp() {
    constexpr std::size_t largestEvent = sizeof(inotify_event) + NAME_MAX + 1;
    while (queue_) {
        const auto count = ::read(queue_.get(), events_.data(), events_.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0 && errno == EAGAIN) return;
        if (count <= 0) return forget();
        const auto size = static_cast<std::size_t>(count);
        for (std::size_t at = 0; at < size;) {
            const auto& event = *reinterpret_cast<const inotify_event*>(events_.data() + at);
            apply(event);
            at += sizeof event + event.len;
        }
        if (size + largestEvent <= events_.size()) return;  // there was room for more
    }
}

void FolderIndex::apply(const inotify_event& event) {
    if ((event.mask & IN_Q_OVERFLOW) != 0) return forget();
    const auto known = std::ranges::find(folders_, event.wd, &Folder::watch);
    if (known == folders_.end()) return;
    if ((event.mask & IN_IGNORED) != 0) {
        folders_.erase(known);
        return;
    }
    if (event.len == 0) return;
    const std::string name = event.name;
    // Two names that are exchanged come as two moves, whose order would end with the one name out
    // of the folder. So a name that has just been moved in stays until it is looked for.
    const bool movesOut = (event.mask & IN_MOVED_FROM) != 0;
    const bool mayStay = movesOut && name == known->movedIn;
    known->mayHoldGone |= mayStay;
    known->movedIn.clear();
    if ((event.mask & (IN_CREATE | IN_MOVED_TO)) != 0) known->names.add(name);
    if ((event.mask & IN_MOVED_TO) != 0) known->movedIn = name;
    if ((event.mask & IN_DELETE) != 0) known->names.remove(name);
    if (movesOut && !mayStay) known->names.remove(name);
}

Folder* FolderIndex::folderOf(int folder) {
    struct stat status {};
    if (::fstat(folder, &status) != 0) return nullptr;
    const auto known = std::ranges::find_if(folders_, [&](const Folder& candidate) {
        return candidate.inode == status.st_ino && candidate.device == status.st_dev;
    });
    if (known == folders_.end()) return isOfThisHost(folder) ? read(folder, status) : nullptr;
    folders_.splice(folders_.begin(), folders_, known);
    return &folders_.front();
}

// The watch comes first, so that no change is missed between it and the reading.
Folder* FolderIndex::read(int folder, const struct stat& status) {
    if (!queue_) queue_ = Descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (!queue_) return nullptr;
    constexpr std::uint32_t changes = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;
    const auto path = "/proc/self/fd/" + std::to_string(folder);
    const int watch = ::inotify_add_watch(queue_.get(), path.c_str(), changes | IN_ONLYDIR);
    if (watch < 0) return nullptr;
    folders_.push_front(Folder{status.st_dev, status.st_ino, watch, FoldedNames(seed_)});
    auto& made = folders_.front();
    const bool complete = forEachName(folder, [&](std::string_view name) {
        made.names.add(name);
        return made.names.memory() <= mostMemory;
    });
    if (complete && made.names.memory() <= mostMemory) return &made;
    ::inotify_rm_watch(queue_.get(), watch);
    made.watch = -1;
    made.names = FoldedNames(seed_);
    if (complete) return &made;
    folders_.pop_front();
    return nullptr;
}

// Lets go of what is too much.
void FolderIndex::trim() {
    const auto memory = [&] {
        std::size_t sum = 0;
        for (const auto& folder : folders_) sum += folder.names.memory();
        return sum;
    };
    while (folders_.size() > mostFolders || memory() > mostMemory) {
        if (folders_.back().watch >= 0) ::inotify_rm_watch(queue_.get(), folders_.back().watch);
        folders_.pop_back();
    }
}

// It is never destroyed, as threads may use it until the process is gone.
FolderIndex& folderIndex() {
    static FolderIndex* const index = [] {
        static FolderIndex* made = new FolderIndex;
        ::pthread_atfork([] { made->lock(); }, [] { made->unlock(); },
                         [] {
                             made->forget();
                             made->unlock();
                         });
        return made;
    }();
    return *index;
}

}  // namespace

std::optional<std::string> nameInFolder(int folder, std::u16string_view component) {
    auto name = folderIndex().find(folder, component);
    return name ? name : nameByReading(folder, component);
}

}  // namespace machine
