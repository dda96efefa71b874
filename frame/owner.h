// Owners of what the platform hands out: released once, at the end of the owner's life.
#pragma once

#include <windows.h>

#include <cstdlib>
#include <utility>

/// Owns one thing of `Kind::Value`. Kind tells the value that stands for nothing, `none()`, and how
/// to `release` the thing.
template <class Kind>
class Owner {
  public:
    using Value = typename Kind::Value;

    explicit Owner(Value value) : value_(value) {}
    ~Owner() {
        if (*this) Kind::release(value_);
    }
    Owner(const Owner&) = delete;
    Owner& operator=(const Owner&) = delete;

    explicit operator bool() const { return value_ != Kind::none(); }
    Value get() const { return value_; }
    Value release() { return std::exchange(value_, Kind::none()); }

  private:
    Value value_;
};

struct FileKind {
    using Value = HANDLE;
    static Value none() { return INVALID_HANDLE_VALUE; }
    static void release(Value file) { CloseHandle(file); }
};

struct MappingKind {
    using Value = HANDLE;
    static Value none() { return nullptr; }
    static void release(Value mapping) { CloseHandle(mapping); }
};

struct FindKind {
    using Value = HANDLE;
    static Value none() { return INVALID_HANDLE_VALUE; }
    static void release(Value search) { FindClose(search); }
};

struct ModuleKind {
    using Value = HMODULE;
    static Value none() { return nullptr; }
    static void release(Value module) { FreeLibrary(module); }
};

struct TextKind {
    using Value = char*;
    static Value none() { return nullptr; }
    static void release(Value text) { std::free(text); }
};

using UniqueHandle = Owner<FileKind>;
using UniqueMapping = Owner<MappingKind>;
using UniqueFind = Owner<FindKind>;
using UniqueModule = Owner<ModuleKind>;
using UniqueText = Owner<TextKind>;  ///< a text from malloc or _strdup
