// Functions on the text of paths.
#include <gtest/gtest.h>
#include <shlwapi.h>
#include <windows.h>

#include <cstring>
#include <string>

#include "support/wide.h"

namespace {

// What a function on the text makes of a path.
template <class Function>
std::string edited(const std::string& path, Function function) {
    char text[MAX_PATH] = "";
    path.copy(text, path.size());
    function(text);
    return text;
}

TEST(PathText, GetsAndLosesItsLastBackslashOrAllButTheRoot) {
    const struct {
        const char *path, *added, *removed, *root;
    } rows[] = {{"", "", "", ""},
                {"C:", "C:\\", "C:", "C:"},
                {"C:\\", "C:\\", "C:\\", "C:\\"},
                {"C:\\a\\", "C:\\a\\", "C:\\a", "C:\\"},
                {"a\\\\", "a\\\\", "a\\", ""},
                {"\\", "\\", "\\", "\\"},
                {"\\\\s\\h\\", "\\\\s\\h\\", "\\\\s\\h", "\\\\s\\h"},
                {"\\\\s\\h\\a", "\\\\s\\h\\a\\", "\\\\s\\h\\a", "\\\\s\\h"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        EXPECT_EQ(edited(row.path, PathAddBackslashA), row.added);
        EXPECT_EQ(edited(row.path, PathRemoveBackslashA), row.removed);
        EXPECT_EQ(edited(row.path, PathStripToRootA), row.root);
        BOOL found = 4711;
        edited(row.path, [&found](char* text) { found = PathStripToRootA(text); });
        EXPECT_EQ(found, std::strchr(row.root, '\\') != nullptr);
        EXPECT_EQ(PathIsUNCW(Wide(row.path)), std::string(row.path).starts_with("\\\\"));
    }
    const std::string longest(258, 'x');
    EXPECT_EQ(edited(longest, PathAddBackslashA), longest + "\\");
}

TEST(Canonical, HasNoDotsThatLeadElsewhere) {
    char target[MAX_PATH] = "old";
    using Row = std::pair<const char*, const char*>;
    const Row rows[] = {{"A:\\a\\.\\b\\..\\c", "A:\\a\\c"},
                        {"C:\\..\\..\\b", "C:\\b"},
                        {"C:\\a\\b\\.\\", "C:\\a\\b\\"},
                        {"C:", "C:\\"},
                        {"", "\\"},
                        {"C:\\a..b\\\\.c?", "C:\\a..b\\\\.c?"},
                        {"C:/a/../b", "C:/a/../b"},
                        {"\\a\\..\\b", "\\b"},
                        {"..\\a", "..\\a"},
                        {"\\\\s\\h\\a\\..\\b", "\\\\s\\h\\b"}};
    for (const auto& [path, result] : rows) {
        EXPECT_TRUE(PathCanonicalizeA(target, path)) << path;
        EXPECT_STREQ(target, result) << path;
    }
    const auto longest = "C:\\" + std::string(256, 'x');
    EXPECT_TRUE(PathCanonicalizeA(target, longest.c_str()));
    EXPECT_FALSE(PathCanonicalizeA(target, (longest + "x").c_str()));
    EXPECT_STREQ(target, "");
}

}  // namespace
