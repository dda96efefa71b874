// The text forms of an angle.
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <limits>
#include <string>

#include "jw32/angle.h"

namespace {

using Angle = CJw32Angle;
using Type = Angle::eAngleType;

constexpr Type kRad = Angle::eAngleTypeRad;
constexpr Type kDeg = Angle::eAngleTypeDeg;
constexpr Type kGon = Angle::eAngleTypeGon;
constexpr Type kMarked = Angle::eAngleTypeDmsMarked;
constexpr Type kPlain = Angle::eAngleTypeDmsPlain;
constexpr Type kFixed = Angle::eAngleTypeDmsFixed;

// The text in a buffer that is large enough; the result must be its length.
std::string textOf(double value, Type unit, Type form, int decimals) {
    std::array<char, 100> buffer;
    buffer.fill('x');
    const Angle angle(value, unit, Angle::eAngleRangeFree);
    const DWORD length = angle.AngleToString(buffer.data(), DWORD{buffer.size()}, form, decimals);
    const std::string text = buffer.data();
    EXPECT_EQ(length, text.size()) << text;
    return text;
}

struct DmsCase {
    double degrees;
    int decimals;
    const char* marked;
    const char* plain;
    const char* fixed;
};

class DmsText : public testing::TestWithParam<DmsCase> {};

TEST_P(DmsText, HasThreeForms) {
    const DmsCase& c = GetParam();
    EXPECT_EQ(textOf(c.degrees, kDeg, kMarked, c.decimals), c.marked);
    EXPECT_EQ(textOf(c.degrees, kDeg, kPlain, c.decimals), c.plain);
    EXPECT_EQ(textOf(c.degrees, kDeg, kFixed, c.decimals), c.fixed);
}

INSTANTIATE_TEST_SUITE_P(
    AllParts, DmsText,
    testing::Values(DmsCase{12.5, 2, "12 30' 0.00\"", "12 30 0.00", " 12 30  0.00"},
                    DmsCase{-12.5, 2, "-12 30' 0.00\"", "-12 30 0.00", "- 12 30  0.00"},
                    DmsCase{0.5, 2, "0 30' 0.00\"", "0 30 0.00", "  0 30  0.00"},
                    DmsCase{-0.5, 2, "-0 30' 0.00\"", "-0 30 0.00", "-  0 30  0.00"},
                    DmsCase{-0.01, 2, "-0 0' 36.00\"", "-0 0 36.00", "-  0  0 36.00"},
                    DmsCase{0.0, 2, "0 0' 0.00\"", "0 0 0.00", "  0  0  0.00"},
                    DmsCase{-0.0, 2, "0 0' 0.00\"", "0 0 0.00", "  0  0  0.00"},
                    DmsCase{29.999999, 2, "30 0' 0.00\"", "30 0 0.00", " 30  0  0.00"},
                    DmsCase{359.9999999, 2, "360 0' 0.00\"", "360 0 0.00", "360  0  0.00"},
                    DmsCase{-10.9999999, 2, "-11 0' 0.00\"", "-11 0 0.00", "- 11  0  0.00"},
                    DmsCase{12.5, 0, "12 30' 0\"", "12 30 0", " 12 30   0"},
                    DmsCase{0.5, 0, "0 30' 0\"", "0 30 0", "  0 30   0"},
                    DmsCase{12.51, 1, "12 30' 36.0\"", "12 30 36.0", " 12 30 36.0"}));

INSTANTIATE_TEST_SUITE_P(
    LeadingPartsLeftOut, DmsText,
    testing::Values(DmsCase{12.5, -2, "12 30' 0.00\"", "12 30 0.00", " 12 30  0.00"},
                    DmsCase{-12.5, -2, "-12 30' 0.00\"", "-12 30 0.00", "- 12 30  0.00"},
                    DmsCase{0.5, -2, "30' 0.00\"", "30 0.00", "30  0.00"},
                    DmsCase{-0.5, -2, "-30' 0.00\"", "-30 0.00", "-30  0.00"},
                    DmsCase{0.05, -1, "3' 0.0\"", "3 0.0", " 3  0.0"},
                    DmsCase{0.01, -2, "36.00\"", "36.00", "36.00"},
                    DmsCase{-0.01, -2, "-36.00\"", "-36.00", "-36.00"},
                    DmsCase{0.0, -2, "0.00\"", "0.00", " 0.00"},
                    DmsCase{-0.0, -2, "0.00\"", "0.00", " 0.00"},
                    DmsCase{29.999999, -2, "29 59' 60.00\"", "29 59 60.00", " 29 59 60.00"}));

struct DecimalCase {
    double value;
    Type unit;
    Type form;
    int decimals;
    const char* text;
};

class DecimalText : public testing::TestWithParam<DecimalCase> {};

TEST_P(DecimalText, HasNoZeroInFrontOfThePoint) {
    const DecimalCase& c = GetParam();
    EXPECT_EQ(textOf(c.value, c.unit, c.form, c.decimals), c.text)
        << c.value << ", " << c.decimals << " decimals";
}

INSTANTIATE_TEST_SUITE_P(
    Values, DecimalText,
    testing::Values(
        DecimalCase{1.5, kRad, kRad, 3, "1.500"}, DecimalCase{-1.5, kRad, kRad, 3, "-1.500"},
        DecimalCase{0.5, kRad, kRad, 3, ".500"}, DecimalCase{-0.5, kRad, kRad, 3, "-.500"},
        DecimalCase{0.0, kRad, kRad, 2, ".00"}, DecimalCase{-0.0, kRad, kRad, 2, ".00"},
        DecimalCase{123.456, kRad, kRad, 0, "123"}, DecimalCase{-1.5, kRad, kRad, 0, "-2"},
        DecimalCase{9.96, kRad, kRad, 1, "10.0"}, DecimalCase{180.0, kDeg, kDeg, 0, "180"},
        DecimalCase{180.0, kDeg, kDeg, 3, "180.000"}, DecimalCase{180.0, kDeg, kGon, 3, "200.000"},
        DecimalCase{180.0, kDeg, kRad, 4, "3.1416"}));

INSTANTIATE_TEST_SUITE_P(BelowATenth, DecimalText,
                         testing::Values(DecimalCase{0.05, kRad, kRad, 3, ".050"},
                                         DecimalCase{-0.05, kRad, kRad, 3, "-.050"},
                                         DecimalCase{0.0123, kRad, kRad, 4, ".0123"},
                                         DecimalCase{0.0005, kRad, kRad, 1, ".0"},
                                         DecimalCase{0.0004, kRad, kRad, 3, ".000"},
                                         DecimalCase{0.096, kRad, kRad, 2, ".10"},
                                         DecimalCase{0.06, kRad, kRad, 1, ".1"},
                                         DecimalCase{1e-300, kRad, kRad, 2, ".00"},
                                         DecimalCase{0.00046, kRad, kRad, 4, ".0005"}));

TEST(AngleText, NeverLeavesItsFortyNineCharacters) {
    EXPECT_EQ(textOf(-32768.99, kDeg, kMarked, INT_MAX), textOf(-32768.99, kDeg, kMarked, 34));
    EXPECT_EQ(textOf(-32768.99, kDeg, kMarked, INT_MIN).size(), 49U);
    EXPECT_EQ(textOf(-32768.99, kDeg, kFixed, INT_MAX).size(), 47U);
    EXPECT_EQ(textOf(1.5, kRad, kRad, INT_MAX), "1.5" + std::string(45, '0'));
    EXPECT_EQ(textOf(-0.5, kRad, kRad, 48), "-.5" + std::string(46, '0'));
    EXPECT_EQ(textOf(-9.5e46, kRad, kRad, 5).size(), 48U);
    EXPECT_EQ(textOf(1e47, kRad, kRad, 0), "");
    EXPECT_EQ(textOf(-std::numeric_limits<double>::infinity(), kRad, kRad, 2), "");
    EXPECT_EQ(textOf(std::numeric_limits<double>::quiet_NaN(), kRad, kRad, 2), "");
    EXPECT_LT(textOf(std::numeric_limits<double>::quiet_NaN(), kRad, kFixed, 40).size(), 50U);
}

TEST(AngleText, IsCutToTheBufferButCountedWhole) {
    const Angle angle(12.5, kDeg, Angle::eAngleRangeNone);
    const Angle radians(1.5, kRad, Angle::eAngleRangeNone);
    const struct {
        DWORD size;
        const char* marked;
        const char* decimal;
    } cases[] = {{13, "12 30' 0.00\"", "1.5000000000"},
                 {12, "12 30' 0.00", "1.500000000"},
                 {5, "12 3", "1.50"},
                 {1, "", ""}};
    for (const auto& c : cases) {
        std::array<char, 16> buffer;
        buffer.fill('x');
        EXPECT_EQ(angle.AngleToString(buffer.data(), c.size, kMarked, 2), 12U);
        EXPECT_STREQ(buffer.data(), c.marked);
        EXPECT_EQ(buffer[c.size], 'x') << "written behind a buffer of " << c.size;
        EXPECT_EQ(radians.AngleToString(buffer.data(), c.size, kRad, 10), 12U);
        EXPECT_STREQ(buffer.data(), c.decimal);
    }
}

TEST(AngleText, ClearsTheWholeBuffer) {
    for (const Type form : {kRad, kPlain, static_cast<Type>(6)}) {
        std::array<char, 32> buffer;
        buffer.fill('x');
        const Angle angle(0.5, kRad, Angle::eAngleRangeNone);
        const DWORD length = angle.AngleToString(buffer.data(), 31, form, 1);
        for (std::size_t index = length; index < 31; ++index)
            EXPECT_EQ(buffer[index], '\0') << index;
        EXPECT_EQ(buffer[31], 'x');
        EXPECT_EQ(length == 0, form == 6);
    }
}

TEST(AngleText, DoesNothingWithoutABuffer) {
    const Angle angle(12.5, kDeg, Angle::eAngleRangeNone);
    char untouched = 'x';
    for (const Type form : {kRad, kMarked}) {
        EXPECT_EQ(angle.AngleToString(nullptr, 10, form, 2), 0U);
        EXPECT_EQ(angle.AngleToString(&untouched, 0, form, 2), 0U);
        EXPECT_EQ(untouched, 'x');
    }
}

}  // namespace
