// Conversions between decimal angles, parts and packed numbers, exact to the last bit.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <span>

#include "angles/exact.h"
#include "jw32/angles.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kTwoPi = 6.283185307179586;

struct Parts {
    int sign;
    int whole;
    int minutes;
    Exact seconds;

    bool operator==(const Parts&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const Parts& parts) {
        return out << parts.sign << " * " << parts.whole << ", " << parts.minutes << ", "
                   << parts.seconds;
    }
};

using Splitter = void (*)(double, int&, int&, int&, double&, int, int);
using Packer = double (*)(int, int, int, double, int, int);
using RadianPacker = double (*)(double, int, int);

Parts split(Splitter operation, double value, int decimals, int wrap) {
    Parts parts{7, 7, 7, {7.0}};
    operation(value, parts.sign, parts.whole, parts.minutes, parts.seconds.value, decimals, wrap);
    return parts;
}

struct SplitCase {
    double value;
    int decimals;
    int wrap;
    Parts expected;
};

const SplitCase kDeg2DMS[] = {{-12.5, 2, 0, {-1, 12, 30, {0.0}}},
                              {-0.0, 2, 0, {1, 0, 0, {0.0}}},
                              {360.0, 2, 1, {1, 0, 0, {0.0}}},
                              {360.0, 2, 0, {1, 360, 0, {0.0}}},
                              {720.5, 2, 1, {1, 0, 30, {0.0}}},
                              {-720.5, 2, 5, {-1, 0, 30, {0.0}}},
                              {359.99999999, 2, 1, {1, 0, 0, {0.0}}},
                              {359.99999999, 2, 0, {1, 360, 0, {0.0}}},
                              {359.99999999, -1, 1, {1, 359, 59, {59.99996399997144}}},
                              {29.999999, 2, 0, {1, 30, 0, {0.0}}},
                              {29.9999985, 2, 0, {1, 29, 59, {59.994600000000844}}},
                              {10.983333055555555, 2, 0, {1, 10, 59, {0.0}}},
                              {0.03333194444444444, 2, 0, {1, 0, 2, {0.0}}},
                              {10.491666666666667, 0, 0, {1, 10, 29, {30.000000000001705}}},
                              {10.4999, 0, 0, {1, 10, 30, {0.0}}},
                              {1e300, 2, 0, {1, INT_MAX, 0, {0.0}}},
                              {2147483647.0, -1, 1, {1, INT_MAX % 360, 0, {0.0}}}};

const SplitCase kRad2DMS[] = {{kTwoPi, 2, 1, {1, 0, 0, {0.0}}},
                              {-1.125, -1, 0, {-1, 64, 27, {27.90702798343318}}}};

const SplitCase kGrad2GCCC[] = {
    {400.0, 2, 1, {1, 0, 0, {0.0}}},          {-12.5, 2, 0, {-1, 12, 50, {0.0}}},
    {399.99999999, 2, 0, {1, 400, 0, {0.0}}}, {399.99999999, 2, 1, {1, 0, 0, {0.0}}},
    {12.75, 2, 0, {1, 12, 75, {0.0}}},        {12.5099999, 0, 0, {1, 12, 51, {0.0}}},
    {12.989999999, 2, 0, {1, 12, 99, {0.0}}}, {0.0399995, 2, 0, {1, 0, 4, {0.0}}}};

const SplitCase kRad2GCCC[] = {{kTwoPi, 2, 1, {1, 0, 0, {0.0}}},
                               {-0.625, -1, 0, {-1, 39, 78, {87.35772973836902}}}};

const SplitCase kDMS2DMS[] = {{12.34, -1, 0, {1, 12, 34, {0.0}}},
                              {12.33999998, -1, 0, {1, 12, 33, {99.99979999999908}}},
                              {1.14281, -1, 0, {1, 1, 14, {28.099999999999792}}},
                              {-0.0, -1, 0, {1, 0, 0, {0.0}}},
                              {12.3456, -1, 0, {1, 12, 34, {55.99999999999383}}},
                              {-12.3475, 2, 0, {-1, 12, 35, {0.0}}},
                              {12.3475, -1, 0, {1, 12, 34, {75.00000000000284}}},
                              {12.7530, 2, 0, {1, 12, 75, {30.000000000001137}}},
                              {12.7575, 2, 0, {1, 13, 0, {0.0}}},
                              {10.5960, -1, 0, {1, 10, 59, {60.000000000002274}}},
                              {10.5960, 2, 0, {1, 11, 0, {0.0}}},
                              {12.999999996, -1, 0, {1, 13, 0, {0.0}}},
                              {359.5960, 2, 1, {1, 0, 0, {0.0}}},
                              {1e300, 2, 1, {1, INT_MAX % 360, 0, {0.0}}}};

const SplitCase kGCCC2GCCC[] = {{12.999999996, -1, 0, {1, 12, 100, {0.0}}},
                                {12.3475, 2, 0, {1, 12, 34, {75.00000000000284}}},
                                {-399.9999999, 2, 0, {-1, 400, 0, {0.0}}},
                                {-399.9999999, 2, 1, {-1, 0, 0, {0.0}}}};

