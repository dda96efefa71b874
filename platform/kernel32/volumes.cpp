// Drives: their kind, what their volume tells, and their free space.
#include <algorithm>
#include <cstdint>

#include "core/script.h"
#include "fileapi.h"
#include "files/disk_space.h"
#include "host/host_errors.h"
#include "names/lookup.h"
#include "names/wide_argument.h"
#include "text/utf16.h"
#include "winerror.h"

namespace {

using machine::failWith;

constexpr DWORD longestComponentLength = 255;

bool endsInBackslash(LPCWSTR text) {
    const auto wide = machine::fromWide(text);
    return !wide.empty() && (wide.back() == u'\\' || wide.back() == u'/');
}

machine::Path rootOrCurrent(LPCWSTR root) {
    auto path = root != nullptr ? machine::parsePath(root) : machine::currentDirectory();
    if (root == nullptr) path.components.clear();
    return path;
}

bool storeText(const std::string& text, LPWSTR buffer, DWORD size) {
    if (buffer == nullptr) return true;
    const auto wide = machine::fromUtf8(text);
    if (wide.size() >= size) return false;
    std::copy(wide.begin(), wide.end(), buffer);
    buffer[wide.size()] = 0;
    return true;
}

void storeNumber(LPDWORD target, DWORD value) {
    if (target != nullptr) *target = value;
}

constexpr DWORD sectorSize = 512;

// A null directory stands for the current one.
DWORD findSpace(LPCSTR directory, machine::DiskSpace& space) {
    const auto path = directory == nullptr ? machine::currentDirectory()
                                           : machine::parsePath(machine::WideArgument(directory));
    return machine::findDiskSpace(path, space);
}

template <class Target, class Value>
void store(Target* target, Value value) {
    if (target != nullptr) *target = value;
}

void storeBytes(PULARGE_INTEGER target, std::uint64_t bytes) {
    if (target != nullptr) target->QuadPart = bytes;
}

// Whole sectors, and so large that the counts of a large drive fit in 32 bits.
std::uint64_t clusterSizeFor(const machine::DiskSpace& space) {
    std::uint64_t size = sectorSize;
    while (size < space.clusterSize || space.total / size > UINT32_MAX) size *= 2;
    return size;
}

}  // namespace

// A root may come without its backslash here. What names no drive has no root directory.
UINT WINAPI GetDriveTypeA(LPCSTR root) try {
    if (const auto scripted = machine::query<&GetDriveTypeA>(root)) return scripted.value();
    std::string text = root == nullptr ? "" : root;
    if (text.size() == 2 && text[1] == ':') text += '\\';
    const machine::WideArgument wide(root == nullptr ? nullptr : text.c_str());
    const auto path = rootOrCurrent(wide);
    // A drive without a medium is a drive all the same.
    if (path.error == ERROR_NOT_READY && text.size() == 3) {
        return static_cast<UINT>(machine::current().drive(text[0])->kind);
    }
    if (path.error != 0 || !path.isRoot()) return DRIVE_NO_ROOT_DIR;
    return path.drive != nullptr ? static_cast<UINT>(path.drive->kind) : DRIVE_REMOTE;
} catch (const std::exception&) {
    return machine::outOfMemory(DRIVE_NO_ROOT_DIR);
}

BOOL WINAPI GetVolumeInformationW(LPCWSTR root, LPWSTR label, DWORD labelSize, LPDWORD serial,
                                  LPDWORD longestComponent, LPDWORD flags, LPWSTR fileSystem,
                                  DWORD systemSize) try {
    if (const auto scripted = machine::call<&GetVolumeInformationW>(
            root, label, labelSize, serial, longestComponent, flags, fileSystem, systemSize)) {
        return scripted.valueOr(FALSE);
    }
    const auto path = rootOrCurrent(root);
    if (path.error != 0) return failWith(path.error, FALSE);
    if (root != nullptr && !endsInBackslash(root)) return failWith(ERROR_INVALID_NAME, FALSE);
    if (!path.isRoot()) return failWith(ERROR_DIR_NOT_ROOT, FALSE);
    if (!machine::findOnHost(path).exists()) return failWith(ERROR_NOT_READY, FALSE);
    const machine::Drive share{.letter = 0, .folder = {}, .label = "Share"};
    const auto& drive = path.drive != nullptr ? *path.drive : share;
    if (!storeText(drive.label, label, labelSize) ||
        !storeText(drive.fileSystem, fileSystem, systemSize)) {
        return failWith(ERROR_MORE_DATA, FALSE);
    }
    storeNumber(serial, drive.serial);
    storeNumber(longestComponent, longestComponentLength);
    storeNumber(flags, drive.fileSystemFlags);
    return TRUE;
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}

BOOL WINAPI GetDiskFreeSpaceExA(LPCSTR directory, PULARGE_INTEGER available, PULARGE_INTEGER total,
                                PULARGE_INTEGER free) try {
    if (const auto scripted =
            machine::call<&GetDiskFreeSpaceExA>(directory, available, total, free)) {
        return scripted.valueOr(FALSE);
    }
    machine::DiskSpace space;
    if (const DWORD code = findSpace(directory, space)) return failWith(code, FALSE);
    storeBytes(available, space.available);
    storeBytes(total, space.total);
    storeBytes(free, space.free);
    return TRUE;
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}

BOOL WINAPI GetDiskFreeSpaceA(LPCSTR root, LPDWORD sectorsPerCluster, LPDWORD bytesPerSector,
                              LPDWORD freeClusters, LPDWORD totalClusters) try {
    if (const auto scripted = machine::call<&GetDiskFreeSpaceA>(
            root, sectorsPerCluster, bytesPerSector, freeClusters, totalClusters)) {
        return scripted.valueOr(FALSE);
    }
    machine::DiskSpace space;
    if (const DWORD code = findSpace(root, space)) return failWith(code, FALSE);
    const auto cluster = clusterSizeFor(space);
    store(sectorsPerCluster, static_cast<DWORD>(cluster / sectorSize));
    store(bytesPerSector, sectorSize);
    store(freeClusters, static_cast<DWORD>(space.available / cluster));
    store(totalClusters, static_cast<DWORD>(space.total / cluster));
    return TRUE;
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
