// What a drive tells of itself.
#include "contract_files.h"

namespace {

using Volumes = ContractFiles;

TEST_F(Volumes, AnswerByTheirRoot) {
    for (const char* const root : {"c:\\", "C:", "\\"}) {
        EXPECT_EQ(GetDriveTypeA(root), UINT{DRIVE_FIXED}) << root;
    }
    for (const char* const root : {"Q:\\", "", "C:\\missing", "nothing"}) {
        EXPECT_EQ(GetDriveTypeA(root), UINT{DRIVE_NO_ROOT_DIR}) << root;
    }
    wchar_t text[MAX_PATH];
    DWORD longest = 0;
    const auto codeOfRoot = [&](const std::string& root) {
        return codeOf(GetVolumeInformationW(Wide(root), nullptr, 0, nullptr, &longest, nullptr,
                                            text, MAX_PATH));
    };
    EXPECT_EQ(codeOfRoot("C:\\"), 0u);
    EXPECT_EQ(longest, 255u);
    EXPECT_NE(text[0], 0);
    EXPECT_EQ(codeOfRoot("Q:\\"), noPath);
    EXPECT_EQ(codeOfRoot(c() + "\\"), DWORD{ERROR_DIR_NOT_ROOT});
    // Known difference: Wine does not need the backslash that is documented as required.
    EXPECT_EQ(codeOfRoot("C:"), onWine() ? 0 : badName);
}

}  // namespace