void expectParts(const char* name, Splitter operation, std::span<const SplitCase> cases) {
    for (const SplitCase& c : cases) {
        EXPECT_EQ(split(operation, c.value, c.decimals, c.wrap), c.expected)
            << name << " of " << Exact{c.value} << ", " << c.decimals << " decimals, wrap "
            << c.wrap;
    }
}

TEST(Splitting, GivesTheParts) {
    expectParts("Jw32Deg2DMS", Jw32Deg2DMS, kDeg2DMS);
    expectParts("Jw32Rad2DMS", Jw32Rad2DMS, kRad2DMS);
    expectParts("Jw32Grad2GCCC", Jw32Grad2GCCC, kGrad2GCCC);
    expectParts("Jw32Rad2GCCC", Jw32Rad2GCCC, kRad2GCCC);
    expectParts("Jw32DMS2DMS", Jw32DMS2DMS, kDMS2DMS);
    expectParts("Jw32GCCC2GCCC", Jw32GCCC2GCCC, kGCCC2GCCC);
}

TEST(Splitting, KeepsEveryPartDefinedForWhatIsNoNumber) {
    for (const Splitter operation :
         {static_cast<Splitter>(Jw32Deg2DMS), static_cast<Splitter>(Jw32DMS2DMS)}) {
        const Parts parts = split(operation, std::nan(""), 2, 1);
        EXPECT_EQ(parts.whole, 0);
        EXPECT_EQ(parts.minutes, 0);
        EXPECT_EQ(split(operation, -kInfinity, 2, 0).whole, INT_MAX);
    }
}

TEST(PartsToDecimal, FollowTheSignAndDropNegativeSeconds) {
    EXPECT_EQ(Exact{Jw32DMS2Deg(1, -12, 30, 0.0)}, Exact{12.5});
    EXPECT_EQ(Exact{Jw32DMS2Deg(-1, 12, 30, 0.0)}, Exact{-12.5});
    EXPECT_EQ(Exact{Jw32DMS2Deg(0, 12, 30, 36.0)}, Exact{12.51});
    EXPECT_EQ(Exact{Jw32DMS2Deg(1, 12, -30, -5.0)}, Exact{11.5});
    EXPECT_EQ(Exact{Jw32DMS2Deg(1, INT_MIN, 0, 0.0)}, Exact{2147483648.0});
    EXPECT_EQ(Exact{Jw32GCCC2Grad(-3, -12, 50, 25.0)}, Exact{-12.5025});
    EXPECT_EQ(Exact{Jw32GCCC2Grad(1, 12, 50, -25.0)}, Exact{12.5});
}

TEST(PartsToDecimal, ReachRadiansThroughTheSignedSum) {
    EXPECT_EQ(Exact{Jw32DMS2Rad(-1, 180, 0, 0.0)}, Exact{-3.141592653589793});
    EXPECT_EQ(Exact{Jw32DMS2Rad(180.0)}, Exact{3.141592653589793});
    EXPECT_EQ(Exact{Jw32DMS2Rad(-12.3)}, Exact{-12.5 * 0.017453292519943295});
    EXPECT_EQ(Exact{Jw32DMS2Rad(12.3475)}, Exact{0.21969331959478625}) << "75 seconds stay";
    EXPECT_EQ(Exact{Jw32DMS2Rad(540.0)}, Exact{9.42477796076938}) << "nothing is folded";
    EXPECT_EQ(Exact{Jw32GCCC2Rad(200.0)}, Exact{3.1415926535897936});
    EXPECT_EQ(Exact{Jw32GCCC2Rad(-1, 200, 0, 0.0)}, Exact{-3.1415926535897936});
    EXPECT_EQ(Exact{Jw32GCCC2Rad(-12.3456)}, Exact{-12.3456 * 0.015707963267948967});
}

struct PackCase {
    int sign;
    int whole;
    int minutes;
    double seconds;
    int decimals;
    int wrap;
    Exact expected;
};

