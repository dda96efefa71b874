// Conversions between code pages and wide text.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "support/last_error.h"

namespace {

TEST(CodePages, AreConvertedBothWaysInTheRoomThatTheyTake) {
    const struct {
        std::string bytes;
        UINT codePage;
        std::u16string wide;
        bool valid = true;
    } rows[] = {{"abc", CP_ACP, u"abc"},
                {"\xC3\xA4\xE4\xB8\x80\xF0\x9F\x98\x80", CP_UTF8, u"\u00E4\u4E00\U0001F600"},
                {"\x80\xE4\x81", 1252, u"\u20AC\u00E4\u0081"},
                {"\x83\x5C|\xB1\xA0\xFD\xF0\x40", 932, u"\u30BD|\uFF71\uF8F0\uF8F1\uE000"},
                {"a\xFFz", CP_UTF8, u"a\uFFFDz", false},
                {"\xE2\x82", CP_UTF8, u"\uFFFD", false},
                {"\x83", 932, u"\u30FB", false},
                {"\x83 z", 932, u"\u30FBz", false}};
    for (const auto& [bytes, codePage, text, valid] : rows) {
        wchar_t wide[16];
        const auto decode = [&, page = codePage, source = bytes.c_str()](std::size_t room) {
            return MultiByteToWideChar(page, 0, source, -1, wide, static_cast<int>(room));
        };
        const int wides = decode(0);
        EXPECT_EQ(codeOf(decode(text.size())), DWORD{ERROR_INSUFFICIENT_BUFFER}) << bytes;
        EXPECT_EQ(decode(text.size() + 1), wides) << bytes;
        EXPECT_EQ(std::u16string(wide, wide + wides - 1), text) << bytes;
        if (!valid) continue;
        char narrow[16];
        const auto encode = [&, page = codePage](std::size_t room) {
            return WideCharToMultiByte(page, 0, wide, -1, narrow, static_cast<int>(room), nullptr,
                                       nullptr);
        };
        const int count = encode(0);
        EXPECT_EQ(codeOf(encode(bytes.size())), DWORD{ERROR_INSUFFICIENT_BUFFER}) << bytes;
        EXPECT_EQ(encode(bytes.size() + 1), count) << bytes;
        EXPECT_EQ(narrow, bytes);
    }
}

TEST(CodePages, StandInForWhatTheyLack) {
    char narrow[16];
    BOOL used = 4711;
    EXPECT_EQ(WideCharToMultiByte(932, 0, L"\x30BD\x0E01", -1, narrow, 16, "!", &used), 4);
    EXPECT_STREQ(narrow, "\x83\x5C!");
    EXPECT_EQ(used, TRUE);
    EXPECT_EQ(WideCharToMultiByte(1252, 0, L"\x20AC", -1, narrow, 16, nullptr, &used), 2);
    EXPECT_EQ(used, FALSE);
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"\xD800z", -1, narrow, 16, nullptr, nullptr), 5);
    EXPECT_STREQ(narrow, "\xEF\xBF\xBDz") << "half a pair";
}

}  // namespace
