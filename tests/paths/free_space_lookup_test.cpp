// How the call for large disks is looked up, and what is asked where it is missing. The answer
// holds for a process, so each of these runs in one of its own.
#include <jw32/free_space.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "core/machine.h"
#include "support/calls.h"
#include "support/triple.h"

namespace {

// The machine of the tests with a drive K: that holds a file and has that many free bytes.
machine::Machine withFree(std::uint64_t bytes) {
    auto machine = machine::current();
    const auto folder = machine.drives.front().folder + "/drive";
    std::filesystem::create_directories(folder);
    std::ofstream(folder + "/file") << std::string(5000, 'x');
    machine.drives.push_back({.letter = 'K', .folder = folder, .capacity = bytes + 5000});
    return machine;
}

// Ends the process, with 0 if all is as it should be.
void ask(bool moduleComes, bool hasEntry, std::uint64_t free, DWORD freeMegabytes) {
    machine::Script script;
    if (!moduleComes) script.fail("LoadLibraryA", ERROR_MOD_NOT_FOUND, machine::everyCall);
    if (!hasEntry) script.missing("kernel32.dll", "GetDiskFreeSpaceExA");
    const bool tellsBytes = moduleComes && hasEntry;
    ULARGE_INTEGER bytes, plain;
    DWORD megabytes, plainMegabytes;
    EXPECT_EQ(Jw32FreeDiskSpace("\\\\s\\share", &bytes) + Jw32FreeDiskSpaceMB("K:", nullptr), 0);
    EXPECT_EQ(Jw32FreeDiskSpaceMB("K:", &megabytes) + Jw32FreeDiskSpace("K:\\a", &bytes), 2);
    EXPECT_EQ(Jw32FreeDiskSpaceMBC("K:", &plainMegabytes) + Jw32FreeDiskSpaceC("K:\\b", &plain), 2);
    EXPECT_EQ(megabytes, freeMegabytes);
    EXPECT_EQ(plainMegabytes, freeMegabytes);
    EXPECT_EQ(bytes.QuadPart, tellsBytes ? free : free / 4096 * 4096);
    EXPECT_EQ(plain.QuadPart, bytes.QuadPart);
    std::string lookUp = R"(LoadLibraryA("KERNEL32.DLL") )";
    if (moduleComes) lookUp += R"(GetProcAddress(pointer, "GetDiskFreeSpaceExA") )";
    const std::string asked =
        tellsBytes ? R"(GetDiskFreeSpaceExA("K:", pointer, pointer, pointer) )"
                   : R"(GetDiskFreeSpaceA("K:\", pointer, pointer, pointer, pointer) )";
    const auto split = [](const std::string& path) {
        return "_splitpath_s(\"" + path + "\", pointer, 4, null, 0, null, 0, null, 0) ";
    };
    EXPECT_EQ(callsOf(script), split("\\\\s\\share") + split("K:") + lookUp + asked +
                                   split("K:\\a") + asked + split("K:") + lookUp + asked +
                                   split("K:\\b") + asked);
    EXPECT_EQ(reported(Jw32FreeDiskSpace, "Q:", &bytes), Report(0, ERROR_PATH_NOT_FOUND));
    EXPECT_EQ(Jw32FreeDiskSpaceC("Q:", &plain), 0);
    EXPECT_EQ(machine::inUse()["module references"], moduleComes ? 2u : 0u) << "the module stays";
    std::exit(testing::Test::HasFailure());
}

TEST(FreeSpaceLookup, IsMadeOnceForEachCountAndClustersAreCountedWithoutTheCall) {
    const std::pair<std::uint64_t, DWORD> rows[] = {
        {0, 0}, {1'048'575, 0}, {1'048'576, 1}, {2'097'151, 1}, {4'096'000, 3}, {1ULL << 33, 8192}};
    for (const auto& [bytes, megabytes] : rows) {
        const machine::ScopedMachine scoped(withFree(bytes));
        EXPECT_EXIT(ask(true, true, bytes, megabytes), testing::ExitedWithCode(0), "");
        EXPECT_EXIT(ask(true, false, bytes, megabytes), testing::ExitedWithCode(0), "");
        EXPECT_EXIT(ask(false, true, bytes, megabytes), testing::ExitedWithCode(0), "");
    }
}

}  // namespace
