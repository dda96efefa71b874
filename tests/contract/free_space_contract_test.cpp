// What the library expects of the calls for free space.
#include <gtest/gtest.h>
#include <windows.h>

namespace {

struct Bytes {
    ULARGE_INTEGER available{}, total{}, free{};
};

TEST(FreeSpaceContract, TheCallForLargeDisksIsFoundByName) {
    const HMODULE module = LoadLibraryA("KERNEL32.DLL");
    ASSERT_NE(module, nullptr);
    EXPECT_NE(GetProcAddress(module, "GetDiskFreeSpaceExA"), nullptr);
    EXPECT_EQ(GetProcAddress(module, "GetDiskFreeSpaceExQ"), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PROC_NOT_FOUND});
    EXPECT_TRUE(FreeLibrary(module));
}

TEST(FreeSpaceContract, TakesADriveWithAndWithoutItsBackslash) {
    for (const char* const drive : {"C:", "C:\\", "c:", static_cast<const char*>(nullptr)}) {
        Bytes bytes;
        ASSERT_TRUE(GetDiskFreeSpaceExA(drive, &bytes.available, &bytes.total, &bytes.free));
        EXPECT_GT(bytes.available.QuadPart, 0u);
        EXPECT_LE(bytes.available.QuadPart, bytes.free.QuadPart);
        EXPECT_LE(bytes.free.QuadPart, bytes.total.QuadPart);
    }
}

TEST(FreeSpaceContract, ClustersTellTheSameAsBytes) {
    Bytes bytes;
    DWORD sectorsPerCluster = 0, bytesPerSector = 0, freeClusters = 0, totalClusters = 0;
    ASSERT_TRUE(GetDiskFreeSpaceExA("C:", &bytes.available, &bytes.total, &bytes.free));
    ASSERT_TRUE(GetDiskFreeSpaceA("C:\\", &sectorsPerCluster, &bytesPerSector, &freeClusters,
                                  &totalClusters));
    EXPECT_EQ(bytesPerSector, 512u);
    const double cluster = 1.0 * bytesPerSector * sectorsPerCluster;
    const auto total = static_cast<double>(bytes.total.QuadPart);
    EXPECT_NEAR(cluster * totalClusters, total, total / 100);
    // Others write to the host's disk at the same time.
    EXPECT_NEAR(cluster * freeClusters, static_cast<double>(bytes.available.QuadPart), total / 8);
}

TEST(FreeSpaceContract, AMissingDriveIsAMissingPath) {
    Bytes bytes;
    DWORD number = 0;
    SetLastError(0);
    EXPECT_FALSE(GetDiskFreeSpaceExA("Q:", &bytes.available, &bytes.total, &bytes.free));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
    SetLastError(0);
    EXPECT_FALSE(GetDiskFreeSpaceA("Q:\\", &number, &number, &number, &number));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
}

}  // namespace
