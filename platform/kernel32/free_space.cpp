// Free space of drives, in bytes and in clusters.
#include <cstdint>

#include "core/script.h"
#include "fileapi.h"
#include "files/disk_space.h"
#include "host/host_errors.h"
#include "names/wide_argument.h"
#include "winerror.h"

namespace {

using machine::failWith;

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

BOOL WINAPI GetDiskFreeSpaceExA(LPCSTR directory, PULARGE_INTEGER available, PULARGE_INTEGER total,
                                PULARGE_INTEGER free) try {
    if (const auto scripted = machine::call("GetDiskFreeSpaceExA", directory)) {
        return scripted.or_(FALSE);
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
    if (const auto scripted = machine::call("GetDiskFreeSpaceA", root)) return scripted.or_(FALSE);
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
