// Rules for single file names.
#include <gtest/gtest.h>
#include <windows.h>

#include <jw32/file_names.h>
#include <shlwapi.h>

#include <string>

namespace {

using Names = std::initializer_list<const char*>;

template <class Rule>
void judges(Rule rule, Names accepted, Names refused) {
    for (const char* const name : accepted) EXPECT_EQ(rule(name), 1) << name;
    for (const char* const name : refused) EXPECT_EQ(rule(name), 0) << name;
    EXPECT_EQ(rule(nullptr), 0) << "null";
}

TEST(FileName, IsValidByItsCharactersAlone) {
    const std::string longName(5000, 'a');
    judges(Jw32FilenameIsValid,
           {" a", "a ", ".", "CON", "a+[b]", "name.txt", "\xE4~", longName.c_str()},
           {"", "   ", "a?b", "a*b", "a\\b", "a:b", "a/b", "a|b", "a\tb", "a<", "a>", "a\""});
}

TEST(FileName, IsReservedAsAWhole) {
    judges(
        Jw32IsReservedDeviceName,
        {"AUX", "con", "clock$", "prn", "Nul", "Ept", "com", "COM1", "COM4", "lpt", "LPT1", "lpt4"},
        {"", "CON.TXT", "COM5", "COM0", "LPT9", "C:\\CON", "CO", "CONX"});
}

TEST(FileName, ReplacesWhatTheMaskDoesNotAllow) {
    constexpr unsigned any = GCT_LFNCHAR | GCT_SHORTCHAR, wild = any | GCT_WILD;
    constexpr unsigned path = any | GCT_SEPARATOR, brief = GCT_SHORTCHAR, none = 0;
    const struct {
        const char *name, *replaced;
        unsigned mask, count;
    } rows[] = {
        {"a?*c", "a__c", any, 2},     {"a?*c", "a?*c", wild, 0}, {"C\\: ", "C__ ", any, 2},
        {"C\\ ", "C\\ ", path, 0},    {"ab", "__", none, 2},     {"", "", none, 0},
        {" a,b;", "_a_b_", brief, 3},
    };
    for (const auto& row : rows) {
        std::string name = row.name;
        EXPECT_EQ(Jw32ReplaceInvalidFilenameCharacters(name.data(), '_', row.mask), row.count);
        EXPECT_EQ(name, row.replaced);
    }
    EXPECT_EQ(Jw32ReplaceInvalidFilenameCharacters(nullptr, '_', 3), 0u);
    std::string name = "?a?";
    EXPECT_EQ(Jw32ReplaceInvalidFilenameCharacters(name.data(), '\0', GCT_LFNCHAR), 2u);
    EXPECT_EQ(name, std::string("\0a\0", 3)) << "it goes on behind a zero";
}

TEST(FileName, IsEqualWithoutDirectoryAndCase) {
    const std::string longest(255, 'b'), longer = longest + 'b', extended = "a." + longer;
    const char *const fits = longest.c_str(), *const tooLong = longer.c_str();
    const char* const longEnd = extended.c_str();
    const struct {
        const char *first, *second;
        int equal;
    } rows[] = {
        {"C:\\N.T", "n.t", 1}, {"x/n.t", "n.t", 1},   {"name", "NAME.", 1},  {"name.", "name", 1},
        {"name", "name.t", 0}, {"n.a", "n.b", 0},     {"m.a", "n.a", 0},     {"a", "a", 0},
        {"ab", "ab", 1},       {"ab", "", 0},         {nullptr, "ab", 0},    {"ab", nullptr, 0},
        {fits, fits, 1},       {tooLong, tooLong, 0}, {longEnd, longEnd, 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Jw32FilenameIsEqual(row.first, row.second), row.equal)
            << row.first << " and " << row.second;
    }
}

}  // namespace
