// What a drive tells of itself.
#include "contract_files.h"

namespace {

class Volumes : public ContractFiles {};

TEST_F(Volumes, HaveAKindByTheirRoot) {
    const std::pair<const char*, UINT> roots[] = {
        {"C:\\", DRIVE_FIXED},
        {"c:\\", DRIVE_FIXED},
        {"C:", DRIVE_FIXED},
        {nullptr, DRIVE_FIXED},
        {"Q:\\", DRIVE_NO_ROOT_DIR},
        {"", DRIVE_NO_ROOT_DIR},
        {"C:\\missing", DRIVE_NO_ROOT_DIR},
        {"nothing", DRIVE_NO_ROOT_DIR},
        {"\\", DRIVE_FIXED},
    };
    for (const auto& [root, kind] : roots) {
        EXPECT_EQ(GetDriveTypeA(root), kind) << (root == nullptr ? "null" : root);
    }
}

TEST_F(Volumes, AnswerByTheirRoot) {
    wchar_t label[260], system[260];
    DWORD serial = 0, longest = 0, flags = 0;
    ASSERT_TRUE(GetVolumeInformationW(L"C:\\", label, 260, &serial, &longest, &flags, system, 260));
    EXPECT_EQ(longest, 255u);
    EXPECT_EQ(flags & 2, 2u) << "keeps the case of names";
    EXPECT_GT(lstrlenW(system), 0);
    EXPECT_TRUE(GetVolumeInformationW(nullptr, nullptr, 0, nullptr, nullptr, nullptr, nullptr, 0))
        << "the volume of the current directory";
}

TEST_F(Volumes, DoNotAnswerToOtherNames) {
    const std::pair<std::string, DWORD> roots[] = {
        {"Q:\\", ERROR_PATH_NOT_FOUND},
        {"C:", ERROR_INVALID_NAME},
        {c() + "\\", ERROR_DIR_NOT_ROOT},
    };
    for (const auto& [root, code] : roots) {
        // Known difference: Wine does not need the backslash that is documented as required.
        if (root == "C:" && onWine()) continue;
        EXPECT_EQ(codeOf([&, name = Wide(root)] {
                      return GetVolumeInformationW(name, nullptr, 0, nullptr, nullptr, nullptr,
                                                   nullptr, 0);
                  }),
                  code)
            << root;
    }
}

}  // namespace
