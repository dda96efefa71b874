// An open file or directory, as a handle holds it.
#pragma once

#include <unistd.h>

#include <atomic>
#include <string>
#include <utility>

#include "machine/handles.h"
#include "machine/sharing.h"

namespace machine {

// Owns a descriptor of the host.
class Descriptor {
  public:
    explicit Descriptor(int value = -1) : value_(value) {}
    Descriptor(Descriptor&& other) noexcept : value_(std::exchange(other.value_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }
    ~Descriptor() {
        if (value_ >= 0) ::close(value_);
    }
    explicit operator bool() const { return value_ >= 0; }
    int get() const { return value_; }

  private:
    int value_;
};

// The path that leads to an open file at this moment; empty: the host does not tell.
std::string presentPath(int file);

struct FileObject : KernelObject {
    static constexpr ObjectKind objectKind = ObjectKind::File;

    FileObject(Descriptor file, SharingLocks ownLocks, bool mayRead, bool mayWrite)
        : KernelObject(objectKind),
          descriptor(std::move(file)),
          locks(std::move(ownLocks)),
          canRead(mayRead),
          canWrite(mayWrite) {}
    ~FileObject() override;

    // The file ends with this handle, under whatever name it has then. What a fork has copied is no
    // handle: a child that ends it leaves the file to its parent.
    void removeOnClose(const std::string& path);

    const Descriptor descriptor;
    const SharingLocks locks;  // end before the descriptor
    const bool canRead, canWrite;
    // Whether mappings of the file use the same open of the host: they outlive the handle, and what
    // the handle denies to others ends with it.
    std::atomic<bool> isMapped{false};

  private:
    std::string pathToRemove_;  // the name at the opening; empty: the file stays
    pid_t process_ = 0;         // whose handle it is
};

}  // namespace machine
