// What the library expects of the calls for free space.
#include <gtest/gtest.h>
#include <windows.h>

#include "support/last_error.h"

namespace {

TEST(FreeSpaceContract, ClustersTellTheSameAsBytesOfADriveThatExists) {
    ULARGE_INTEGER available{}, total{}, free{};
    DWORD sectors = 0, sectorSize = 0, freeClusters = 0, totalClusters = 0;
    for (const char* const drive : {"C:\\", "c:", static_cast<const char*>(nullptr), "C:"}) {
        ASSERT_TRUE(GetDiskFreeSpaceExA(drive, &available, &total, &free)) << drive;
        EXPECT_TRUE(available.QuadPart > 0 && available.QuadPart <= free.QuadPart) << drive;
        EXPECT_LE(free.QuadPart, total.QuadPart) << drive;
    }
    const auto clusters = [&](const char* root) {
        return GetDiskFreeSpaceA(root, &sectors, &sectorSize, &freeClusters, &totalClusters);
    };
    ASSERT_TRUE(clusters("C:\\"));
    EXPECT_EQ(sectorSize, 512u);
    const double cluster = 1.0 * sectorSize * sectors, whole = static_cast<double>(total.QuadPart);
    EXPECT_NEAR(cluster * totalClusters, whole, whole / 100);
    // Others write to the host's disk at the same time.
    EXPECT_NEAR(cluster * freeClusters, static_cast<double>(available.QuadPart), whole / 8);
    EXPECT_EQ(codeOf(clusters("Q:\\")), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(codeOf(GetDiskFreeSpaceExA("Q:", &available, &total, &free)),
              DWORD{ERROR_PATH_NOT_FOUND});
}

}  // namespace
