// Handles of several kinds, opened, used and closed by many threads at once.
#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <atomic>

#include "support/wide.h"
#include "threads/run_in_threads.h"

namespace {

HANDLE openFile() {
    return CreateFileA("NUL", GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
}
HANDLE openMapping() {
    return CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 1, nullptr);
}
HANDLE openThread() {
    return CreateThread(
        nullptr, 0, [](void*) -> DWORD { return 0; }, nullptr, 0, nullptr);
}
HANDLE openSearch() {
    WIN32_FIND_DATAW record;
    return FindFirstFileW(Wide("C:\\*"), &record);
}

bool isOpenSearch(HANDLE handle) {
    WIN32_FIND_DATAW record;
    return FindNextFileW(handle, &record) || GetLastError() == ERROR_NO_MORE_FILES;
}

// How many operations take the handle for one of theirs.
int usesOf(HANDLE handle) {
    char byte = 0;
    DWORD count = 0;
    void* const view = MapViewOfFile(handle, FILE_MAP_READ, 0, 0, 0);
    if (view != nullptr) UnmapViewOfFile(view);
    return ReadFile(handle, &byte, 1, &count, nullptr) + (view != nullptr) +
           (WaitForSingleObject(handle, 0) != WAIT_FAILED) + isOpenSearch(handle);
}

TEST(HandleTables, KnowWhatEachHandleIsForWhileOthersComeAndGo) {
    std::array<std::atomic<HANDLE>, 16> open{};
    std::atomic<unsigned> notUsed{0}, usedTwice{0}, notClosed{0};
    const auto close = [&](HANDLE handle) {
        if (handle != nullptr && CloseHandle(handle) + FindClose(handle) != 1) ++notClosed;
    };
    runInThreads([&](unsigned, std::size_t random) {
        constexpr std::array kinds = {openFile, openMapping, openThread, openSearch};
        const HANDLE own = kinds[random % kinds.size()]();
        if (usesOf(own) != 1) ++notUsed;
        close(open[(random >> 2) % open.size()].exchange(own));
        // Another thread may close this one at any moment: it is used, or refused.
        if (usesOf(open[(random >> 6) % open.size()]) > 1) ++usedTwice;
    });
    for (const auto& handle : open) close(handle);
    EXPECT_EQ(notUsed, 0u) << "a handle is for one of the four uses";
    EXPECT_EQ(usedTwice, 0u);
    EXPECT_EQ(notClosed, 0u) << "each handle was open once, in one table";
}

}  // namespace
