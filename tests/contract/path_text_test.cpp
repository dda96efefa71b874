// Functions on the text of paths.
#include <gtest/gtest.h>
#include <shlwapi.h>
#include <windows.h>

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
        const char *path, *added, *removed;
        std::string root;
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
        BOOL found = 4711;
        const auto strip = [&found](char* text) { found = PathStripToRootA(text); };
        EXPECT_EQ(edited(row.path, PathAddBackslashA), row.added);
        EXPECT_EQ(edited(row.path, PathRemoveBackslashA), row.removed);
        EXPECT_EQ(edited(row.path, strip), row.root);
        EXPECT_EQ(found, row.root.find('\\') != row.root.npos);
        EXPECT_EQ(PathIsUNCW(Wide(row.path)), std::string(row.path).starts_with("\\\\"));
    }
    const std::string longest(258, 'x');
    EXPECT_EQ(edited(longest, PathAddBackslashA), longest + "\\");
}

TEST(Canonical, HasNoDotsThatLeadElsewhere) {
    const auto longest = "C:\\" + std::string(256, 'x');
    const std::pair<std::string, std::string> rows[] = {{"A:\\a\\.\\b\\..\\c", "A:\\a\\c"},
                                                        {"C:\\..\\..\\b", "C:\\b"},
                                                        {"C:\\a\\b\\.\\", "C:\\a\\b\\"},
                                                        {"C:", "C:\\"},
                                                        {"", "\\"},
                                                        {"C:\\a..b\\\\.c?", "C:\\a..b\\\\.c?"},
                                                        {"C:/a/../b", "C:/a/../b"},
                                                        {"\\a\\..\\b", "\\b"},
                                                        {"..\\a", "..\\a"},
                                                        {"\\\\s\\h\\a\\..\\b", "\\\\s\\h\\b"},
                                                        {longest, longest},
                                                        {longest + "x", ""}};
    for (const auto& [path, result] : rows) {
        char target[MAX_PATH] = "old";
        EXPECT_EQ(PathCanonicalizeA(target, path.c_str()), !result.empty()) << path;
        EXPECT_EQ(target, result) << path;
    }
}

}  // namespace
