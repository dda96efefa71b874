// Conversions between code pages and wide text, and lengths of text.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

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
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        const int bytes = static_cast<int>(row.bytes.size()) + 1;
        const int wides = static_cast<int>(row.wide.size()) + 1;
        wchar_t wide[16];
        const auto decode = [&](int room) {
            return MultiByteToWideChar(row.codePage, 0, row.bytes.c_str(), -1, wide, room);
        };
        EXPECT_EQ(decode(0), wides) << "the room that it takes";
        EXPECT_EQ(decode(wides), wides);
        EXPECT_EQ(std::u16string(wide, wide + wides - 1), row.wide);
        EXPECT_EQ(decode(wides - 1), 0);
        EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
        char narrow[16];
        const auto encode = [&](int room) {
            return WideCharToMultiByte(row.codePage, 0, wide, wides, narrow, room, nullptr,
                                       nullptr);
        };
        if (!row.valid) continue;
        EXPECT_EQ(encode(0), bytes) << "the room that it takes";
        EXPECT_EQ(encode(bytes), bytes);
        EXPECT_EQ(narrow, row.bytes);
        EXPECT_EQ(encode(bytes - 1), 0);
    }
}

TEST(CodePages, StandInForWhatTheyLack) {
    char narrow[16];
    BOOL used = 4711;
    EXPECT_EQ(WideCharToMultiByte(1252, 0, L"\x20AC\x4E00", -1, narrow, 16, nullptr, &used), 3);
    EXPECT_STREQ(narrow, "\x80?");
    EXPECT_EQ(used, TRUE);
    EXPECT_EQ(WideCharToMultiByte(932, 0, L"\x30BD\x0E01", -1, narrow, 16, "!", nullptr), 4);
    EXPECT_STREQ(narrow, "\x83\x5C!");
    WideCharToMultiByte(932, 0, L"\x30BD", -1, narrow, 16, "!", &used);
    EXPECT_EQ(used, FALSE);
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"\xD800z", -1, narrow, 16, nullptr, nullptr), 5);
    EXPECT_STREQ(narrow, "\xEF\xBF\xBDz") << "half a pair";
}

TEST(CodePages, RefuseWhatMakesNoSense) {
    wchar_t wide[8];
    char narrow[8];
    SetLastError(0);
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "abc", 0, wide, 8), 0) << "a length of 0";
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, nullptr, 3, wide, 8), 0) << "no text";
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "abc", -1, nullptr, 8), 0) << "no target";
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "abc", -1, wide, -1), 0) << "a negative room";
    EXPECT_EQ(MultiByteToWideChar(4711, 0, "abc", -1, wide, 8), 0) << "no such code page";
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, nullptr, 3, narrow, 8, nullptr, nullptr), 0);
}

}  // namespace
