// The rounding and the tolerant comparison behind the conversions.
#include "angles/rounding.h"

#include <gtest/gtest.h>

#include <climits>

#include "angles/exact.h"

namespace {

using namespace jw32::angles;

TEST(RoundToStep, TakesHalvesAwayFromZeroAndKeepsTheSign) {
    EXPECT_EQ(Exact{Jw32RoundToStep(2.5, 1.0)}, Exact{3.0});
    EXPECT_EQ(Exact{Jw32RoundToStep(-2.5, 1.0)}, Exact{-3.0});
    EXPECT_EQ(Exact{Jw32RoundToStep(-0.3, 1.0)}, Exact{-0.0});
    EXPECT_EQ(Exact{Jw32RoundToStep(12.3456, 1.0 / 10000)}, Exact{12.345600000000001});
}

TEST(RoundToStep, LeavesTheValueForAStepThatIsNone) {
    EXPECT_EQ(Exact{Jw32RoundToStep(0.3, 0.0)}, Exact{0.3});
    EXPECT_EQ(Exact{Jw32RoundToStep(0.3, -1.0)}, Exact{0.3});
    EXPECT_EQ(Exact{Jw32RoundToStep(0.3, 2e-16)}, Exact{0.3});
}

TEST(IsAtLeast, CountsAFewUnitsBelow) {
    EXPECT_EQ(Jw32IsAtLeast(55.0, 55.0), 1);
    EXPECT_EQ(Jw32IsAtLeast(56.0, 55.0), 1);
    EXPECT_EQ(Jw32IsAtLeast(55.0 - 7.2e-15, 55.0), 1);
    EXPECT_EQ(Jw32IsAtLeast(55.0 - 1.5e-14, 55.0), 0);
    EXPECT_EQ(Jw32IsAtLeast(55.0 - 1e-13, 55.0), 0);
    EXPECT_EQ(Jw32IsAtLeast(1.0 - 2 * kEpsilon, 1.0), 0) << "the comparison is strict";
    EXPECT_EQ(Jw32IsAtLeast(0.0, kEpsilon / 2), 1) << "the tolerance is absolute too";
}

TEST(PowerOfTen, IsBuiltBySquaringAndInverted) {
    EXPECT_EQ(Exact{powerOfTen(0)}, Exact{1.0});
    EXPECT_EQ(Exact{powerOfTen(22)}, Exact{1e22});
    EXPECT_EQ(Exact{powerOfTen(-4)}, Exact{1.0 / 1e4});
    EXPECT_EQ(Exact{powerOfTen(-23)}, Exact{1.0000000000000001e-23}) << "no literal 1e-23";
    EXPECT_EQ(Exact{powerOfTen(INT_MIN)}, Exact{0.0});
}

TEST(Truncated, StaysWithinInt) {
    EXPECT_EQ(truncated(-2.9), -2);
    EXPECT_EQ(truncated(1e10), INT_MAX);
    EXPECT_EQ(truncated(-1e10), INT_MIN);
}

}  // namespace
