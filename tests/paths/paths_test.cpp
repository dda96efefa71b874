// Questions about paths, in both builds.
#include <gtest/gtest.h>
#include <jw32/paths.h>

#include "support/scratch_drives.h"

namespace {

struct Pair {
    const char *first, *second;
    bool equal;
};

TEST(Drive, IsEqualByTheRootAlone) {
    const std::string deep = "C:\\" + std::string(400, 'd');
    const Pair rows[] = {
        {"C:\\a", "c:\\b", true},
        {"C:", "C:\\x", true},
        {"C:\\a", "D:\\a", false},
        {"C", "C", false},
        {"C:\\a", nullptr, false},
        {nullptr, "C:\\a", false},
        {"", "C:\\a", false},
        {"a\\b", "a\\b", false},
        {"\\\\server\\share", "\\\\SERVER\\share\\a", true},
        {"\\\\server\\share\\a", "\\\\server\\other\\a", false},
        {deep.c_str(), "C:\\a", true},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Jw32DriveIsEqual(row.first, row.second) != 0, row.equal)
            << (row.first ? row.first : "null") << " and " << (row.second ? row.second : "null");
    }
}

TEST(Path, IsEqualByTheTextWhereNothingExists) {
    const std::string longName(255, 'n'), tooLong(256, 'n');
    const std::string fits = "Q:\\" + longName.substr(3), deep = "Q:\\a\\" + tooLong;
    const Pair rows[] = {
        {"Q:\\Dir\\Name", "q:\\dIR\\nAME", true},
        {"Q:\\a\\name", "Q:\\a\\name.", true},
        {"Q:\\a\\name", "Q:\\a\\name.txt", false},
        {"Q:\\Dir", "Q:\\Dir\\", false},
        {"Q:\\a\\name", "Q:\\b\\name", false},
        {"Q:\\a\\.\\b", "Q:\\a\\b", false},
        {"Q:\\a", "D:\\a", false},
        {"Q:", "Q:\\", true},
        {"a\\b", "a\\b", false},
        {nullptr, "Q:\\a", false},
        {fits.c_str(), fits.c_str(), true},
        {deep.c_str(), deep.c_str(), false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Jw32PathIsEqual(row.first, row.second), row.equal)
            << (row.first ? row.first : "null") << " and " << (row.second ? row.second : "null");
    }
}

class PathOfAFile : public ScratchDrives {};

TEST_F(PathOfAFile, IsEqualToItsShortForm) {
    const std::string path = c("A rather long name.extension");
    write(path, "");
    char shortForm[260] = "";
    ASSERT_GT(GetShortPathNameA(path.c_str(), shortForm, 260), 0u);
    ASSERT_NE(shortForm, path);
    EXPECT_EQ(Jw32PathIsEqual(path.c_str(), shortForm), 1);
    EXPECT_EQ(Jw32PathIsEqual(shortForm, c("another").c_str()), 0);
}

TEST(Path, IsValidByItsFormAndItsDrive) {
    const std::string deep = "C:\\" + std::string(300, 'd');
    struct {
        const char* path;
        int valid;
    } const rows[] = {
        {"C:\\", 1},
        {"C:\\missing\\file.txt", 1},
        {"C:\\a\\..\\b c", 1},
        {"C:\\a\\\\b", 0},
        {"\\\\server\\share\\a", 1},
        {"\\\\server\\share\\\\a", 1},
        {"C:a", 0},
        {"C:\\a:b", 0},
        {"C:\\a*b", 0},
        {"C:\\a?b", 0},
        {"C:\\a|b", 0},
        {"   ", 0},
        {"", 0},
        {nullptr, 0},
        {"Q:\\a", 0},
        {deep.c_str(), 0},
    };
    for (const auto& row : rows) {
        int removable = 7;
        EXPECT_EQ(Jw32PathIsValid(row.path, 0, &removable), row.valid)
            << (row.path ? row.path : "null");
        EXPECT_EQ(removable, 0);
        EXPECT_EQ(Jw32PathIsValid(row.path, 1, nullptr), row.valid);
    }
}

TEST(Device, IsReadyWhereItsVolumeAnswers) {
    EXPECT_NE(Jw32DeviceIsReady("C:\\"), 0);
    EXPECT_EQ(Jw32DeviceIsReady("Q:\\"), 0);
    const UINT mode = SetErrorMode(SEM_FAILCRITICALERRORS | 2);
    EXPECT_NE(Jw32DeviceIsReady(nullptr), 0);
    EXPECT_EQ(SetErrorMode(mode), UINT{SEM_FAILCRITICALERRORS | 2});
}

}  // namespace
