// Owners of what the platform hands out: released once, at the end of the owner's life.
#pragma once

#include <windows.h>

#include <cstdlib>
#include <utility>

/// The value of a handle that stands for nothing.
template <class Value>
struct NullHandle {
    static Value none() { return nullptr; }
};

/// The same for files and searches.
template <class Value>
struct InvalidHandle {
    static Value none() { return INVALID_HANDLE_VALUE; }
};

/// Owns one thing: `Owner<HMODULE, FreeLibrary>`. Owners can be moved and not copied; several of a
/// scope release in the reverse order of their declaration.
///
///     UniqueHandle token;
///     if (!OpenProcessToken(process, TOKEN_QUERY, token.put())) return triple.fail(0);
///     use(token.get());
template <class Value, auto releaseValue, template <class> class Nothing = NullHandle>
class Owner {
  public:
    Owner() = default;
    explicit Owner(Value value) : value_(value) {}
    Owner(Owner&& other) noexcept : value_(other.release()) {}
    Owner& operator=(Owner&& other) noexcept {
        reset(other.release());
        return *this;
    }
    ~Owner() { reset(); }

    explicit operator bool() const { return value_ != Nothing<Value>::none(); }
    Value get() const { return value_; }

    /// Where a call stores what the owner is to hold; what it held before is released.
    Value* put() {
        reset();
        return &value_;
    }

    /// Hands the thing over to the caller.
    Value release() { return std::exchange(value_, Nothing<Value>::none()); }

    void reset(Value value = Nothing<Value>::none()) {
        const Value former = std::exchange(value_, value);
        if (former != Nothing<Value>::none()) releaseValue(former);
    }

  private:
    Value value_ = Nothing<Value>::none();
};

using UniqueFile = Owner<HANDLE, CloseHandle, InvalidHandle>;
using UniqueSearch = Owner<HANDLE, FindClose, InvalidHandle>;
using UniqueHandle = Owner<HANDLE, CloseHandle>;  ///< mappings, processes, tokens
using UniqueModule = Owner<HMODULE, FreeLibrary>;
using UniqueText = Owner<char*, std::free>;  ///< a text from malloc or _strdup
