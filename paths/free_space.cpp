// Free space of drives, by the call for large disks or by the one that counts in clusters.
#include "jw32/free_space.h"

#include <atomic>
#include <cstdlib>
#include <cstring>

#include "frame/entry_point.h"
#include "frame/error_triple.h"

namespace {

using LargeDiskCall = decltype(GetDiskFreeSpaceExA);

// The call for large disks, looked up once in the process. The module that has it is not released.
// Threads that come first together may each look it up: they find the same.
class LargeDiskEntry {
  public:
    LargeDiskCall* get() {
        if (!isLookedUp_.load(std::memory_order_acquire)) lookUp();
        return call_.load(std::memory_order_relaxed);
    }

  private:
    void lookUp() {
        if (const HMODULE module = LoadLibraryA("KERNEL32.DLL")) {
            call_.store(entryPoint<LargeDiskCall>(module, "GetDiskFreeSpaceExA"),
                        std::memory_order_relaxed);
        }
        isLookedUp_.store(true, std::memory_order_release);
    }

    std::atomic<bool> isLookedUp_{false};
    std::atomic<LargeDiskCall*> call_{nullptr};
};

constinit LargeDiskEntry entryWithTriple;
constinit LargeDiskEntry entryWithout;

// A drive letter and its colon, with room for a backslash. Empty for a path without a drive.
struct DriveText {
    char text[4] = "";
};

DriveText driveOf(const char* path) {
    DriveText drive;
    _splitpath_s(path, drive.text, sizeof drive.text, nullptr, 0, nullptr, 0, nullptr, 0);
    return drive;
}

bool askForBytes(LargeDiskCall* call, const DriveText& drive, ULARGE_INTEGER& available) {
    ULARGE_INTEGER total{};
    ULARGE_INTEGER free{};
    return call(drive.text, &available, &total, &free) != 0;
}

bool askForClusters(DriveText drive, ULARGE_INTEGER& available) {
    if (std::strlen(drive.text) == 2 && drive.text[1] == ':') {
        strcat_s(drive.text, sizeof drive.text, "\\");
    }
    DWORD sectorsPerCluster = 0;
    DWORD bytesPerSector = 0;
    DWORD freeClusters = 0;
    DWORD totalClusters = 0;
    if (!GetDiskFreeSpaceA(drive.text, &sectorsPerCluster, &bytesPerSector, &freeClusters,
                           &totalClusters)) {
        return false;
    }
    const DWORD clusterSize = bytesPerSector * sectorsPerCluster;
    available.QuadPart = ULONGLONG{clusterSize} * freeClusters;
    return true;
}

enum class Answer { Given, Refused, NoDrive };

// Refused: the platform's call failed, and the last error tells why.
Answer askFreeSpace(LargeDiskEntry& entry, const char* path, ULARGE_INTEGER* available) {
    if (path == nullptr || *path == '\0' || available == nullptr) return Answer::NoDrive;
    const auto drive = driveOf(path);
    if (drive.text[0] == '\0') return Answer::NoDrive;
    LargeDiskCall* const call = entry.get();
    const bool given =
        call != nullptr ? askForBytes(call, drive, *available) : askForClusters(drive, *available);
    return given ? Answer::Given : Answer::Refused;
}

DWORD megabytes(const ULARGE_INTEGER& bytes) {
    return static_cast<DWORD>(bytes.QuadPart >> 20);
}

}  // namespace

int Jw32FreeDiskSpace(const char* pszPath, ULARGE_INTEGER* pFree, DWORD* pdwError, char* pszError,
                      DWORD dwErrorSize) {
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    const auto answer = askFreeSpace(entryWithTriple, pszPath, pFree);
    if (answer == Answer::Refused) return triple.fail(0);
    return answer == Answer::Given ? 1 : 0;
}

int Jw32FreeDiskSpaceMB(const char* pszPath, DWORD* pdwFree, DWORD* pdwError, char* pszError,
                        DWORD dwErrorSize) {
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    if (pdwFree == nullptr) return 0;
    *pdwFree = 0;
    ULARGE_INTEGER bytes{};
    if (!Jw32FreeDiskSpace(pszPath, &bytes, pdwError, pszError, dwErrorSize)) {
        return triple.fail(0);
    }
    *pdwFree = megabytes(bytes);
    return 1;
}

int Jw32FreeDiskSpaceC(const char* pszPath, ULARGE_INTEGER* pFree) {
    return askFreeSpace(entryWithout, pszPath, pFree) == Answer::Given ? 1 : 0;
}

int Jw32FreeDiskSpaceMBC(const char* pszPath, DWORD* pdwFree) {
    if (pdwFree == nullptr) return 0;
    *pdwFree = 0;
    ULARGE_INTEGER bytes{};
    if (!Jw32FreeDiskSpaceC(pszPath, &bytes)) return 0;
    *pdwFree = megabytes(bytes);
    return 1;
}
