// An open file or directory, as a handle holds it.
#pragma once

#include <unistd.h>

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

// Removes an open file under the name that it has at the moment; a file that took its former name
// stays.
void removeOpenFile(int file);

struct FileObject : KernelObject {
    static constexpr ObjectKind objectKind = ObjectKind::File;

    FileObject(Descriptor file, bool mayRead, bool mayWrite)
        : KernelObject(objectKind),
          descriptor(std::move(file)),
          canRead(mayRead),
          canWrite(mayWrite) {}
    // What the handle denies to others ends with it, even where mappings or a forked child keep the
    // same open of the host. A child that closes its copy of the handle changes nothing for the
    // process that opened it.
    ~FileObject() override {
        if (::getpid() != opener) return;
        unshare(descriptor.get());
        if (removedOnClose) removeOpenFile(descriptor.get());
    }

    const Descriptor descriptor;
    const bool canRead, canWrite;
    const pid_t opener = ::getpid();
    bool removedOnClose = false;  // the file ends with its handle
};

}  // namespace machine
