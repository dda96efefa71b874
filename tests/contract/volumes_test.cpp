// What a drive tells of itself.
#include "contract_files.h"

namespace {

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

}  // namespace
