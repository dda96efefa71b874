// The table of open handles. A handle names a slot and the slot's generation, so that a stale or
// foreign handle is told from a live one. Lookups take no lock.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "windef.h"

namespace machine {

enum class ObjectKind { File, Search, Thread, Mapping };

// What a handle stands for.
class KernelObject {
  public:
    explicit KernelObject(ObjectKind kind) : kind_(kind) {}
    virtual ~KernelObject() = default;
    KernelObject(const KernelObject&) = delete;
    KernelObject& operator=(const KernelObject&) = delete;
    ObjectKind kind() const { return kind_; }

  private:
    const ObjectKind kind_;
};

// Null when the table is full.
HANDLE insertObject(std::unique_ptr<KernelObject> object);

// False: the handle is not open. An object in use ends when its last user lets go.
bool closeObject(HANDLE handle);

// What an open handle stands for.
std::optional<ObjectKind> kindOf(HANDLE handle);

namespace detail {
KernelObject* pinObject(HANDLE handle);
void unpinObject(HANDLE handle);
}  // namespace detail

// Keeps an object alive while an operation works on it. False when the handle is not open or stands
// for another kind of object.
template <class Object>
class Pinned {
  public:
    explicit Pinned(HANDLE handle) : handle_(handle), any_(detail::pinObject(handle)) {
        if (any_ != nullptr && any_->kind() == Object::objectKind) {
            object_ = static_cast<Object*>(any_);
        }
    }
    ~Pinned() {
        if (any_ != nullptr) detail::unpinObject(handle_);
    }
    Pinned(const Pinned&) = delete;
    Pinned& operator=(const Pinned&) = delete;

    explicit operator bool() const { return object_ != nullptr; }
    Object* operator->() const { return object_; }
    Object& operator*() const { return *object_; }

  private:
    HANDLE handle_;
    KernelObject* any_;
    Object* object_ = nullptr;
};

}  // namespace machine
