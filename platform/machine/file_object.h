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

struct FileObject : KernelObject {
    static constexpr ObjectKind objectKind = ObjectKind::File;

    FileObject(Descriptor file, bool mayRead, bool mayWrite)
        : KernelObject(objectKind),
          descriptor(std::move(file)),
          canRead(mayRead),
          canWrite(mayWrite) {}
    ~FileObject() override {
        if (isMapped) unshare(descriptor.get());
        if (!removedOnClose.empty()) ::unlink(removedOnClose.c_str());
    }

    const Descriptor descriptor;
    const bool canRead, canWrite;
    // Whether mappings of the file use the same open of the host: they outlive the handle, and what
    // the handle denies to others ends with it.
    std::atomic<bool> isMapped{false};
    std::string removedOnClose;  // host path of a file that ends with its handle; else empty
};

}  // namespace machine
