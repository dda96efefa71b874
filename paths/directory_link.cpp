// Directories that stand for other directories.
#include <windows.h>

#include <winioctl.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>

#include "frame/entry_point.h"
#include "frame/multibyte.h"
#include "frame/name_conversion.h"
#include "frame/owner.h"
#include "jw32/directory_links.h"

namespace {

// REPARSE_DATA_BUFFER in its mount-point form, as Microsoft documents it: the substitute name with
// its terminator, and behind it an empty print name with its own.
struct MountPoint {
    DWORD ReparseTag;
    WORD ReparseDataLength;
    WORD Reserved;
    WORD SubstituteNameOffset;  // offsets from PathBuffer and lengths in bytes
    WORD SubstituteNameLength;
    WORD PrintNameOffset;
    WORD PrintNameLength;
    wchar_t PathBuffer[382];
};
static_assert(sizeof(MountPoint) == 780 && offsetof(MountPoint, PathBuffer) == 16);

constexpr WORD headerSize = offsetof(MountPoint, SubstituteNameOffset);
constexpr WORD terminatorSize = sizeof(wchar_t);

struct FullPath {
    wchar_t text[MAX_PATH] = {};
    DWORD length = 0;
};

bool isEmpty(const char* path) {
    return path == nullptr || *path == '\0';
}

// Asks the volume of the text up to the first backslash. A text that is no root has none.
bool liesWhereLinksCan(const char* link) {
    const char* const backslash = multibyte::find(link, '\\');
    if (backslash == nullptr) return false;
    char root[MAX_PATH] = "";
    const auto length = static_cast<std::size_t>(backslash - link) + 1;
    if (length >= sizeof root) return false;
    multibyte::copy(root, link, length);
    DWORD longestComponent = 0;
    DWORD flags = 0;
    return GetVolumeInformationW(Jw32WideName(root), nullptr, 0, nullptr, &longestComponent, &flags,
                                 nullptr, 0) &&
           (flags & FILE_SUPPORTS_REPARSE_POINTS) != 0;
}

// A path that does not fit counts as one that cannot be had.
bool findFullPath(decltype(GetFullPathNameW)* call, const char* path, FullPath& full) {
    wchar_t* lastPart = nullptr;
    full.length = call(Jw32WideName(path), MAX_PATH, full.text, &lastPart);
    return full.length != 0 && full.length < MAX_PATH;
}

// The call is looked up, and its module released again.
bool findFullPaths(const char* link, const char* target, FullPath& fullLink, FullPath& fullTarget) {
    const UniqueModule kernel(LoadLibraryA("Kernel32.dll"));
    if (!kernel) return false;
    auto* const call = entryPoint<decltype(GetFullPathNameW)>(kernel.get(), "GetFullPathNameW");
    return call != nullptr && findFullPath(call, target, fullTarget) &&
           findFullPath(call, link, fullLink);
}

// The mount point for a target. None: its name is too long.
std::optional<MountPoint> mountPointFor(const FullPath& target) {
    constexpr wchar_t prefix[] = {'\\', '?', '?', '\\'};
    MountPoint point{};
    DWORD length = static_cast<DWORD>(std::size(prefix)) + target.length;
    if (length >= MAX_PATH) return std::nullopt;
    wchar_t* const name = point.PathBuffer;
    std::copy_n(target.text, target.length, std::copy(std::begin(prefix), std::end(prefix), name));
    // A drive root keeps its backslash.
    if (name[length - 1] == '\\' && name[length - 2] != ':') name[--length] = 0;
    point.ReparseTag = IO_REPARSE_TAG_MOUNT_POINT;
    point.SubstituteNameLength = static_cast<WORD>(length * sizeof(wchar_t));
    point.PrintNameOffset = static_cast<WORD>(point.SubstituteNameLength + terminatorSize);
    point.ReparseDataLength = static_cast<WORD>(offsetof(MountPoint, PathBuffer) - headerSize +
                                                point.PrintNameOffset + terminatorSize);
    return point;
}

bool send(HANDLE directory, MountPoint point) {
    DWORD unused = 0;
    return DeviceIoControl(directory, FSCTL_SET_REPARSE_POINT, &point,
                           DWORD{point.ReparseDataLength} + headerSize, nullptr, 0, &unused,
                           nullptr) != 0;
}

HANDLE openDirectory(const wchar_t* path) {
    return CreateFileW(path, GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                       FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

bool placeLink(const wchar_t* link, const MountPoint& point, bool dryRun) {
    const bool made = CreateDirectoryW(link, nullptr) != 0;
    if (!made && GetLastError() != ERROR_ALREADY_EXISTS) return false;
    // The value of a failure has all bits set.
    if ((GetFileAttributesW(link) & FILE_ATTRIBUTE_REPARSE_POINT) != 0) return false;
    bool placed = false;
    {
        const UniqueFile directory(openDirectory(link));
        if (!directory) return false;
        placed = !dryRun && send(directory.get(), point);
    }
    // Only now: a directory that is open without sharing does not go.
    if (!placed && made) RemoveDirectoryW(link);
    return placed || dryRun;
}

}  // namespace

int Jw32MakeDirectoryLink(const char* pszLink, const char* pszTarget, int bDryRun) {
    if (isEmpty(pszLink) || isEmpty(pszTarget)) return 0;
    if (!liesWhereLinksCan(pszLink)) return 0;
    FullPath link;
    FullPath target;
    if (!findFullPaths(pszLink, pszTarget, link, target)) return 0;
    const auto point = mountPointFor(target);
    if (!point) return 0;
    return placeLink(link.text, *point, bDryRun != 0) ? 1 : 0;
}
