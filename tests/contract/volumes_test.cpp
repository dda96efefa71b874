// What a drive tells of itself and of its free space.
#include "contract_files.h"

namespace {

constexpr DWORD noPath = ERROR_PATH_NOT_FOUND, badName = ERROR_INVALID_NAME;

TEST(Volumes, AnswerByTheirRoot) {
    const std::pair<const char*, UINT> kinds[] = {
        {"c:\\", DRIVE_FIXED},       {"C:", DRIVE_FIXED},     {"\\", DRIVE_FIXED},
        {"Q:\\", DRIVE_NO_ROOT_DIR}, {"", DRIVE_NO_ROOT_DIR}, {"C:\\missing", DRIVE_NO_ROOT_DIR}};
    for (const auto& [root, kind] : kinds) EXPECT_EQ(GetDriveTypeA(root), kind) << root;
    wchar_t text[MAX_PATH];
    DWORD longest = 0;
    const auto codeOfRoot = [&](const char* root) {
        return codeOf(GetVolumeInformationW(Wide(root), nullptr, 0, nullptr, &longest, nullptr,
                                            text, MAX_PATH));
    };
    EXPECT_EQ(codeOfRoot("C:\\"), 0u);
    EXPECT_EQ(longest, 255u);
    EXPECT_NE(text[0], 0);
    EXPECT_EQ(codeOfRoot("Q:\\"), noPath);
    EXPECT_EQ(codeOfRoot("C:\\Windows\\"), DWORD{ERROR_DIR_NOT_ROOT});
    // Known difference: Wine does not need the backslash that is documented as required.
    EXPECT_EQ(codeOfRoot("C:"), onWine() ? 0 : badName);
}

TEST(Volumes, TellTheSameFreeSpaceInClustersAsInBytes) {
    ULARGE_INTEGER available{}, total{}, free{};
    DWORD sectors = 0, size = 0, freeClusters = 0, clusters = 0;
    for (const char* const drive : {"C:\\", "c:", static_cast<const char*>(nullptr), "C:"}) {
        ASSERT_TRUE(GetDiskFreeSpaceExA(drive, &available, &total, &free)) << drive;
        EXPECT_TRUE(available.QuadPart > 0 && available.QuadPart <= free.QuadPart) << drive;
        EXPECT_LE(free.QuadPart, total.QuadPart) << drive;
    }
    ASSERT_TRUE(GetDiskFreeSpaceA("C:\\", &sectors, &size, &freeClusters, &clusters));
    EXPECT_EQ(size, 512u);
    const double cluster = 1.0 * size * sectors, whole = static_cast<double>(total.QuadPart);
    EXPECT_NEAR(cluster * clusters, whole, whole / 100);
    // Others write to the host's disk at the same time.
    EXPECT_NEAR(cluster * freeClusters, static_cast<double>(available.QuadPart), whole / 8);
    EXPECT_EQ(codeOf(GetDiskFreeSpaceA("Q:\\", &sectors, &size, &freeClusters, &clusters)), noPath);
    EXPECT_EQ(codeOf(GetDiskFreeSpaceExA("Q:", &available, &total, &free)), noPath);
}

}  // namespace
