// Many threads at once on what a process shares: open handles, named blocks, modules, names in one
// folder. What is left open at the end is a failure too, as is what the thread sanitizer finds.
#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <atomic>

#include "support/scratch_drives.h"
#include "threads/run_in_threads.h"

namespace {

TEST(Threads, ShareTheTableOfHandles) {
    std::array<std::atomic<HANDLE>, 16> open{};
    std::atomic<unsigned> notClosed{0}, notOpened{0};
    runInThreads([&](unsigned, std::size_t random) {
        const HANDLE file = CreateFileA("NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        nullptr, OPEN_EXISTING, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE) ++notOpened;
        const HANDLE former = open[random % open.size()].exchange(file);
        if (former != nullptr && !CloseHandle(former)) ++notClosed;
        // Another thread may close this one at any moment: it is read from, or refused.
        char byte = 0;
        DWORD count = 0;
        const HANDLE another = open[(random >> 4) % open.size()];
        if (another != nullptr) ReadFile(another, &byte, 1, &count, nullptr);
    });
    for (const auto& handle : open) {
        if (handle != nullptr && !CloseHandle(handle)) ++notClosed;
    }
    EXPECT_EQ(notOpened, 0u);
    EXPECT_EQ(notClosed, 0u) << "each handle was open once";
}

TEST(Threads, ShareNamedBlocks) {
    std::atomic<unsigned> failures{0};
    const auto stem = "jw32-test-" + std::to_string(GetCurrentProcessId()) + "-threads-";
    runInThreads([&](unsigned, std::size_t random) {
        const auto name = stem + std::to_string(random % 4);
        const HANDLE block = CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                                sizeof(LONG), name.c_str());
        void* const view = MapViewOfFile(block, FILE_MAP_WRITE, 0, 0, 0);
        const HANDLE opened = OpenFileMappingA(FILE_MAP_WRITE, FALSE, name.c_str());
        void* const another = MapViewOfFile(opened, FILE_MAP_WRITE, 0, 0, 0);
        if (view == nullptr || another == nullptr) {
            ++failures;
        } else {
            std::atomic_ref(*static_cast<LONG*>(view)).fetch_add(1);
            if (std::atomic_ref(*static_cast<LONG*>(another)).load() < 1) ++failures;
        }
        for (void* const mapped : {view, another}) UnmapViewOfFile(mapped);
        for (const HANDLE handle : {block, opened}) CloseHandle(handle);
    });
    EXPECT_EQ(failures, 0u) << "an open block is found by its name, and is the same memory";
}

TEST(Threads, ShareModules) {
    std::atomic<unsigned> failures{0};
    runInThreads([&](unsigned, std::size_t random) {
        constexpr std::array names = {"kernel32.dll", "shell32.dll", "KERNEL32"};
        const HMODULE module = LoadLibraryA(names[random % names.size()]);
        const bool isShell = random % names.size() == 1;
        const char* const entry = isShell ? "SHGetFolderPathA" : "GetVersionExA";
        if (GetProcAddress(module, entry) == nullptr) ++failures;
        if (!FreeLibrary(module)) ++failures;
    });
    EXPECT_EQ(failures, 0u);
}

DWORD WINAPI addOne(void* counter) {
    ++*static_cast<std::atomic<unsigned>*>(counter);
    return 0;
}

TEST(Threads, StartAndEndWhileModulesComeAndGo) {
    std::atomic<unsigned> started{0}, ran{0};
    runInThreads([&](unsigned number, std::size_t) {
        if (number % 2 == 0) {
            FreeLibrary(LoadLibraryA("shell32.dll"));
            return;
        }
        const HANDLE thread = CreateThread(nullptr, 0, addOne, &ran, 0, nullptr);
        if (thread == nullptr) return;
        ++started;
        EXPECT_EQ(WaitForSingleObject(thread, INFINITE), DWORD{WAIT_OBJECT_0});
        CloseHandle(thread);
    });
    EXPECT_GT(started, 0u);
    EXPECT_EQ(ran, started);
}

using ThreadsInAFolder = ScratchDrives;

TEST_F(ThreadsInAFolder, FindTheirOwnNamesInAnyCase) {
    std::atomic<unsigned> notMade{0}, notFound{0}, notGone{0};
    runInThreads([&](unsigned number, std::size_t random) {
        const auto suffix = std::to_string(number) + "-" + std::to_string(random % 50);
        const auto name = c("name-" + suffix), another = c("NAME-" + suffix);
        const HANDLE file =
            CreateFileA(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE) ++notMade;
        CloseHandle(file);
        if (!exists(another)) ++notFound;
        if (!DeleteFileW(Wide(another)) || exists(name)) ++notGone;
    });
    EXPECT_EQ(notMade, 0u);
    EXPECT_EQ(notFound, 0u);
    EXPECT_EQ(notGone, 0u);
}

}  // namespace
