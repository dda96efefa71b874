// The system that the test runs on, in both builds.
#include <gtest/gtest.h>
#include <jw32/system_version.h>

TEST(SystemVersion, KnowsThisSystem) {
    OSVERSIONINFOA asked{};
    asked.dwOSVersionInfoSize = sizeof asked;
    ASSERT_TRUE(GetVersionExA(&asked));
    const CJw32SystemVersionInfo system;
    EXPECT_EQ(system.IsWinNTPlatform(), asked.dwPlatformId == VER_PLATFORM_WIN32_NT);
    EXPECT_EQ(system.IsTerminalServer(), 0);
    if (asked.dwMajorVersion > 5 && asked.dwMinorVersion == 1) {
        EXPECT_EQ(system.GetOperatingSystem(), CJw32SystemVersionInfo::eWin7);
    }
}