const PackCase kPackedDMS[] = {{-1, 360, 0, 0.0, 4, 1, {-0.0}},
                               {1, 359, 59, 59.9, 4, 1, {0.0}},
                               {1, 359, 59, 59.9, 4, 0, {360.0}},
                               {1, 360, 0, 0.0, 5, 1, {5.684341886080802e-14}},
                               {1, INT_MAX, 0, 0.0, -1, 1, {INT_MAX % 360}},
                               {1, 10, 59, 59.6, 4, 0, {11.0}},
                               {1, 10, 59, 59.4, 4, 0, {10.5959}},
                               {1, 10, 59, 59.5, 4, 0, {11.0}},
                               {1, 10, 59, 59.499999999999986, 4, 0, {10.596}},
                               {1, 10, 58, 59.6, 4, 0, {10.59}},
                               {1, 10, 59, 55.0, 3, 0, {11.0}},
                               {1, 10, 59, 54.99999999999999, 3, 0, {11.0}},
                               {1, 10, 59, 54.9, 3, 0, {10.595}},
                               {1, 10, 30, 50.0, 2, 0, {10.31}},
                               {1, 10, 30, 49.0, 2, 0, {10.3}},
                               {1, 2, 30, 49.99999999999999, 2, 0, {2.31}},
                               {1, 2, 55, 0.0, 1, 0, {2.6}},
                               {1, 10, 59, 0.0, 1, 0, {11.0}},
                               {1, 10, 56, 0.0, 1, 0, {10.600000000000001}},
                               {1, 10, 54, 59.0, 1, 0, {10.5}},
                               {1, 10, 50, 0.0, 0, 0, {11.0}},
                               {1, 10, 49, 59.0, 0, 0, {10.0}},
                               {1, 12, 34, 56.0, 4, 0, {12.345600000000001}},
                               {1, 12, 34, 56.7, 4, 0, {12.3457}},
                               {1, 12, 34, 56.7, 5, 0, {12.34567}},
                               {1, 10, 30, 61.5, 4, 0, {10.3102}},
                               {1, 10, 59, 120.0, -1, 0, {11.01}},
                               {1, 10, 75, 10.0, 4, 0, {11.151}},
                               {0, 10, 30, 60.0, -1, 0, {10.31}},
                               {1, 10, 60, 0.0, -1, 0, {11.0}},
                               {1, 2, 34, 56.7, -1, 0, {2.3456699999999997}},
                               {1, 10, 59, 59.9999, -1, 0, {10.59599999}},
                               {-1, -10, 75, -1.0, -1, 0, {-11.15}},
                               {1, INT_MIN, INT_MIN, 0.0, -1, 0, {2126008811.52}},
                               {1, INT_MAX, 59, 59.9, 4, 0, {2147483648.0}}};

const PackCase kPackedGCCC[] = {{1, 399, 99, 99.9, 4, 1, {0.0}},
                                {1, 399, 99, 99.9, 4, 0, {400.0}},
                                {-1, 399, 99, 99.9999999995, -1, 1, {5.684341886080802e-14}},
                                {1, 399, 99, 99.999999999, -1, 1, {399.9999999999999}},
                                {1, 10, 150, 0.0, -1, 0, {11.5}},
                                {1, -10, 59, 55.0, 3, 0, {10.596}},
                                {1, 10, 50, -1.0, 4, 0, {10.5}},
                                {1, 0, 0, 1e304, -1, 1, {144.0}}};

void expectNumber(const char* name, Packer operation, std::span<const PackCase> cases) {
    for (const PackCase& c : cases) {
        const double packed = operation(c.sign, c.whole, c.minutes, c.seconds, c.decimals, c.wrap);
        EXPECT_EQ(Exact{packed}, c.expected)
            << name << " of " << Parts{c.sign, c.whole, c.minutes, {c.seconds}} << ", "
            << c.decimals << " decimals, wrap " << c.wrap;
    }
}

TEST(Packing, GivesTheNumber) {
    expectNumber("Jw32DMS2DMS", Jw32DMS2DMS, kPackedDMS);
    expectNumber("Jw32GCCC2GCCC", Jw32GCCC2GCCC, kPackedGCCC);
}

TEST(RadiansToPacked, UseTheDecimalsTwice) {
    const auto dms = static_cast<RadianPacker>(Jw32Rad2DMS);
    const auto gccc = static_cast<RadianPacker>(Jw32Rad2GCCC);
    EXPECT_EQ(Exact{dms(1.0, 4, 0)}, Exact{57.1745});
    EXPECT_EQ(Exact{dms(-1.0, 4, 0)}, Exact{-57.1745});
    EXPECT_EQ(Exact{dms(kTwoPi, 4, 1)}, Exact{0.0});
    EXPECT_EQ(Exact{dms(kTwoPi, 4, 0)}, Exact{360.0});
    EXPECT_EQ(Exact{gccc(1.0, 4, 0)}, Exact{63.662000000000006});
    EXPECT_EQ(Exact{gccc(kTwoPi, 4, 1)}, Exact{0.0});
    EXPECT_EQ(Exact{gccc(kTwoPi, 4, 0)}, Exact{400.0});
    EXPECT_EQ(Exact{dms(6.2815, 0, 1)}, Exact{0.0}) << "359 degrees and 54 minutes";
    EXPECT_EQ(Exact{gccc(6.2815, 0, 1)}, Exact{0.0});
    // 20 seconds and a half: the first count, 0 decimals of the seconds, carries nothing.
    EXPECT_EQ(Exact{dms(Jw32DMS2Rad(1, 10, 49, 20.5), 0, 0)}, Exact{10.0});
    // 59.7 seconds: the first count makes it 50 minutes, and the second then a degree.
    EXPECT_EQ(Exact{dms(Jw32DMS2Rad(1, 10, 49, 59.7), 0, 0)}, Exact{11.0});
    EXPECT_EQ(Exact{gccc(Jw32GCCC2Rad(1, 10, 49, 99.7), 0, 0)}, Exact{11.0});
}

}  // namespace
