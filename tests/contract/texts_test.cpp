// Functions on texts and numbers, most of them by the lines of texts.txt.
#include <mbstring.h>
#include <shlwapi.h>
#include <windows.h>

#include <cerrno>
#include <cstdlib>

#include "frame/multibyte.h"
#include "support/vectors.h"
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

std::string forms(const Words& words) {
    const auto& path = words.at(0);
    BOOL found = 4711;
    const auto strip = [&found](char* text) { found = PathStripToRootA(text); };
    const auto added = edited(path, PathAddBackslashA), root = edited(path, strip);
    return added + '|' + edited(path, PathRemoveBackslashA) + '|' + root + '|' +
           std::to_string(found) + ' ' + std::to_string(PathIsUNCW(Wide(path)));
}

std::string canonical(const Words& words) {
    char target[MAX_PATH] = "old";
    EXPECT_TRUE(PathCanonicalizeA(target, words.at(0).c_str()));
    return target;
}

std::string fullPath(const Words& words) {
    char full[MAX_PATH] = "", *last = full;
    const DWORD length = GetFullPathNameA(words.at(0).c_str(), sizeof full, full, &last);
    return std::string(full, length) + '|' + (last != nullptr ? last : "none");
}

std::string split(const Words& words) {
    char drive[3] = "", folder[16] = "", name[16] = "", extension[16] = "";
    const auto result = _splitpath_s(words.at(0).c_str(), drive, 3, folder, 16, name, 16, extension,
                                     std::stoul(words.at(1)));
    return std::string(drive) + '|' + folder + '|' + name + '|' + extension + ' ' +
           std::to_string(result);
}

std::string digits(const Words& words) {
    char text[64];
    int point = 4711, sign = 4711;
    const double number = std::stod(words.at(0));
    EXPECT_EQ(_fcvt_s(text, sizeof text, number, std::stoi(words.at(1)), &point, &sign), 0);
    return text + (' ' + std::to_string(point)) + ' ' + std::to_string(sign);
}

TEST(TextAndNumbers, HoldTheVectors) {
    holdVectors({{"PathForms", forms},
                 {"PathCanonicalizeA", canonical},
                 {"GetFullPathNameA", fullPath},
                 {"_splitpath_s", split},
                 {"_fcvt_s", digits}},
                onWine());
}

TEST(TextAndNumbers, HaveTheirLimits) {
    const auto longest = "C:\\" + std::string(256, 'x');
    char target[MAX_PATH] = "old";
    EXPECT_TRUE(PathCanonicalizeA(target, longest.c_str()));
    EXPECT_EQ(target, longest);
    EXPECT_FALSE(PathCanonicalizeA(target, (longest + "x").c_str()));
    EXPECT_STREQ(target, "");
    EXPECT_EQ(edited(longest.substr(1), PathAddBackslashA), longest.substr(1) + "\\");
    EXPECT_EQ(GetFullPathNameA("", 0, nullptr, nullptr), 0u);
    if (onWine()) return;  // known difference: Wine never comes back from too small a buffer
    int point = 0, sign = 0;
    EXPECT_EQ(_fcvt_s(target, 3, 123.0, 2, &point, &sign), ERANGE);
    EXPECT_STREQ(target, "");
}

TEST(BoundedText, IsEmptyWhereItDoesNotFit) {
    const auto copied = [](const char* source, std::size_t count, errno_t result) {
        unsigned char target[5] = "xxxx";
        EXPECT_EQ(_mbsnbcpy_s(target, 5, multibyte::bytes(source), count), result) << source;
        return std::string(multibyte::chars(target));
    };
    EXPECT_EQ(copied("abc", 9, 0), "abc");
    EXPECT_EQ(copied("abcde", 4, 0), "abcd");
    EXPECT_EQ(copied("abcde", 5, ERANGE), "");
    // Known difference: Wine's runtime does not cut, and refuses what does not fit.
    EXPECT_TRUE(onWine() || copied("abcde", _TRUNCATE, STRUNCATE) == "abcd");
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
