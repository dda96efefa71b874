// Descriptors of the host.
#pragma once

#include <unistd.h>

#include <utility>

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

}  // namespace machine
