// How the call for large disks is looked up, and what is asked where it is missing. The answer
// holds for a process, so each of these runs in one of its own.
#include <jw32/free_space.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "machine/machine.h"
#include "paths/calls.h"
#include "support/triple.h"

namespace {

template <class Body>
void runInChild(Body body) {
    const pid_t child = ::fork();
    if (child == 0) {
        body();
        std::fflush(stdout);
        std::_Exit(testing::Test::HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0) << "the process failed";
}

// The machine of the tests with a drive K: that holds a file and has that many free bytes.
machine::Machine withFree(std::uint64_t bytes) {
    auto machine = machine::current();
    const auto folder = machine.drives.front().folder + "/drive";
    std::filesystem::create_directories(folder);
    std::ofstream(folder + "/file") << std::string(5000, 'x');
    machine.drives.push_back({.letter = 'K', .folder = folder, .capacity = bytes + 5000});
    return machine;
}

TEST(FreeSpaceLookup, IsMadeOnceForEachOfTheTwoCounts) {
    runInChild([] {
        machine::Script script;
        ULARGE_INTEGER bytes;
        DWORD megabytes;
        EXPECT_EQ(Jw32FreeDiskSpace("\\\\server\\share", &bytes), 0);
        EXPECT_EQ(Jw32FreeDiskSpaceMB("D:\\", nullptr), 0);
        EXPECT_EQ(Jw32FreeDiskSpace("C:\\a", &bytes), 1);
        EXPECT_EQ(Jw32FreeDiskSpaceMB("C:\\b", &megabytes), 1);
        EXPECT_EQ(Jw32FreeDiskSpaceMBC("C:\\c", &megabytes), 1);
        EXPECT_EQ(Jw32FreeDiskSpaceC("C:\\d", &bytes), 1);
        const std::string lookUp =
            R"(LoadLibraryA("KERNEL32.DLL") GetProcAddress(pointer, "GetDiskFreeSpaceExA") )";
        EXPECT_EQ(
            callsOf(script),
            R"(_splitpath_s("\\server\share") _splitpath_s("C:\a") )" + lookUp +
                R"(GetDiskFreeSpaceExA("C:") _splitpath_s("C:\b") GetDiskFreeSpaceExA("C:") )"
                R"(_splitpath_s("C:\c") )" +
                lookUp +
                R"(GetDiskFreeSpaceExA("C:") _splitpath_s("C:\d") GetDiskFreeSpaceExA("C:") )");
        EXPECT_EQ(machine::inUse().modules, 2u) << "the module stays";
    });
}

// All four operations are asked, and the two in bytes once more.
void ask(bool moduleComes, bool hasEntry, std::uint64_t free, DWORD freeMegabytes) {
    machine::Script script;
    if (!moduleComes) script.fail("LoadLibraryA", ERROR_MOD_NOT_FOUND, 0);
    if (!hasEntry) script.missing("kernel32.dll", "GetDiskFreeSpaceExA");
    const bool tellsBytes = moduleComes && hasEntry;
    ULARGE_INTEGER bytes, plain;
    DWORD megabytes, plainMegabytes;
    EXPECT_EQ(Jw32FreeDiskSpace("K:", &bytes) + Jw32FreeDiskSpaceC("K:\\a", &plain), 2);
    EXPECT_EQ(Jw32FreeDiskSpaceMB("K:", &megabytes) + Jw32FreeDiskSpaceMBC("K:", &plainMegabytes),
              2);
    EXPECT_EQ(bytes.QuadPart, tellsBytes ? free : free / 4096 * 4096);
    EXPECT_EQ(plain.QuadPart, bytes.QuadPart);
    EXPECT_EQ(megabytes, freeMegabytes) << free;
    EXPECT_EQ(plainMegabytes, freeMegabytes) << free;
    EXPECT_EQ(reported(Jw32FreeDiskSpace, "Q:", &bytes), Report(0, ERROR_PATH_NOT_FOUND));
    EXPECT_EQ(Jw32FreeDiskSpaceC("Q:", &plain), 0);
    EXPECT_EQ(script.texts().back(),
              tellsBytes ? R"(GetDiskFreeSpaceExA("Q:"))" : R"(GetDiskFreeSpaceA("Q:\"))");
    EXPECT_EQ(script.count("LoadLibraryA"), 2u) << "one each";
}

TEST(FreeSpaceLookup, IsNotRepeatedAndClustersAreCountedWithoutTheCall) {
    const std::pair<std::uint64_t, DWORD> rows[] = {
        {0, 0}, {1'048'575, 0}, {1'048'576, 1}, {2'097'151, 1}, {6'000'000'000, 5722}};
    for (const auto& [bytes, megabytes] : rows) {
        const machine::Installed installed(withFree(bytes));
        runInChild([&] { ask(true, true, bytes, megabytes); });
        runInChild([&] { ask(true, false, bytes, megabytes); });
        runInChild([&] { ask(false, true, bytes, megabytes); });
    }
}

}  // namespace
