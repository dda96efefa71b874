// Systems of all kinds, as machines.
#include <gtest/gtest.h>
#include <jw32/system_version.h>

#include "core/machine.h"
#include "core/testing.h"
#include "identification/nt_platform.h"

namespace {

using System = CJw32SystemVersionInfo;

struct Classified {
    DWORD platform, major, minor;
    System::eOperatingSystem kind;
};

constexpr Classified classified[] = {
    {0, 3, 11, System::eWin32S},   {0, 4, 0, System::eWin32S},    {1, 3, 95, System::eWin95},
    {1, 4, 0, System::eWin95},     {1, 4, 1, System::eWin98},     {1, 4, 10, System::eWin98},
    {1, 4, 89, System::eWin98},    {1, 4, 90, System::eWinME},    {1, 5, 0, System::eWinME},
    {2, 3, 51, System::eNT35},     {2, 4, 0, System::eNT40},      {2, 4, 99, System::eNT40},
    {2, 5, 0, System::eWin2000},   {2, 5, 1, System::eWinXP},     {2, 5, 2, System::eWinServer2003},
    {2, 5, 3, System::eUnknownOS}, {2, 6, 0, System::eWinVista},  {2, 10, 0, System::eWinVista},
    {2, 6, 1, System::eWin7},      {2, 6, 2, System::eUnknownOS}, {3, 6, 1, System::eUnknownOS},
    {2, ~0u, 1, System::eWin7},
};

// What the operation of each kind says, in the order of the kinds; eWin7 has none.
std::vector<int> answers(const System& system) {
    return {system.IsUnknownOS(), system.IsWin32S(),        system.IsWin95(),   system.IsWin98(),
            system.IsWinME(),     system.IsNT35(),          system.IsNT40(),    system.IsWin2000(),
            system.IsWinXP(),     system.IsWinServer2003(), system.IsWinVista()};
}

TEST(SystemVersion, ClassifiesByPlatformMajorAndMinor) {
    for (const auto& row : classified) {
        SCOPED_TRACE(testing::Message() << row.platform << " " << row.major << "." << row.minor);
        const machine::ScopedMachine computer(machine::Machine{
            .version = {.platform = row.platform, .major = row.major, .minor = row.minor}});
        const System system;
        EXPECT_EQ(system.GetOperatingSystem(), row.kind);
        EXPECT_EQ(system.IsWinNTPlatform(), row.platform == 2);
        EXPECT_EQ(Jw32IsNtPlatformNow(), row.platform == 2);
        std::vector<int> expected(11, 0);
        if (row.kind != System::eWin7) expected[row.kind] = 1;
        EXPECT_EQ(answers(system), expected);
    }
}

TEST(SystemVersion, CountsASingleUserTerminalServerAsNone) {
    constexpr std::uint16_t suites[] = {0x10, 0xFEFF, 0x110, 0x100, 0};
    for (const auto& mask : suites) {
        const machine::ScopedMachine computer(machine::Machine{.version = {.suiteMask = mask}});
        EXPECT_EQ(System().IsTerminalServer(), &mask - suites < 2) << mask;
    }
}

TEST(SystemVersion, FallsBackToTheSmallerRecordAndThenToNone) {
    const machine::ScopedMachine computer(machine::Machine{
        .version = {.major = 5, .minor = 1, .suiteMask = 0x10, .knowsExtendedRecord = false}});
    machine::Script script;
    EXPECT_EQ(System().GetOperatingSystem(), System::eWinXP);
    script.fail("GetVersionExA", ERROR_CALL_NOT_IMPLEMENTED, machine::everyCall);
    const System none;
    EXPECT_EQ(script.count("GetVersionExA"), 4u);
    EXPECT_EQ(none.IsUnknownOS(), 1);
    EXPECT_EQ(none.IsWinNTPlatform() + none.IsTerminalServer(), 0);
}

TEST(SystemVersion, CopiesWithoutAskingAgain) {
    const System source;
    System assigned;
    const machine::ScopedMachine other(
        machine::Machine{.version = {.platform = 1, .major = 4, .minor = 10}});
    machine::Script script;
    const System copy = source;
    assigned = source;
    EXPECT_EQ(script.count("GetVersionExA"), 0u);
    EXPECT_EQ(copy.GetOperatingSystem(), source.GetOperatingSystem());
    EXPECT_EQ(assigned.IsWinNTPlatform(), 1);
}

}  // namespace
