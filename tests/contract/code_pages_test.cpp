// Conversions between code pages and wide text, and lengths of text.
#include <gtest/gtest.h>
#include <windows.h>

#include <ostream>
#include <string>
#include <vector>

namespace {

std::u16string units(const wchar_t* text, int length) {
    return {text, text + length};
}

// One text in a code page and as wide text.
struct Text {
    UINT codePage;
    const char* bytes;
    const wchar_t* wide;
};
std::ostream& operator<<(std::ostream& out, const Text& text) {
    return out << text.bytes << " in " << text.codePage;
}

const Text texts[] = {
    {CP_ACP, "abc", L"abc"},
    {CP_THREAD_ACP, "abc", L"abc"},
    {CP_UTF8, "", L""},
    {CP_UTF8, "\xC3\xA4\xE4\xB8\x80", L"\x00E4\x4E00"},
    {CP_UTF8, "\xF0\x9F\x98\x80", L"\xD83D\xDE00"},
    {1252, "\x80\xE4\x81", L"\x20AC\x00E4\x0081"},
    {932,
     "\x83\x5C"
     "A\xB1",
     L"\x30BD\x0041\xFF71"},
    {932, "\xA0\xFD\xFF", L"\xF8F0\xF8F1\xF8F3"},
};

class CodePage : public testing::TestWithParam<Text> {};

TEST_P(CodePage, IsConvertedBothWays) {
    const auto& text = GetParam();
    const int bytes = lstrlenA(text.bytes) + 1, wides = lstrlenW(text.wide) + 1;
    wchar_t wide[16];
    ASSERT_EQ(MultiByteToWideChar(text.codePage, 0, text.bytes, -1, wide, 16), wides);
    EXPECT_EQ(units(wide, wides), units(text.wide, wides));
    char narrow[16];
    ASSERT_EQ(
        WideCharToMultiByte(text.codePage, 0, text.wide, wides, narrow, bytes, nullptr, nullptr),
        bytes)
        << "exactly as much room as it takes";
    EXPECT_STREQ(narrow, text.bytes);
}

TEST_P(CodePage, TellsTheRoomThatItTakes) {
    const auto& text = GetParam();
    const int bytes = lstrlenA(text.bytes) + 1, wides = lstrlenW(text.wide) + 1;
    wchar_t wide[16];
    char narrow[16];
    EXPECT_EQ(MultiByteToWideChar(text.codePage, 0, text.bytes, bytes, nullptr, 0), wides);
    EXPECT_EQ(WideCharToMultiByte(text.codePage, 0, text.wide, -1, nullptr, 0, nullptr, nullptr),
              bytes);
    if (bytes == 1) return;  // a target of no room asks for the room
    SetLastError(0);
    EXPECT_EQ(MultiByteToWideChar(text.codePage, 0, text.bytes, -1, wide, wides - 1), 0);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
    SetLastError(0);
    EXPECT_EQ(
        WideCharToMultiByte(text.codePage, 0, text.wide, -1, narrow, bytes - 1, nullptr, nullptr),
        0);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
}

INSTANTIATE_TEST_SUITE_P(Texts, CodePage, testing::ValuesIn(texts));

TEST(CodePages, ReplaceWhatIsNotValid) {
    const Text invalid[] = {
        {CP_UTF8, "a\xFFz", L"a\xFFFDz"},
        {CP_UTF8, "\xE2\x82", L"\xFFFD"},
        {932, "\x83", L"\x30FB"},
        {932, "\x83 z", L"\x30FBz"},
    };
    for (const auto& text : invalid) {
        wchar_t wide[16];
        const int length = MultiByteToWideChar(text.codePage, 0, text.bytes, -1, wide, 16);
        EXPECT_EQ(units(wide, length), units(text.wide, lstrlenW(text.wide) + 1)) << text;
    }
}

// Wide text that the code page lacks, or has.
struct Replaced {
    UINT codePage;
    const wchar_t* wide;
    const char *replacement, *bytes;
    BOOL used;
};

TEST(CodePages, TellWhetherTheyReplaced) {
    const Replaced rows[] = {{1252, L"\x20AC\x4E00", nullptr, "\x80?", TRUE},
                             {1252, L"\x4E00z", "!", "!z", TRUE},
                             {1252, L"\x20AC", "!", "\x80", FALSE},
                             {932, L"\x30BD\xE000\x0E01", "!", "\x83\x5C\xF0\x40!", TRUE},
                             {932, L"z", nullptr, "z", FALSE}};
    for (const auto& row : rows) {
        char narrow[16];
        BOOL used = 4711;
        EXPECT_GT(
            WideCharToMultiByte(row.codePage, 0, row.wide, -1, narrow, 16, row.replacement, &used),
            0);
        EXPECT_STREQ(narrow, row.bytes);
        EXPECT_EQ(used, row.used) << row.bytes;
    }
    char narrow[16];
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"\xD800z", -1, narrow, 16, nullptr, nullptr), 5);
    EXPECT_STREQ(narrow, "\xEF\xBF\xBDz") << "half a pair";
}

