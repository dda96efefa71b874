// Mappings of files and named blocks, and views of them.
#include <utility>

#include "core/ansi.h"
#include "core/handles.h"
#include "core/script.h"
#include "handleapi.h"
#include "host/host_errors.h"
#include "memory/address_space.h"
#include "memory/mapping.h"
#include "memory/view.h"
#include "memoryapi.h"
#include "winbase.h"
#include "winerror.h"
#include "winnt.h"

namespace {

using machine::failWith;

constexpr LPVOID none = nullptr;

HANDLE refuse(DWORD code) {
    return failWith(code, HANDLE{nullptr});
}

HANDLE insert(machine::MadeMapping made) {
    if (made.mapping == nullptr) return refuse(made.code);
    const HANDLE handle = machine::handles().insert(std::move(made.mapping));
    return handle != nullptr ? failWith(made.code, handle) : refuse(ERROR_TOO_MANY_OPEN_FILES);
}

HANDLE create(HANDLE file, DWORD protection, std::uint64_t size, LPCSTR name) {
    if (protection != PAGE_READONLY && protection != PAGE_READWRITE) {
        return refuse(ERROR_INVALID_PARAMETER);
    }
    const bool writes = protection == PAGE_READWRITE, named = name != nullptr && *name != '\0';
    if (size > INT64_MAX) return refuse(ERROR_INVALID_PARAMETER);
    if (file != INVALID_HANDLE_VALUE) {
        if (named) return refuse(ERROR_NOT_SUPPORTED);
        const machine::Pinned<machine::FileObject> pinned(file);
        return pinned ? insert(machine::mapFile(*pinned, writes, size))
                      : refuse(ERROR_INVALID_HANDLE);
    }
    if (size == 0) return refuse(ERROR_INVALID_PARAMETER);
    return insert(named ? machine::mapNewBlock(machine::fromAnsi(name), size)
                        : machine::mapMemory(writes, size));
}

}  // namespace

HANDLE WINAPI CreateFileMappingA(HANDLE file, LPSECURITY_ATTRIBUTES security, DWORD protection,
                                 DWORD sizeHigh, DWORD sizeLow, LPCSTR name) try {
    if (const auto scripted = machine::call<&CreateFileMappingA>(file, security, protection,
                                                                 sizeHigh, sizeLow, name)) {
        return scripted.valueOr(nullptr);
    }
    return create(file, protection, (std::uint64_t{sizeHigh} << 32) | sizeLow, name);
} catch (const std::exception&) {
    return machine::outOfMemory(HANDLE{nullptr});
}

HANDLE WINAPI OpenFileMappingA(DWORD access, BOOL inherit, LPCSTR name) try {
    if (const auto scripted = machine::call<&OpenFileMappingA>(access, inherit, name)) {
        return scripted.valueOr(nullptr);
    }
    if (name == nullptr) return refuse(ERROR_INVALID_PARAMETER);
    return insert(machine::mapExistingBlock(machine::fromAnsi(name)));
} catch (const std::exception&) {
    return machine::outOfMemory(HANDLE{nullptr});
}

LPVOID WINAPI MapViewOfFile(HANDLE handle, DWORD access, DWORD offsetHigh, DWORD offsetLow,
                            SIZE_T length) try {
    if (const auto scripted =
            machine::call<&MapViewOfFile>(handle, access, offsetHigh, offsetLow, length)) {
        return scripted.valueOr(none);
    }
    const machine::Pinned<machine::MappingObject> mapping(handle);
    if (!mapping) return failWith(ERROR_INVALID_HANDLE, none);
    const std::uint64_t offset = (std::uint64_t{offsetHigh} << 32) | offsetLow;
    const auto view = machine::makeView(*mapping, access, {offset, length});
    return view.address != nullptr ? view.address : failWith(view.code, none);
} catch (const std::exception&) {
    return machine::outOfMemory(none);
}

BOOL WINAPI UnmapViewOfFile(LPCVOID view) try {
    const auto unmap = [=] { return machine::views().release(const_cast<LPVOID>(view)); };
    if (const auto scripted = machine::release<&UnmapViewOfFile>(unmap, view)) {
        return scripted.valueOr(FALSE);
    }
    return unmap() ? TRUE : failWith(ERROR_INVALID_ADDRESS, FALSE);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
