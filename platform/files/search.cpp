// Searches for files.
#include "files/search.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>

#include "core/in_use.h"
#include "files/attributes.h"
#include "host/host_errors.h"
#include "names/lookup.h"
#include "names/short_names.h"
#include "names/wildcards.h"
#include "text/utf16.h"
#include "winerror.h"
#include "winnt.h"

namespace machine {

namespace {

// Above all handles that CloseHandle closes.
constinit HandleTable openSearches(std::uintptr_t{1} << 34);
const CountedTable counted("searches", [] { return openSearches.count(); });

template <std::size_t Size>
void storeText(WCHAR (&target)[Size], std::u16string_view text) {
    const auto length = std::min(text.size(), Size - 1);
    std::copy_n(text.begin(), length, target);
    target[length] = 0;
}

// Of the two reserved fields the first tells the kind of a link.
void fillRecord(WIN32_FIND_DATAW& record, const HostName& host, std::u16string_view name) {
    std::memset(&record, 0, sizeof record);
    const auto times = timesOf(host.status, host.birth);
    record.dwFileAttributes = attributesOf(host.path, host.status);
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
    if (!isShortForm(name)) {
        storeText(record.cAlternateFileName, shortNameOf(name));
    }
}

StartedSearch refuse(DWORD code) {
    return {nullptr, code};
}

StartedSearch findOne(const Path& path, WIN32_FIND_DATAW& record) {
    const auto found = findOnHost(path);
    if (!found.exists()) return refuse(found.error);
    const auto name = found.path.substr(found.path.rfind('/') + 1);
    fillRecord(record, found, shownName(fromUtf8(name)));
    return {std::make_unique<SearchObject>(), ERROR_SUCCESS};
}

StartedSearch findByPattern(const Path& path, const std::u16string& pattern,
                            WIN32_FIND_DATAW& record) {
    const auto parent = parentOf(path);
    const auto folder = findOnHost(parent);
    if (!folder.exists() || !folder.isDirectory()) return refuse(ERROR_PATH_NOT_FOUND);
    auto search = std::make_unique<SearchObject>();
    search->folder = folder.path;
    search->pattern = pattern;
    search->inRoot = parent.isRoot();
    search->directory.reset(::opendir(folder.path.c_str()));
    if (search->directory == nullptr) return refuse(codeOfHostError(errno));
    if (!search->next(record)) return refuse(ERROR_FILE_NOT_FOUND);
    return {std::move(search), ERROR_SUCCESS};
}

}  // namespace

HandleTable& searches() {
    return openSearches;
}

bool SearchObject::wants(const dirent& entry) const {
    const std::string_view hostName = entry.d_name;
    if (inRoot && (hostName == "." || hostName == "..")) return false;
    const auto name = shownName(fromUtf8(hostName));
    return fitsPattern(name, pattern) || fitsPattern(shortNameOf(name), pattern);
}

bool SearchObject::next(WIN32_FIND_DATAW& record) {
    while (const auto* const entry = directory == nullptr ? nullptr : ::readdir(directory.get())) {
        if (!wants(*entry)) continue;
        const auto host = atHostPath(folder + "/" + entry->d_name);
        if (!host.exists()) continue;
        fillRecord(record, host, shownName(fromUtf8(entry->d_name)));
        return true;
    }
    return false;
}

StartedSearch startSearch(const Path& path, bool endsInDot, WIN32_FIND_DATAW& record) {
    if (const DWORD code = path.fileError()) return refuse(code);
    // A root, or a name with a separator behind it, asks for nothing inside the folder.
    if (path.isRoot() || path.trailingSeparator) return refuse(ERROR_FILE_NOT_FOUND);
    auto pattern = path.components.back();
    if (!hasWildcards(pattern)) return findOne(path, record);
    if (endsInDot) pattern += u'.';
    return findByPattern(path, pattern, record);
}

}  // namespace machine
