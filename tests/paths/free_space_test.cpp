// Free space of drives, in both builds.
#include <gmock/gmock.h>
#include <jw32/free_space.h>

#include "support/kept_modules.h"
#include "support/triple.h"

namespace {

class FreeSpace : public KeepsModules {
  protected:
    // The results of the four operations, each of which is the same number.
    int ask(const char* path) {
        bytes_.QuadPart = 4711;
        const int results[] = {first_.of(Jw32FreeDiskSpace, path, &bytes_),
                               Jw32FreeDiskSpaceC(path, &plain_),
                               second_.of(Jw32FreeDiskSpaceMB, path, &megabytes_),
                               Jw32FreeDiskSpaceMBC(path, &plainMegabytes_)};
        EXPECT_THAT(results, testing::Each(results[0])) << path;
        return results[0];
    }
    ULARGE_INTEGER bytes_{}, plain_{};
    DWORD megabytes_ = 7, plainMegabytes_ = 7;
    Triple first_, second_;
};

TEST_F(FreeSpace, IsThatOfTheDriveForAnyPathBelowIt) {
    for (const char* const path : {"C:", "C:\\", "c:\\no\\such\\dir", "C:relative", "C:*?"}) {
        EXPECT_EQ(ask(path), 1) << path;
        EXPECT_TRUE(first_.isClear() && second_.isClear()) << first_ << second_;
        EXPECT_GT(bytes_.QuadPart, 1u << 20) << "the drive seems to be full";
        // Others write to the host's disk at the same time.
        const auto whole = static_cast<double>(bytes_.QuadPart);
        EXPECT_NEAR(static_cast<double>(plain_.QuadPart), whole, whole / 4);
        EXPECT_NEAR(1048576.0 * megabytes_, whole, whole / 4);
        EXPECT_NEAR(1048576.0 * plainMegabytes_, whole, whole / 4);
    }
}

TEST_F(FreeSpace, NeedsADriveThatExists) {
    for (const char* const path : {"", "relative", "\\rooted", "\\\\server\\share\\a",
                                   static_cast<const char*>(nullptr), "Q:\\a"}) {
        const bool hasDrive = path != nullptr && path[0] == 'Q';
        SetLastError(ERROR_NOT_READY);
        EXPECT_EQ(ask(path), 0) << path;
        EXPECT_TRUE(hasDrive ? first_.tells(ERROR_PATH_NOT_FOUND) : first_.isClear()) << first_;
        // In megabytes the thread's last error is told, whatever it is about.
        EXPECT_TRUE(second_.tells(hasDrive ? ERROR_PATH_NOT_FOUND : ERROR_NOT_READY)) << second_;
        EXPECT_EQ(bytes_.QuadPart, 4711u) << path;
        EXPECT_EQ(megabytes_ + plainMegabytes_, 0u) << path;
    }
}

TEST_F(FreeSpace, NeedsAPlaceForTheResult) {
    SetLastError(ERROR_NOT_READY);
    EXPECT_EQ(first_.of(Jw32FreeDiskSpace, "C:\\", nullptr), 0);
    EXPECT_EQ(second_.of(Jw32FreeDiskSpaceMB, "C:\\", nullptr), 0);
    EXPECT_TRUE(first_.isClear() && second_.isClear()) << first_ << second_;
    EXPECT_EQ(Jw32FreeDiskSpaceC("C:\\", nullptr), 0);
    EXPECT_EQ(Jw32FreeDiskSpaceMBC("C:\\", nullptr), 0);
}

}  // namespace
