// Searches for files.
#include <dirent.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string_view>

#include "core/ansi.h"
#include "core/handles.h"
#include "core/script.h"
#include "fileapi.h"
#include "files/attributes.h"
#include "host/host_errors.h"
#include "names/lookup.h"
#include "names/short_names.h"
#include "names/wildcards.h"
#include "text/utf16.h"
#include "winerror.h"

namespace {

using machine::failWith;
using Directory = std::unique_ptr<DIR, int (*)(DIR*)>;

// A search with wildcards reads its folder; one for a single name has no folder and ends with it.
struct SearchObject : machine::KernelObject {
    static constexpr machine::ObjectKind objectKind = machine::ObjectKind::Search;

    SearchObject() : KernelObject(objectKind), directory(nullptr, ::closedir) {}

    std::string folder;
    std::u16string pattern;
    bool inRoot = false;  // a root has no "." and ".."
    Directory directory;

    bool next(WIN32_FIND_DATAW& record);
    bool wants(const dirent& entry) const;
};

template <std::size_t Size>
void storeText(WCHAR (&target)[Size], std::u16string_view text) {
    const auto length = std::min(text.size(), Size - 1);
    std::copy_n(text.begin(), length, target);
    target[length] = 0;
}

// Of the two reserved fields the first tells the kind of a link.
void fillRecord(WIN32_FIND_DATAW& record, const machine::HostName& host, std::u16string_view name) {
    std::memset(&record, 0, sizeof record);
    const auto times = machine::timesOf(host.status, host.birth);
    record.dwFileAttributes = machine::attributesOf(host.path, host.status);
    const bool isDirectory = (record.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    const bool isLink = (record.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    const std::uint64_t size = isDirectory ? 0 : static_cast<std::uint64_t>(host.status.st_size);
    if (isLink) record.dwReserved0 = IO_REPARSE_TAG_MOUNT_POINT;
    record.ftCreationTime = times.creation;
    record.ftLastAccessTime = times.access;
    record.ftLastWriteTime = times.write;
    record.nFileSizeHigh = static_cast<DWORD>(size >> 32);
    record.nFileSizeLow = static_cast<DWORD>(size);
    storeText(record.cFileName, name);
    if (!machine::isShortForm(name)) {
        storeText(record.cAlternateFileName, machine::shortNameOf(name));
    }
}

bool SearchObject::wants(const dirent& entry) const {
    const std::string_view hostName = entry.d_name;
    if (inRoot && (hostName == "." || hostName == "..")) return false;
    const auto name = machine::shownName(machine::fromUtf8(hostName));
    return machine::fitsPattern(name, pattern) ||
           machine::fitsPattern(machine::shortNameOf(name), pattern);
}

bool SearchObject::next(WIN32_FIND_DATAW& record) {
    while (const auto* const entry = directory == nullptr ? nullptr : ::readdir(directory.get())) {
        if (!wants(*entry)) continue;
        const auto host = machine::atHostPath(folder + "/" + entry->d_name);
        if (!host.exists()) continue;
        fillRecord(record, host, machine::shownName(machine::fromUtf8(entry->d_name)));
        return true;
    }
    return false;
}

HANDLE refuse(DWORD code) {
    return failWith(code, INVALID_HANDLE_VALUE);
}

HANDLE makeHandle(std::unique_ptr<SearchObject> search) {
    const HANDLE handle = machine::insertObject(std::move(search));
    return handle != nullptr ? handle : refuse(ERROR_TOO_MANY_OPEN_FILES);
}

HANDLE findOne(const machine::Path& path, WIN32_FIND_DATAW& record) {
    const auto found = machine::findOnHost(path);
    if (!found.exists()) return refuse(found.error);
    const auto name = found.path.substr(found.path.rfind('/') + 1);
    fillRecord(record, found, machine::shownName(machine::fromUtf8(name)));
    return makeHandle(std::make_unique<SearchObject>());
}

HANDLE findByPattern(const machine::Path& path, const std::u16string& pattern,
                     WIN32_FIND_DATAW& record) {
    const auto parent = machine::parentOf(path);
    const auto folder = machine::findOnHost(parent);
    if (!folder.exists() || !folder.isDirectory()) return refuse(ERROR_PATH_NOT_FOUND);
    auto search = std::make_unique<SearchObject>();
    search->folder = folder.path;
    search->pattern = pattern;
    search->inRoot = parent.isRoot();
    search->directory.reset(::opendir(folder.path.c_str()));
    if (search->directory == nullptr) return refuse(machine::codeOfHostError(errno));
    if (!search->next(record)) return refuse(ERROR_FILE_NOT_FOUND);
    return makeHandle(std::move(search));
}

template <std::size_t Size>
void storeAnsi(CHAR (&target)[Size], const WCHAR* text) {
    const auto ansi = machine::toAnsi(machine::fromWide(text));
    const auto length = ansi.copy(target, Size - 1);
    target[length] = '\0';
}

BOOL findNext(HANDLE handle, WIN32_FIND_DATAW& record) {
    const machine::Pinned<SearchObject> search(handle);
    if (!search) return failWith(ERROR_INVALID_HANDLE, FALSE);
    return search->next(record) ? TRUE : failWith(ERROR_NO_MORE_FILES, FALSE);
}

}  // namespace

HANDLE WINAPI FindFirstFileW(LPCWSTR name, LPWIN32_FIND_DATAW record) try {
    if (const auto scripted = machine::call("FindFirstFileW", name)) {
        return scripted.or_(INVALID_HANDLE_VALUE);
    }
    const auto path = machine::parsePath(name, machine::Wildcards::InLastComponent);
    if (const DWORD code = path.fileError()) return refuse(code);
    // A root, or a name with a separator behind it, asks for nothing inside the folder.
    if (path.isRoot() || path.trailingSeparator) return refuse(ERROR_FILE_NOT_FOUND);
    auto pattern = path.components.back();
    if (!machine::hasWildcards(pattern)) return findOne(path, *record);
    // A dot at the end counts in patterns only.
    if (machine::fromWide(name).ends_with(u'.')) pattern += u'.';
    return findByPattern(path, pattern, *record);
} catch (const std::exception&) {
    return machine::outOfMemory(INVALID_HANDLE_VALUE);
}

BOOL WINAPI FindNextFileW(HANDLE search, LPWIN32_FIND_DATAW record) try {
    if (const auto scripted = machine::call("FindNextFileW", search)) return scripted.or_(FALSE);
    return findNext(search, *record);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}

BOOL WINAPI FindNextFileA(HANDLE search, LPWIN32_FIND_DATAA record) try {
    if (const auto scripted = machine::call("FindNextFileA", search)) return scripted.or_(FALSE);
    WIN32_FIND_DATAW wide;
    if (!findNext(search, wide)) return FALSE;
    record->dwFileAttributes = wide.dwFileAttributes;
    record->ftCreationTime = wide.ftCreationTime;
    record->ftLastAccessTime = wide.ftLastAccessTime;
    record->ftLastWriteTime = wide.ftLastWriteTime;
    record->nFileSizeHigh = wide.nFileSizeHigh;
    record->nFileSizeLow = wide.nFileSizeLow;
    storeAnsi(record->cFileName, wide.cFileName);
    storeAnsi(record->cAlternateFileName, wide.cAlternateFileName);
    return TRUE;
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}

BOOL WINAPI FindClose(HANDLE handle) try {
    if (const auto scripted = machine::call("FindClose", handle)) return scripted.or_(FALSE);
    {
        const machine::Pinned<SearchObject> search(handle);
        if (!search) return failWith(ERROR_INVALID_HANDLE, FALSE);
    }
    return machine::closeObject(handle) ? TRUE : failWith(ERROR_INVALID_HANDLE, FALSE);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
