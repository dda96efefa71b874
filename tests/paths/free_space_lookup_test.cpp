// How the call for large disks is looked up, and what is asked where it is missing. The answer
// holds for a process, so each of these runs in one of its own.
#include <gmock/gmock.h>
#include <jw32/free_space.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "machine/machine.h"
#include "support/failure_sweep.h"

namespace {

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

struct Capacity {
    std::uint64_t bytes;
    DWORD megabytes;
};
constexpr Capacity capacities[] = {{0, 0},         {1'048'575, 0}, {1'048'576, 1},
                                   {2'097'151, 1}, {4'096'000, 3}, {6'000'000'000, 5722}};

// The machine of the tests with drives of the capacities, from K: on, on the same empty folder.
machine::Machine withDrives() {
    auto machine = machine::current();
    const auto folder = machine.drives.front().folder + "/empty";
    std::filesystem::create_directories(folder);
    char letter = 'K';
    for (const auto& [bytes, megabytes] : capacities) {
        machine.drives.push_back({.letter = letter++, .folder = folder, .capacity = bytes});
    }
    return machine;
}

TEST(FreeSpaceLookup, IsMadeOnceForEachOfTheTwoCounts) {
    runInChild([] {
        machine::Script script;
        ULARGE_INTEGER bytes;
        DWORD megabytes;
        EXPECT_EQ(Jw32FreeDiskSpace("\\\\server\\share", &bytes), 0);
        EXPECT_EQ(Jw32FreeDiskSpaceMB("C:\\", nullptr), 0);
        EXPECT_EQ(Jw32FreeDiskSpace("C:\\a", &bytes), 1);
        EXPECT_EQ(Jw32FreeDiskSpaceMB("C:\\a", &megabytes), 1);
        EXPECT_EQ(Jw32FreeDiskSpaceC("C:\\a", &bytes), 1);
        EXPECT_EQ(Jw32FreeDiskSpaceMBC("C:\\a", &megabytes), 1);
        const char *const split = "_splitpath_s(\"C:\\a\")", *const ask =
                                                                 "GetDiskFreeSpaceExA(\"C:\")";
        const char* const load = "LoadLibraryA(\"KERNEL32.DLL\")";
        const char* const lookUp = "GetProcAddress(pointer, \"GetDiskFreeSpaceExA\")";
        EXPECT_THAT(script.texts(),
                    testing::ElementsAre("_splitpath_s(\"\\\\server\\share\")", split, load, lookUp,
                                         ask, split, ask, split, load, lookUp, ask, split, ask));
        EXPECT_EQ(machine::inUse().modules, 2u);
    });
}

TEST(FreeSpaceLookup, IsNotRepeatedWithoutTheCallAndClustersAreCounted) {
    const machine::Installed installed(withDrives());
    for (const bool moduleComes : {true, false}) {
        runInChild([moduleComes] {
            machine::Script script;
            script.missing("kernel32.dll", "GetDiskFreeSpaceExA");
            if (!moduleComes) script.fail("LoadLibraryA", ERROR_MOD_NOT_FOUND);
            ULARGE_INTEGER bytes, plain;
            EXPECT_EQ(Jw32FreeDiskSpace("O:", &bytes), 1);
            EXPECT_EQ(script.texts().back(), "GetDiskFreeSpaceA(\"O:\\\")");
            EXPECT_EQ(bytes.QuadPart, 512u * 8 * 1000);
            EXPECT_EQ(Jw32FreeDiskSpace("P:\\a", &bytes), 1);
            EXPECT_EQ(bytes.QuadPart, 6'000'000'000 / 4096 * 4096);
            EXPECT_EQ(script.count("LoadLibraryA"), 1u);
            EXPECT_EQ(Jw32FreeDiskSpaceC("P:\\", &plain), 1);
            EXPECT_EQ(plain.QuadPart, bytes.QuadPart);
            EXPECT_EQ(script.count("GetProcAddress"), moduleComes ? 2u : 1u) << "one each";
            Triple triple;
            EXPECT_EQ(triple.of(Jw32FreeDiskSpace, "Q:\\", &bytes), 0);
            EXPECT_TRUE(triple.tells(ERROR_PATH_NOT_FOUND)) << triple;
            EXPECT_EQ(Jw32FreeDiskSpaceC("Q:\\", &bytes), 0);
        });
    }
}

TEST(FreeSpaceLookup, CountsWhatFilesLeaveAndRoundsMegabytesDown) {
    const machine::Installed installed(withDrives());
    runInChild([] {
        char path[] = "K:";
        for (const auto& capacity : capacities) {
            DWORD megabytes = 7, plain = 7;
            EXPECT_EQ(Jw32FreeDiskSpaceMB(path, &megabytes), 1) << path;
            EXPECT_EQ(Jw32FreeDiskSpaceMBC(path, &plain), 1) << path;
            EXPECT_EQ(megabytes, capacity.megabytes) << path;
            EXPECT_EQ(plain, capacity.megabytes) << path;
            ++path[0];
        }
        const auto file = machine::current().drives.back().folder + "/file";
        std::ofstream(file) << std::string(96'000, 'x');
        ULARGE_INTEGER bytes;
        EXPECT_EQ(Jw32FreeDiskSpace("O:", &bytes), 1);
        EXPECT_EQ(bytes.QuadPart, 4'000'000u);
        std::filesystem::remove(file);
    });
}

TEST(FreeSpaceLookup, FailuresAreReported) {
    const auto inBytes = [](Triple& t) {
        ULARGE_INTEGER bytes;
        return Outcome{!t.of(Jw32FreeDiskSpace, "C:\\", &bytes)};
    };
    const auto inMegabytes = [](Triple& t) {
        DWORD megabytes;
        return Outcome{!t.of(Jw32FreeDiskSpaceMB, "C:\\", &megabytes)};
    };
    runInChild([&] {
        Triple first;  // the lookup is made once and leaves its module loaded
        EXPECT_FALSE(inBytes(first).failed);
        sweepFailures({"Jw32FreeDiskSpace", [&] { return inBytes; }, {}, {{"_splitpath_s", 0}}});
        sweepFailures({"Jw32FreeDiskSpaceMB", [&] { return inMegabytes; }});
    });
}

}  // namespace
