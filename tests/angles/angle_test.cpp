// The angle class: range rules, setters, parts and sums, exact to the last bit.
#include "jw32/angle.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <type_traits>

#include "angles/exact.h"

namespace {

using Angle = CJw32Angle;
using Type = Angle::eAngleType;
using Range = Angle::eAngleRange;

constexpr Type kRad = Angle::eAngleTypeRad;
constexpr Type kDeg = Angle::eAngleTypeDeg;
constexpr Type kGon = Angle::eAngleTypeGon;
constexpr Range kNone = Angle::eAngleRangeNone;
constexpr Range kPositive = Angle::eAngleRangePositive;
constexpr Range kSigned = Angle::eAngleRangeSigned;
constexpr Range kFree = Angle::eAngleRangeFree;
constexpr Range kUnknown = static_cast<Range>(4);

double read(const Angle& angle, Type unit) {
    if (unit == kDeg) return angle.Deg();
    return unit == kGon ? angle.Gon() : angle.Rad();
}

void set(Angle& angle, double value, Type unit, Range range) {
    if (unit == kDeg) return angle.Deg(value, range);
    return unit == kGon ? angle.Gon(value, range) : angle.Rad(value, range);
}

struct FoldCase {
    Range range;
    Type unit;
    double value;
    Exact expected;
};

class Folding : public testing::TestWithParam<FoldCase> {};

TEST_P(Folding, IsTheSameInConstructorAndSetter) {
    const FoldCase& c = GetParam();
    const Angle made(c.value, c.unit, c.range);
    EXPECT_EQ(Exact{read(made, c.unit)}, c.expected) << c.value << " made in range " << c.range;
    EXPECT_EQ(made.AngleRange(), c.range);
    Angle changed(1.0, kRad, kFree);
    set(changed, c.value, c.unit, c.range);
    EXPECT_EQ(changed.AngleRange(), c.range == kNone ? kFree : c.range);
    EXPECT_EQ(Exact{read(changed, c.unit)}, c.expected) << c.value << " set in range " << c.range;
}

INSTANTIATE_TEST_SUITE_P(Positive, Folding,
                         testing::Values(FoldCase{kPositive, kDeg, 360.0, {0.0}},
                                         FoldCase{kPositive, kDeg, -360.0, {360.0}},
                                         FoldCase{kPositive, kDeg, 720.5, {0.5}},
                                         FoldCase{kPositive, kDeg, -90.0, {270.0}},
                                         FoldCase{kPositive, kDeg, -370.0, {349.99999999999994}},
                                         FoldCase{kPositive, kDeg, -0.0, {-0.0}},
                                         FoldCase{kPositive, kGon, 450.0, {50.0}},
                                         FoldCase{kPositive, kGon, -400.0, {400.0}},
                                         FoldCase{kPositive, kGon, -50.0, {349.99999999999994}},
                                         FoldCase{kPositive, kRad, 7.0, {0.7168146928204138}},
                                         FoldCase{kPositive, kRad, -1.0, {5.283185307179586}},
                                         FoldCase{kPositive, kRad, -7.0, {5.5663706143591725}}));

INSTANTIATE_TEST_SUITE_P(Signed, Folding,
                         testing::Values(FoldCase{kSigned, kDeg, 190.0, {10.0}},
                                         FoldCase{kSigned, kDeg, -190.0, {-10.0}},
                                         FoldCase{kSigned, kDeg, 180.0, {0.0}},
                                         FoldCase{kSigned, kDeg, -180.0, {-0.0}},
                                         FoldCase{kSigned, kDeg, -0.0, {0.0}},
                                         FoldCase{kSigned, kGon, 250.0, {50.0}},
                                         FoldCase{kSigned, kGon, -250.0, {-50.0}},
                                         FoldCase{kSigned, kRad, 4.0, {0.8584073464102069}},
                                         FoldCase{kSigned, kRad, -4.0, {-0.8584073464102069}}));

INSTANTIATE_TEST_SUITE_P(Unfolding, Folding,
                         testing::Values(FoldCase{kNone, kDeg, -1.0, {-1.0}},
                                         FoldCase{kFree, kDeg, 370.0, {370.0}},
                                         FoldCase{kFree, kGon, -450.0, {-450.0}},
                                         FoldCase{kUnknown, kDeg, -370.0, {-370.0}}));

TEST(Angle, MultipliesBeforeItDivides) {
    EXPECT_EQ(Exact{Angle(10.0, kDeg, kNone).Rad()}, Exact{(10.0 * 3.141592653589793) / 180.0});
    EXPECT_EQ(Exact{Angle(7.0, kDeg, kNone).Rad()}, Exact{0.12217304763960307});
    EXPECT_EQ(Exact{Angle(7.0, kGon, kNone).Rad()}, Exact{0.10995574287564276});
}

TEST(Angle, TakesAnUnknownUnitForRadians) {
    EXPECT_EQ(Exact{Angle(-1.0, Angle::eAngleTypeDmsMarked, kPositive).Rad()},
              Exact{5.283185307179586});
}

TEST(Angle, StartsAtZeroWithoutRange) {
    const Angle angle;
    EXPECT_EQ(Exact{angle.Rad()}, Exact{0.0});
    EXPECT_EQ(angle.AngleRange(), kNone);
    static_assert(std::has_virtual_destructor_v<Angle>);
}

TEST(Angle, CopiesAngleAndRange) {
    const Angle source(1.0, kRad, kSigned);
    const Angle copy(source);
    EXPECT_EQ(copy.Rad(), 1.0);
    EXPECT_EQ(copy.AngleRange(), kSigned);
    Angle target;
    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(target.Rad(), 1.0);
    EXPECT_EQ(target.AngleRange(), kSigned);
}

TEST(Angle, KeepsItsRangeUnlessTheSetterBringsOne) {
    Angle angle(0.0, kRad, kPositive);
    angle.Deg(-90.0, kNone);
    EXPECT_EQ(Exact{angle.Deg()}, Exact{270.0});
    angle.SetDms(-90, 0, 0.0, kNone);
    EXPECT_EQ(Exact{angle.Deg()}, Exact{270.0});
    angle.Deg(-90.0, kFree);
    EXPECT_EQ(Exact{angle.Deg()}, Exact{-90.0});
    EXPECT_EQ(angle.AngleRange(), kFree);
    angle.SetDms(-90, 0, 0.0, kPositive);
    EXPECT_EQ(angle.AngleRange(), kPositive);
    EXPECT_EQ(Exact{Angle(-90, 0, 0.0, kPositive).Deg()}, Exact{270.0});
}

TEST(Angle, LeavesItsValueWhenTheRangeChanges) {
    Angle angle(-90.0, kDeg, kFree);
    for (const Range range : {kPositive, kUnknown, kNone}) {
        angle.AngleRange(range);
        EXPECT_EQ(angle.AngleRange(), range);
        EXPECT_EQ(Exact{angle.Deg()}, Exact{-90.0});
    }
}

TEST(SetDms, LetsTheFirstPartRuleTheRest) {
    const auto degrees = [](short d, short m, double s) {
        return Exact{Angle(d, m, s, kNone).Deg()};
    };
    EXPECT_EQ(degrees(-10, 30, 0.0), Exact{-10.5});
    EXPECT_EQ(degrees(0, -30, 0.0), Exact{-0.5});
    EXPECT_EQ(degrees(0, 0, -36.0), Exact{-0.01});
    EXPECT_EQ(degrees(-10, -30, 0.0), Exact{-9.5});
    EXPECT_EQ(degrees(10, -30, 0.0), Exact{9.5});
    EXPECT_EQ(degrees(0, -30, 36.0), Exact{-0.51});
    EXPECT_EQ(degrees(0, 30, -36.0), Exact{0.48999999999999994});
}

struct DmsCase {
    double degrees;
    int decimals;
    short whole;
    short minutes;
    Exact seconds;
};

class GetDms : public testing::TestWithParam<DmsCase> {};

TEST_P(GetDms, PutsTheSignInFront) {
    const DmsCase& c = GetParam();
    short whole = 7;
    short minutes = 7;
    double seconds = 7.0;
    Angle(c.degrees, kDeg, kNone).GetDms(whole, minutes, seconds, c.decimals);
    EXPECT_EQ(whole, c.whole) << c.degrees << " degrees, " << c.decimals << " decimals";
    EXPECT_EQ(minutes, c.minutes) << c.degrees << " degrees, " << c.decimals << " decimals";
    EXPECT_EQ(Exact{seconds}, c.seconds) << c.degrees << " degrees, " << c.decimals << " decimals";
}

INSTANTIATE_TEST_SUITE_P(
    Angles, GetDms,
    testing::Values(DmsCase{-12.5, 2, -12, 30, {0.0}}, DmsCase{-0.5, 2, 0, -30, {0.0}},
                    DmsCase{-0.01, 2, 0, 0, {-36.0}}, DmsCase{360.0, 2, 360, 0, {0.0}},
                    DmsCase{29.999999, 2, 30, 0, {0.0}}, DmsCase{12.4999, 0, 12, 30, {0.0}},
                    DmsCase{29.999999, -1, 29, 59, {59.99640000000909}},
                    DmsCase{29.9999985, 2, 29, 59, {59.994600000000844}},
                    DmsCase{359.9999999, 2, 360, 0, {0.0}}, DmsCase{-10.9999999, 2, -11, 0, {0.0}},
                    DmsCase{-10.9999999, -1, -10, 59, {59.99964000000219}},
                    DmsCase{-10.4999999, 2, -10, 30, {0.0}}, DmsCase{-0.9999999, 2, -1, 0, {0.0}},
                    DmsCase{-0.0166666, 2, 0, -1, {0.0}}, DmsCase{-0.4999999, 2, 0, -30, {0.0}},
                    DmsCase{0.9999999, 2, 1, 0, {0.0}}, DmsCase{1e10, 2, 32767, 0, {0.0}},
                    DmsCase{-1e10, -1, -32768, 0, {0.0}}));

TEST(GetDms, CarriesUnderEveryRange) {
    short degrees = 0;
    short minutes = 0;
    double seconds = 0.0;
    Angle(359.9999999, kDeg, kPositive).GetDms(degrees, minutes, seconds, 2);
    EXPECT_EQ(degrees, 360);
}

enum class Sum { kRadians, kDegrees, kGons, kDms };

struct AddCase {
    Range range;
    double start;
    Type unit;
    Sum sum;
    double step;
    Exact expected;
};

class Adding : public testing::TestWithParam<AddCase> {};

TEST_P(Adding, FoldsAndLifts) {
    const AddCase& c = GetParam();
    Angle angle(c.start, c.unit, c.range);
    switch (c.sum) {
        case Sum::kRadians:
            angle.AddRad(c.step);
            break;
        case Sum::kDegrees:
            angle.AddDeg(c.step);
            break;
        case Sum::kGons:
            angle.AddGon(c.step);
            break;
        case Sum::kDms:
            angle.AddDms(static_cast<short>(c.step), 30, 0.0);
    }
    EXPECT_EQ(Exact{read(angle, c.unit)}, c.expected)
        << c.start << " and " << c.step << " in range " << c.range;
    EXPECT_EQ(angle.AngleRange(), c.range);
}

INSTANTIATE_TEST_SUITE_P(
    Sums, Adding,
    testing::Values(
        AddCase{kPositive, 350.0, kDeg, Sum::kDegrees, 20.0, {9.999999999999938}},
        AddCase{kPositive, 20.0, kDeg, Sum::kDegrees, -30.0, {349.99999999999994}},
        AddCase{kSigned, 45.0, kDeg, Sum::kDegrees, -90.0, {135.0}},
        AddCase{kSigned, -1.0, kRad, Sum::kDegrees, 10.0, {-0.825467074800567}},
        AddCase{kSigned, -1.0, kRad, Sum::kDegrees, 190.0, {-0.825467074800567}},
        AddCase{kSigned, -1.0, kRad, Sum::kGons, 210.0, {-0.8429203673205103}},
        AddCase{kSigned, -1.0, kRad, Sum::kRadians, 0.17453292519943295, {5.457718232379019}},
        AddCase{kNone, 20.0, kDeg, Sum::kDegrees, -10.0, {369.9999999999999}},
        AddCase{kNone, 0.5, kRad, Sum::kRadians, -1.0, {5.783185307179586}},
        AddCase{kNone, 0.5, kRad, Sum::kRadians, 7.0, {7.5}},
        AddCase{kPositive, 6.0, kRad, Sum::kRadians, 1.0, {0.7168146928204138}},
        AddCase{kNone, 50.0, kGon, Sum::kGons, -100.0, {349.99999999999994}},
        AddCase{kPositive, 350.0, kGon, Sum::kGons, 100.0, {49.999999999999936}},
        AddCase{kNone, 10.0, kDeg, Sum::kDms, -20.0, {-10.499999999999998}},
        AddCase{kPositive, 10.0, kDeg, Sum::kDms, -20.0, {349.5}}));

}  // namespace
