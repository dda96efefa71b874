// Formatting into bounded buffers, as documented for sprintf_s.
#include <gtest/gtest.h>
#include <stdio.h>
#include <windows.h>

#include <string>

namespace {

template <class... Argument>
std::string formatted(const char* format, Argument... arguments) {
    char text[64] = "old";
    const int length = sprintf_s(text, sizeof text, format, arguments...);
    EXPECT_EQ(length, static_cast<int>(std::string(text).size())) << format;
    return text;
}

TEST(BoundedFormat, KeepsItsArgumentsInStep) {
    EXPECT_EQ(formatted("%#x then %s", 255, "text"), "0xff then text");
    EXPECT_EQ(formatted("%#X %#o %#x %#.0f %s", 255, 8, 0, 3.0, "text"), "0XFF 010 0 3. text");
    EXPECT_EQ(formatted("%+u % x %+d % i %s", 7, 7, 7, 7, "text"), "7 7 +7  7 text");
    EXPECT_EQ(formatted("|%.0d|%.d|%.0x|%#.0o| %s", 0, 0, 0, 0, "text"), "||||| text");
    EXPECT_EQ(
        formatted("%I64d %lld %I32u %hd %hx %s", 1LL << 40, -(1LL << 40), ~0U, 65537, -1, "a"),
        "1099511627776 -1099511627776 4294967295 1 ffff a");
    EXPECT_EQ(formatted("%-*d|%0*d|%.*s|%hs", 3, 1, 3, 1, 2, "text", "text"), "1  |001|te|text");
    EXPECT_EQ(formatted("%%%c%5.1f%%", 'x', 2.25), "%x  2.3%");
    EXPECT_EQ(formatted("%ld %lu %s", LONG{-1}, ULONG{1}, "text"), "-1 1 text");
    EXPECT_EQ(formatted("%p", reinterpret_cast<void*>(0xABC)),
              std::string(2 * sizeof(void*) - 3, '0') + "ABC");
    char nothing[4];
    EXPECT_EQ(sprintf_s(nothing, sizeof nothing, "a%cb", 0), 3);
    EXPECT_EQ(std::string(nothing, 4), std::string("a\0b\0", 4));
}

}  // namespace
