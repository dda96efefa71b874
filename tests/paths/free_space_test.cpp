// Free space of drives, in both builds.
#include <gtest/gtest.h>
#include <jw32/free_space.h>

#include "support/triple.h"

namespace {

class FreeSpace : public testing::Test {
  protected:
    // Takes back the module that each of the two lookups keeps for the life of the process.
    static void TearDownTestSuite() {
        const HMODULE module = GetModuleHandleA("KERNEL32.DLL");
        for (int lookup = 0; lookup < 2; ++lookup) FreeLibrary(module);
    }
    // The four operations give one result; those with a triple tell a code each.
    void ask(const char* path, int result, DWORD code = 0, DWORD last = 0) {
        EXPECT_EQ(reported(Jw32FreeDiskSpace, path, &bytes_), Report(result, code)) << path;
        EXPECT_EQ(Jw32FreeDiskSpaceC(path, &plain_), result) << path;
        SetLastError(ERROR_NOT_READY);
        EXPECT_EQ(reported(Jw32FreeDiskSpaceMB, path, &megabytes_), Report(result, last)) << path;
        EXPECT_EQ(Jw32FreeDiskSpaceMBC(path, &plainMegabytes_), result) << path;
    }
    ULARGE_INTEGER bytes_{}, plain_{};
    DWORD megabytes_ = 7, plainMegabytes_ = 7;
};

TEST_F(FreeSpace, IsThatOfTheDriveForAnyPathBelowIt) {
    for (const char* const path : {"C:", "c:\\no\\such\\dir", "C:relative", "C:*?"}) {
        ask(path, 1);
        EXPECT_GT(bytes_.QuadPart, 1u << 20) << "the drive seems to be full";
        // Others write to the host's disk at the same time.
        const auto whole = static_cast<double>(bytes_.QuadPart);
        EXPECT_NEAR(static_cast<double>(plain_.QuadPart), whole, whole / 4);
        EXPECT_NEAR(1048576.0 * megabytes_, whole, whole / 4);
        EXPECT_NEAR(1048576.0 * plainMegabytes_, whole, whole / 4);
    }
}

TEST_F(FreeSpace, NeedsADriveThatExistsAndAPlaceForTheResult) {
    ask("Q:\\a", 0, ERROR_PATH_NOT_FOUND, ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(megabytes_ + plainMegabytes_, 0u);
    for (const char* const path :
         {"", "relative", "\\rooted", "\\\\server\\share\\a", static_cast<const char*>(nullptr)}) {
        // In megabytes the thread's last error is told, whatever it is about.
        ask(path, 0, 0, ERROR_NOT_READY);
    }
    EXPECT_EQ(bytes_.QuadPart + plain_.QuadPart, 0u) << "something is stored";
    SetLastError(ERROR_NOT_READY);
    EXPECT_EQ(reported(Jw32FreeDiskSpace, "C:\\", nullptr), Report(0));
    EXPECT_EQ(reported(Jw32FreeDiskSpaceMB, "C:\\", nullptr), Report(0));
    EXPECT_EQ(Jw32FreeDiskSpaceC("C:\\", nullptr) + Jw32FreeDiskSpaceMBC("C:\\", nullptr), 0);
}

}  // namespace
