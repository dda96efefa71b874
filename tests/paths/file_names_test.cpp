// Rules for single file names.
#include <gtest/gtest.h>
#include <windows.h>

#include <jw32/file_names.h>
#include <shlwapi.h>

#include <string>

namespace {

TEST(FileName, IsValidByItsCharactersAlone) {
    struct {
        const char* name;
        int valid;
    } const rows[] = {
        {nullptr, 0},    {"", 0},    {"   ", 0}, {" a", 1},   {"a ", 1},
        {".", 1},        {"CON", 1}, {"a?b", 0}, {"a*b", 0},  {"a\\b", 0},
        {"a:b", 0},      {"a/b", 0}, {"a|b", 0}, {"a\tb", 0}, {"a+[b]", 1},
        {"name.txt", 1}, {"a<", 0},  {"a>", 0},  {"a\"", 0},  {"\xE4~", 1},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Jw32FilenameIsValid(row.name), row.valid) << (row.name ? row.name : "null");
    }
    EXPECT_EQ(Jw32FilenameIsValid(std::string(5000, 'a').c_str()), 1);
}

TEST(FileName, ReplacesWhatTheMaskDoesNotAllow) {
    struct {
        const char* name;
        unsigned mask;
        const char* replaced;
        unsigned count;
    } const rows[] = {
        {"a?b*c", GCT_LFNCHAR | GCT_SHORTCHAR, "a_b_c", 2},
        {"a?b*c", GCT_LFNCHAR | GCT_SHORTCHAR | GCT_WILD, "a?b*c", 0},
        {"C:\\a b", GCT_LFNCHAR | GCT_SHORTCHAR | GCT_SEPARATOR, "C:\\a b", 0},
        {"C:\\a b", GCT_LFNCHAR | GCT_SHORTCHAR, "C__a b", 2},
        {" a,b;", GCT_SHORTCHAR, "_a_b_", 3},
        {"ab", 0, "__", 2},
        {"", 0, "", 0},
    };
    for (const auto& row : rows) {
        std::string name = row.name;
        EXPECT_EQ(Jw32ReplaceInvalidFilenameCharacters(name.data(), '_', row.mask), row.count);
        EXPECT_EQ(name, row.replaced);
    }
    EXPECT_EQ(Jw32ReplaceInvalidFilenameCharacters(nullptr, '_', 3), 0u);
}

TEST(FileName, GoesOnBehindAZeroReplacement) {
    std::string name = "?a?";
    EXPECT_EQ(Jw32ReplaceInvalidFilenameCharacters(name.data(), '\0', GCT_LFNCHAR), 2u);
    EXPECT_EQ(name, std::string("\0a\0", 3));
}

TEST(FileName, IsReservedAsAWhole) {
    for (const char* name : {"AUX", "con", "clock$", "prn", "Nul", "Ept", "com", "COM1", "COM4",
                             "lpt", "LPT1", "lpt4"}) {
        EXPECT_EQ(Jw32IsReservedDeviceName(name), 1) << name;
    }
    for (const char* name : {"", "CON.TXT", "COM5", "COM0", "LPT9", "C:\\CON", "CO", "CONX"}) {
        EXPECT_EQ(Jw32IsReservedDeviceName(name), 0) << name;
    }
    EXPECT_EQ(Jw32IsReservedDeviceName(nullptr), 0);
}

TEST(FileName, IsEqualWithoutDirectoryAndCase) {
    const std::string longest(255, 'b'), tooLong(256, 'b'), tooLongExtension = "a." + tooLong;
    struct {
        const char *first, *second;
        int equal;
    } const rows[] = {
        {"C:\\a\\Report.TXT", "d:\\x\\report.txt", 1},
        {"x/report.txt", "report.txt", 1},
        {"name", "NAME.", 1},
        {"name.", "name", 1},
        {"name", "name.txt", 0},
        {"name.a", "name.b", 0},
        {"mane.a", "name.a", 0},
        {"a", "a", 0},
        {"ab", "ab", 1},
        {"ab", "", 0},
        {nullptr, "ab", 0},
        {"ab", nullptr, 0},
        {longest.c_str(), longest.c_str(), 1},
        {tooLong.c_str(), tooLong.c_str(), 0},
        {tooLongExtension.c_str(), tooLongExtension.c_str(), 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Jw32FilenameIsEqual(row.first, row.second), row.equal)
            << (row.first ? row.first : "null") << " and " << (row.second ? row.second : "null");
    }
}

}  // namespace
