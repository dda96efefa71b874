// CRC-32, divisors and multiples, temperatures.
#include "jw32/arithmetic.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "angles/exact.h"

namespace {

DWORD crcOf(const char* text, int length, DWORD seed) {
    unsigned char bytes[16] = {};
    for (int index = 0; index < length; ++index)
        bytes[index] = static_cast<unsigned char>(text[index]);
    return Jw32CrcMemory(bytes, length, seed);
}

TEST(Crc, IsTheStandardOne) {
    EXPECT_EQ(crcOf("123456789", 9, 0), 0xCBF43926U);
    EXPECT_EQ(Jw32CrcString("123456789", 0), 0xCBF43926U);
    EXPECT_EQ(Jw32CrcString("abc", 0), 0x352441C2U);
    EXPECT_EQ(Jw32CrcString("abc", 0xFFFFFFFF), 0x359A672FU);
    EXPECT_EQ(crcOf("\xFF\0\xFF", 3, 0), 0x6CDB0272U) << "bytes above 0x7F and zeros count";
    EXPECT_EQ(Jw32CrcString("\xE4\xFF", 0), crcOf("\xE4\xFF", 2, 0));
}

TEST(Crc, GoesOnOverPieces) {
    EXPECT_EQ(crcOf("456789", 6, crcOf("123", 3, 0)), 0xCBF43926U);
    EXPECT_EQ(Jw32CrcString("456789", Jw32CrcString("123", 0)), 0xCBF43926U);
}

TEST(Crc, OfABlockIsThatOfItsBytesOneByOne) {
    unsigned char block[999];
    DWORD noise = 1;
    for (auto& byte : block) byte = static_cast<unsigned char>((noise = noise * 69069 + 1) >> 24);
    for (const int start : {0, 1, 3}) {
        DWORD crc = 0;
        for (int end = start; end < 999; ++end) {
            ASSERT_EQ(Jw32CrcMemory(block + start, end - start, 0), crc) << start << " to " << end;
            crc = Jw32CrcMemory(block + end, 1, crc);
        }
    }
}

TEST(Crc, OfNothingIsTheSeed) {
    for (const DWORD seed : {0U, 0x1234U}) {
        EXPECT_EQ(Jw32CrcMemory(nullptr, 0, seed), seed);
        EXPECT_EQ(Jw32CrcMemory(nullptr, -1, seed), seed);
        EXPECT_EQ(Jw32CrcString("", seed), seed);
    }
}

struct IntegerCase {
    int first;
    int second;
    int divisor;
    int multiple;
};

class Integers : public testing::TestWithParam<IntegerCase> {};

TEST_P(Integers, HaveSignedDivisorsAndMultiples) {
    const IntegerCase& c = GetParam();
    EXPECT_EQ(__Jw32Gcdi(c.first, c.second), c.divisor) << c.first << ", " << c.second;
    EXPECT_EQ(__Jw32Gcdl(c.first, c.second), c.divisor) << c.first << ", " << c.second;
    EXPECT_EQ(__Jw32Lcmi(c.first, c.second), c.multiple) << c.first << ", " << c.second;
    EXPECT_EQ(__Jw32Lcml(c.first, c.second), c.multiple) << c.first << ", " << c.second;
}

// The last ones do not fit: the remainder by -1, the product and the negation wrap.
INSTANTIATE_TEST_SUITE_P(Pairs, Integers,
                         testing::Values(IntegerCase{12, 18, 6, 36}, IntegerCase{-12, 18, 6, -36},
                                         IntegerCase{12, -18, -6, 36},
                                         IntegerCase{-12, -18, -6, -36}, IntegerCase{0, 5, 5, 0},
                                         IntegerCase{5, 0, 5, 0}, IntegerCase{-5, 0, -5, 0},
                                         IntegerCase{5, -5, -5, 5}, IntegerCase{0, -5, -5, 0},
                                         IntegerCase{0, 0, 0, 0}, IntegerCase{7, -1, -1, 7},
                                         IntegerCase{INT_MIN, -1, -1, INT_MIN},
                                         IntegerCase{1 << 20, 1 << 20, 1 << 20, 0},
                                         IntegerCase{INT_MIN, 1, 1, INT_MIN}));

struct DoubleCase {
    double first;
    double second;
    Exact divisor;
    Exact multiple;
};

class Doubles : public testing::TestWithParam<DoubleCase> {};

TEST_P(Doubles, HaveDivisorsAndMultiples) {
    const DoubleCase& c = GetParam();
    EXPECT_EQ(Exact{__Jw32Gcdd(c.first, c.second)}, c.divisor) << c.first << ", " << c.second;
    EXPECT_EQ(Exact{__Jw32Lcmd(c.first, c.second)}, c.multiple) << c.first << ", " << c.second;
}

INSTANTIATE_TEST_SUITE_P(
    Pairs, Doubles,
    testing::Values(DoubleCase{7.5, 2.5, {2.5}, {7.5}}, DoubleCase{1.5, 0.25, {0.25}, {1.5}},
                    DoubleCase{1.0, 0.1, {0.09999999999999995}, {1.0000000000000007}},
                    DoubleCase{0.3, 0.2, {0.09999999999999998}, {0.6000000000000001}},
                    DoubleCase{5.0, 0.0, {5.0}, {0.0}}, DoubleCase{0.0, 5.0, {5.0}, {0.0}},
                    DoubleCase{0.0, 0.0, {0.0}, {0.0}}, DoubleCase{-0.0, -3.0, {-0.0}, {0.0}},
                    DoubleCase{5.0, 1e-16, {5.0}, {1.0000000000000001e-16}},
                    DoubleCase{7.5, -2.5, {7.5}, {-2.5}},
                    DoubleCase{5.0, 2.220446049250313e-16, {5.0}, {2.220446049250313e-16}}));

TEST(Doubles, EndForInfinity) {
    EXPECT_EQ(__Jw32Gcdd(std::numeric_limits<double>::infinity(), 2.0), 2.0);
}

TEST(Temperature, ShiftsByTheOffset) {
    EXPECT_EQ(Exact{Jw32C2K(25.0)}, Exact{298.15});
    EXPECT_EQ(Exact{Jw32K2C(298.15)}, Exact{25.0});
    EXPECT_EQ(Exact{Jw32C2K(100.0)}, Exact{373.15});
    EXPECT_EQ(Exact{Jw32K2C(0.0)}, Exact{-273.15});
}

}  // namespace