TEST(CodePages, RefuseWhatMakesNoSense) {
    wchar_t wide[8];
    char narrow[8];
    const std::pair<const char*, int> results[] = {
        {"no text", MultiByteToWideChar(CP_ACP, 0, nullptr, 3, wide, 8)},
        {"a length of 0", MultiByteToWideChar(CP_ACP, 0, "abc", 0, wide, 8)},
        {"no target", MultiByteToWideChar(CP_ACP, 0, "abc", -1, nullptr, 8)},
        {"a negative room", MultiByteToWideChar(CP_ACP, 0, "abc", -1, wide, -1)},
        {"no such code page", MultiByteToWideChar(4711, 0, "abc", -1, wide, 8)},
        {"no wide text", WideCharToMultiByte(CP_ACP, 0, nullptr, 3, narrow, 8, nullptr, nullptr)},
        {"a wide length of 0",
         WideCharToMultiByte(CP_ACP, 0, L"abc", 0, narrow, 8, nullptr, nullptr)},
        {"no narrow target",
         WideCharToMultiByte(CP_ACP, 0, L"abc", -1, nullptr, 8, nullptr, nullptr)},
    };
    for (const auto& [what, result] : results) EXPECT_EQ(result, 0) << what;
    SetLastError(0);
    MultiByteToWideChar(CP_ACP, 0, "abc", 0, wide, 8);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "abc", -2, wide, 8), 4)
        << "every negative length means a terminated text";
}

TEST(CodePages, KnowTheirLeadBytes) {
    EXPECT_TRUE(IsDBCSLeadByteEx(932, 0x83));
    EXPECT_FALSE(IsDBCSLeadByteEx(932, 0xB1));
    EXPECT_FALSE(IsDBCSLeadByteEx(932, 'A'));
    EXPECT_FALSE(IsDBCSLeadByteEx(1252, 0x83));
    EXPECT_FALSE(IsDBCSLeadByteEx(CP_UTF8, 0xC3));
}

TEST(Lengths, CountUnitsUpToTheTerminator) {
    EXPECT_EQ(lstrlenA("abc"), 3);
    EXPECT_EQ(lstrlenA(""), 0);
    EXPECT_EQ(lstrlenA(nullptr), 0);
    EXPECT_EQ(lstrlenW(L"a\xD83D\xDE00"), 3);
    EXPECT_EQ(lstrlenW(nullptr), 0);
}

TEST(Comparison, IgnoresCaseWhenAsked) {
    const auto compare = [](DWORD flags, const char* left, const char* right) {
        return CompareStringA(LOCALE_SYSTEM_DEFAULT, flags, left, -1, right, -1);
    };
    EXPECT_EQ(compare(NORM_IGNORECASE, "CLOCK$", "clock$"), CSTR_EQUAL);
    EXPECT_NE(compare(0, "CON", "con"), CSTR_EQUAL);
    EXPECT_EQ(compare(NORM_IGNORECASE, "a", "B"), CSTR_LESS_THAN);
    EXPECT_EQ(compare(NORM_IGNORECASE, "COM1", "COM"), CSTR_GREATER_THAN);
    EXPECT_EQ(compare(NORM_IGNORECASE, "COM1", "COM1.txt"), CSTR_LESS_THAN);
    SetLastError(0);
    EXPECT_EQ(compare(NORM_IGNORECASE, "CON", nullptr), 0);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
}

}  // namespace
