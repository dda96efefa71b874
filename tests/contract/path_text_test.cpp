// Functions on the text of paths, of the shell's library and of the runtime.
#include <gtest/gtest.h>
#include <mbstring.h>
#include <shlwapi.h>
#include <windows.h>

#include <cerrno>
#include <string>

#include "frame/multibyte.h"
#include "support/wide.h"
#include "wine.h"

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
        std::string path, added, removed, root;
    } rows[] = {{"", "", "", ""},
                {"C:", "C:\\", "C:", "C:"},
                {"C:\\", "C:\\", "C:\\", "C:\\"},
                {"C:\\a\\", "C:\\a\\", "C:\\a", "C:\\"},
                {"a\\\\", "a\\\\", "a\\", ""},
                {"\\", "\\", "\\", "\\"},
                {"\\\\s\\h\\", "\\\\s\\h\\", "\\\\s\\h", "\\\\s\\h"},
                {"\\\\s\\h\\a", "\\\\s\\h\\a\\", "\\\\s\\h\\a", "\\\\s\\h"}};
    for (const auto& row : rows) {
        BOOL found = 4711;
        const auto strip = [&found](char* text) { found = PathStripToRootA(text); };
        EXPECT_EQ(edited(row.path, PathAddBackslashA), row.added);
        EXPECT_EQ(edited(row.path, PathRemoveBackslashA), row.removed);
        EXPECT_EQ(edited(row.path, strip), row.root);
        EXPECT_EQ(found, row.root.find('\\') != row.root.npos) << row.path;
        EXPECT_EQ(PathIsUNCW(Wide(row.path)), row.path.starts_with("\\\\")) << row.path;
    }
    const std::string longest(258, 'x');
    EXPECT_EQ(edited(longest, PathAddBackslashA), longest + "\\");
}

TEST(PathText, IsCanonicalWithoutDotsThatLeadElsewhere) {
    const auto longest = "C:\\" + std::string(256, 'x');
    const std::pair<std::string, std::string> rows[] = {{"A:\\a\\.\\b\\..\\c", "A:\\a\\c"},
                                                        {"C:\\..\\..\\b", "C:\\b"},
                                                        {"C:\\a\\b\\.\\", "C:\\a\\b\\"},
                                                        {"C:", "C:\\"},
                                                        {"", "\\"},
                                                        {"C:\\a..b\\\\.c?", "C:\\a..b\\\\.c?"},
                                                        {"C:/a/../b", "C:/a/../b"},
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

TEST(PathText, IsSplitAtTheLastSeparatorAndDot) {
    char drive[3], directory[16], name[16], extension[16];
    const auto split = [&](const char* path, std::size_t room) {
        return _splitpath_s(path, drive, sizeof drive, directory, sizeof directory, name,
                            sizeof name, extension, room);
    };
    const struct {
        const char* path;
        std::string parts;
        std::size_t room = 16;  // for the extension
        errno_t result = 0;
    } rows[] = {{"C:\\a\\b.c", "C:,\\a\\,b,.c"},
                {"a.b.c", ",,a.b,.c"},
                {"C:a/b", "C:,a/,b,"},
                {"..", ",,.,."},
                {"\\\\s\\h\\f.e", ",\\\\s\\h\\,f,.e"},
                {"a.b\\c", ",a.b\\,c,"},
                {"C:\\a\\name.extension", ",,,", 5, ERANGE}};
    for (const auto& row : rows) {
        EXPECT_EQ(split(row.path, row.room), row.result) << row.path;
        EXPECT_EQ(std::string(drive) + ',' + directory + ',' + name + ',' + extension, row.parts);
    }
    EXPECT_EQ(split("C:\\a", 0), EINVAL) << "a part without room";
}

TEST(BoundedText, IsEmptyWhereItDoesNotFit) {
    const struct {
        const char *source, *target;
        std::size_t count;
        errno_t result;
    } rows[] = {{"abc", "abc", 9, 0},
                {"abcde", "abcd", 4, 0},
                {"abcde", "", 5, ERANGE},
                {"abcde", "abcd", _TRUNCATE, STRUNCATE}};
    for (const auto& row : rows) {
        // Known difference: Wine's runtime does not cut, and refuses what does not fit.
        if (row.result == STRUNCATE && onWine()) continue;
        unsigned char target[5] = "xxxx";
        const auto* const source = multibyte::bytes(row.source);
        EXPECT_EQ(_mbsnbcpy_s(target, sizeof target, source, row.count), row.result);
        EXPECT_STREQ(multibyte::chars(target), row.target) << row.source;
    }
    char target[5] = "xxxx";
    EXPECT_EQ(strcpy_s(target, sizeof target, "ab"), 0);
    EXPECT_EQ(strcat_s(target, sizeof target, "cd"), 0);
    EXPECT_STREQ(target, "abcd");
    EXPECT_EQ(strcat_s(target, sizeof target, "e"), ERANGE);
    EXPECT_STREQ(target, "");
    target[0] = 'x';
    EXPECT_EQ(strcpy_s(target, sizeof target, "abcde"), ERANGE);
    EXPECT_STREQ(target, "");
}

}  // namespace
