// Questions about paths, in both builds.
#include <gtest/gtest.h>
#include <jw32/paths.h>

#include "support/scratch_drives.h"

namespace {

struct Pair {
    const char *first, *second;
    int equal;
};

template <std::size_t Count>
void compares(int (*question)(const char*, const char*), const Pair (&pairs)[Count]) {
    for (const auto& pair : pairs) {
        EXPECT_EQ(question(pair.first, pair.second) != 0, pair.equal != 0)
            << pair.first << " and " << pair.second;
    }
}

TEST(Drive, IsEqualByTheRootAlone) {
    const std::string longPath = "C:\\" + std::string(400, 'd');
    const char *const deep = longPath.c_str(), *const share = "\\\\server\\share";
    const char *const below = "\\\\SERVER\\share\\a", *const other = "\\\\server\\other";
    const Pair pairs[] = {
        {"C:\\a", "c:\\b", 1}, {"C:", "C:\\x", 1},    {"C:\\a", "D:\\a", 0}, {"C", "C", 0},
        {"C:\\a", nullptr, 0}, {nullptr, "C:\\a", 0}, {"", "C:\\a", 0},      {"a\\b", "a\\b", 0},
        {share, below, 1},     {share, other, 0},     {deep, "C:\\a", 1},
    };
    compares(Jw32DriveIsEqual, pairs);
}

TEST(Path, IsEqualByTheTextWhereNothingExists) {
    const std::string longPath = "Q:\\" + std::string(252, 'n'), longName(256, 'n');
    const std::string withLongName = "Q:\\a\\" + longName;
    const char *const longest = longPath.c_str(), *const tooLong = withLongName.c_str();
    const Pair pairs[] = {
        {"Q:\\D\\M", "q:\\d\\m", 1}, {"Q:\\a\\m", "Q:\\a\\m.", 1}, {"Q:\\a\\m", "Q:\\a\\m.t", 0},
        {"Q:\\a", "Q:\\a\\", 0},     {"Q:\\a\\m", "Q:\\b\\m", 0},  {"Q:\\.\\b", "Q:\\b", 0},
        {"Q:\\a", "D:\\a", 0},       {"a\\b", "a\\b", 0},          {nullptr, "Q:\\a", 0},
        {longest, longest, 1},       {tooLong, tooLong, 0},
    };
    EXPECT_EQ(Jw32PathIsEqual("Q:", "Q:\\"), 1);
    compares(Jw32PathIsEqual, pairs);
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
    const auto judge = [](const char* path, int valid) {
        int removable = 7;
        EXPECT_EQ(Jw32PathIsValid(path, 0, &removable), valid) << path;
        EXPECT_EQ(removable, 0) << path;
        EXPECT_EQ(Jw32PathIsValid(path, 1, nullptr), valid) << path;
    };
    const char* const valid[] = {"C:\\", "C:\\no\\a.t", "C:\\..\\b c", "\\\\s\\t", "\\\\s\\t\\\\a"};
    const char* const refused[] = {"C:\\a\\\\b", "C:a", "C:\\a:b", "C:\\a*b", "C:\\a?b",
                                   "C:\\a|b",    " ",   "",        "Q:\\a"};
    for (const char* const path : valid) judge(path, 1);
    for (const char* const path : refused) judge(path, 0);
    judge(nullptr, 0);
    judge(("C:\\" + std::string(300, 'd')).c_str(), 0);
}

TEST(Device, IsReadyWhereItsVolumeAnswers) {
    EXPECT_NE(Jw32DeviceIsReady("C:\\"), 0);
    EXPECT_EQ(Jw32DeviceIsReady("Q:\\"), 0);
    const UINT mode = SetErrorMode(SEM_FAILCRITICALERRORS | 2);
    EXPECT_NE(Jw32DeviceIsReady(nullptr), 0);
    EXPECT_EQ(SetErrorMode(mode), UINT{SEM_FAILCRITICALERRORS | 2});
}

}  // namespace
