// How the call for large disks is looked up, and what is asked where it is missing. The answer holds
// for a process, so each of these runs in one of its own.
#include <gmock/gmock.h>
#include <jw32/free_space.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "machine/machine.h"
#include "machine/testing.h"
#include "support/triple.h"

namespace {

using testing::ElementsAre;

template <class Body>
void runInChild(Body body) {
    const pid_t child = ::fork();
    if (child == 0) {
        body();
        std::fflush(stdout);
        std::_Exit(testing::Test::HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << "the process failed";
}

// The machine of the tests with drives of the given capacities, in order from K:, each with an
// empty folder.
machine::Machine withDrives(std::initializer_list<std::uint64_t> capacities) {
    auto machine = machine::current();
    char letter = 'K';
    for (const auto capacity : capacities) {
        const auto folder = machine.drives.front().folder + "-" + letter;
        std::filesystem::create_directories(folder);
        machine.drives.push_back({.letter = letter++, .folder = folder, .capacity = capacity});
    }
    return machine;
}

TEST(FreeSpaceLookup, IsMadeOnceForEachOfTheTwoCounts) {
    runInChild([] {
        machine::Script script;
        ULARGE_INTEGER bytes;
        DWORD megabytes;
        EXPECT_EQ(Jw32FreeDiskSpace("\\\\server\\share", &bytes), 0);
        EXPECT_EQ(Jw32FreeDiskSpaceC("\\\\server\\share", &bytes), 0);
        EXPECT_EQ(Jw32FreeDiskSpaceMB("", &megabytes), 0);
        EXPECT_EQ(Jw32FreeDiskSpaceMB("C:\\", nullptr), 0);
        EXPECT_THAT(script.names(), ElementsAre("_splitpath_s", "_splitpath_s", "GetLastError"));
        EXPECT_EQ(Jw32FreeDiskSpace("C:\\a", &bytes), 1);
        EXPECT_EQ(Jw32FreeDiskSpaceMB("C:\\a", &megabytes), 1);
        const auto calls = script.calls();
        ASSERT_EQ(calls.size(), 9u);
        EXPECT_EQ(calls[4].text(), "LoadLibraryA(\"KERNEL32.DLL\")");
        EXPECT_EQ(calls[5].text(), "GetProcAddress(pointer, \"GetDiskFreeSpaceExA\")");
        EXPECT_EQ(calls[6].text(), "GetDiskFreeSpaceExA(\"C:\")");
        EXPECT_EQ(calls[8].text(), "GetDiskFreeSpaceExA(\"C:\")");
        EXPECT_EQ(Jw32FreeDiskSpaceC("C:\\a", &bytes), 1);
        EXPECT_EQ(Jw32FreeDiskSpaceMBC("C:\\a", &megabytes), 1);
        EXPECT_EQ(script.count("LoadLibraryA"), 2u);
        EXPECT_EQ(script.count("FreeLibrary"), 0u);
        EXPECT_EQ(machine::inUse().modules, 2u);
    });
}

TEST(FreeSpaceLookup, IsNotRepeatedWhenTheCallIsMissing) {
    runInChild([] {
        machine::Script script;
        script.missing("kernel32.dll", "GetDiskFreeSpaceExA");
        ULARGE_INTEGER bytes;
        EXPECT_EQ(Jw32FreeDiskSpace("C:\\a", &bytes), 1);
        EXPECT_EQ(Jw32FreeDiskSpace("C:\\a", &bytes), 1);
        EXPECT_EQ(script.count("GetProcAddress"), 1u);
        EXPECT_EQ(script.count("GetDiskFreeSpaceA"), 2u);
        EXPECT_EQ(script.calls().back().text(), "GetDiskFreeSpaceA(\"C:\\\")");
        EXPECT_EQ(Jw32FreeDiskSpaceC("C:\\a", &bytes), 1);
        EXPECT_EQ(script.count("GetProcAddress"), 2u) << "the twin looks for itself";
    });
}

TEST(FreeSpaceLookup, IsNotRepeatedWhenTheModuleDidNotCome) {
    runInChild([] {
        machine::Script script;
        script.fail("LoadLibraryA", ERROR_MOD_NOT_FOUND);
        ULARGE_INTEGER bytes;
        EXPECT_EQ(Jw32FreeDiskSpace("C:\\a", &bytes), 1);
        EXPECT_EQ(Jw32FreeDiskSpace("C:\\a", &bytes), 1);
        EXPECT_EQ(script.count("LoadLibraryA"), 1u);
        EXPECT_EQ(script.count("GetProcAddress"), 0u);
        EXPECT_EQ(script.count("GetDiskFreeSpaceA"), 2u);
    });
}

TEST(FreeSpaceLookup, WithoutTheCallClustersAreCounted) {
    const machine::Installed installed(withDrives({4'096'000, 6'000'000'000}));
    runInChild([] {
        machine::Script script;
        script.missing("kernel32.dll", "GetDiskFreeSpaceExA");
        ULARGE_INTEGER bytes, plain;
        EXPECT_EQ(Jw32FreeDiskSpace("K:\\", &bytes), 1);
        EXPECT_EQ(Jw32FreeDiskSpaceC("K:\\", &plain), 1);
        EXPECT_EQ(bytes.QuadPart, 512u * 8 * 1000);
        EXPECT_EQ(plain.QuadPart, 512u * 8 * 1000);
        EXPECT_EQ(Jw32FreeDiskSpace("L:\\", &bytes), 1);
        EXPECT_EQ(bytes.QuadPart, 6'000'000'000 / 4096 * 4096);
        Triple triple;
        EXPECT_EQ(Jw32FreeDiskSpace("Q:\\", &bytes, &triple.code, triple.text, triple.size), 0);
        EXPECT_TRUE(triple.tells(ERROR_PATH_NOT_FOUND)) << triple;
        EXPECT_EQ(Jw32FreeDiskSpaceC("Q:\\", &bytes), 0);
    });
}

TEST(FreeSpaceLookup, MegabytesAreRoundedDown) {
    const machine::Installed installed(
        withDrives({0, 1'048'575, 1'048'576, 2'097'151, 5'000'000'000'000}));
    runInChild([] {
        struct {
            const char* path;
            DWORD megabytes;
        } const rows[] = {{"K:", 0}, {"L:", 0}, {"M:", 1}, {"N:", 1}, {"O:", 4'768'371}};
        for (const auto& row : rows) {
            DWORD megabytes = 7, plain = 7;
            EXPECT_EQ(Jw32FreeDiskSpaceMB(row.path, &megabytes), 1) << row.path;
            EXPECT_EQ(Jw32FreeDiskSpaceMBC(row.path, &plain), 1) << row.path;
            EXPECT_EQ(megabytes, row.megabytes) << row.path;
            EXPECT_EQ(plain, row.megabytes) << row.path;
        }
    });
}

TEST(FreeSpaceLookup, FilesTakeFromTheCapacityOfTheirDrive) {
    const machine::Installed installed(withDrives({1'000'000}));
    const auto folder = machine::current().drives.back().folder + "/sub";
    std::filesystem::create_directories(folder);
    std::ofstream(folder + "/file") << std::string(400'000, 'x');
    runInChild([] {
        ULARGE_INTEGER bytes;
        EXPECT_EQ(Jw32FreeDiskSpace("K:", &bytes), 1);
        EXPECT_EQ(bytes.QuadPart, 600'000u);
    });
    std::filesystem::remove_all(folder);
}

}  // namespace
