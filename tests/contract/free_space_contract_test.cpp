// What the library expects of the calls for free space.
#include <gtest/gtest.h>
#include <windows.h>

namespace {

TEST(FreeSpaceContract, ClustersTellTheSameAsBytesOfADriveThatExists) {
    ULARGE_INTEGER available{}, total{}, free{};
    DWORD sectors = 0, sectorSize = 0, freeClusters = 0, totalClusters = 0;
    for (const char* const drive : {"C:\\", "c:", static_cast<const char*>(nullptr), "C:"}) {
        ASSERT_TRUE(GetDiskFreeSpaceExA(drive, &available, &total, &free)) << drive;
        EXPECT_GT(available.QuadPart, 0u) << drive;
        EXPECT_LE(available.QuadPart, free.QuadPart) << drive;
        EXPECT_LE(free.QuadPart, total.QuadPart) << drive;
    }
    ASSERT_TRUE(GetDiskFreeSpaceA("C:\\", &sectors, &sectorSize, &freeClusters, &totalClusters));
    EXPECT_EQ(sectorSize, 512u);
    const double cluster = 1.0 * sectorSize * sectors, whole = static_cast<double>(total.QuadPart);
    EXPECT_NEAR(cluster * totalClusters, whole, whole / 100);
    // Others write to the host's disk at the same time.
    EXPECT_NEAR(cluster * freeClusters, static_cast<double>(available.QuadPart), whole / 8);
    SetLastError(0);
    EXPECT_FALSE(GetDiskFreeSpaceExA("Q:", &available, &total, &free));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
    SetLastError(0);
    EXPECT_FALSE(GetDiskFreeSpaceA("Q:\\", &sectors, &sectorSize, &freeClusters, &totalClusters));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
}

}  // namespace
