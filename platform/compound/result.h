// What operations on a compound file answer: a value, or the reason why there is none.
#pragma once

#include <cstdint>
#include <utility>

namespace compound {

/// Why an operation did not do its work. `none` is success.
enum class Error : std::uint8_t {
    none,
    notFound,         ///< no element has that name
    exists,           ///< an element of that name is there already
    invalidName,      ///< empty, longer than 31 units, or with one of / \ : !
    invalidArgument,  ///< a stream was asked for what only a storage has, or the other way round
    deleted,          ///< the element was deleted after the caller got hold of it
    readOnly,         ///< the file was opened for reading
    notCompound,      ///< the file does not begin as a compound file does
    corrupt,          ///< the file contradicts itself
    full,             ///< the device has no space left
    tooLarge,         ///< the format's version allows no file of that size
    io,               ///< the device failed
    noMemory,         ///< the process has no memory left
};

/// A value, or an error that is not `none`.
template <class T>
class [[nodiscard]] Result {
  public:
    Result(T value) : value_(std::move(value)) {}
    Result(Error error) : error_(error) {}

    explicit operator bool() const { return error_ == Error::none; }
    Error error() const { return error_; }
    T& operator*() & { return value_; }
    T operator*() && { return std::move(value_); }
    const T& operator*() const& { return value_; }
    T* operator->() { return &value_; }
    const T* operator->() const { return &value_; }

  private:
    T value_{};
    Error error_ = Error::none;
};

/// How the engine ends a step early inside; no public operation lets it out.
struct Failure {
    Error error;
};

}  // namespace compound
