// The angle class: its range, its copies, and the buffers of its texts.
#include <gtest/gtest.h>
#include <jw32/angle.h>

#include <cmath>
#include <string>
#include <tuple>
#include <type_traits>

namespace {

using Angle = CJw32Angle;

constexpr auto kRad = Angle::eAngleTypeRad, kDeg = Angle::eAngleTypeDeg;
constexpr auto kMarked = Angle::eAngleTypeDmsMarked;
constexpr auto kUnknown = static_cast<Angle::eAngleType>(6);
constexpr auto kNone = Angle::eAngleRangeNone, kPositive = Angle::eAngleRangePositive;
constexpr auto kFree = Angle::eAngleRangeFree, kSigned = Angle::eAngleRangeSigned;

TEST(Angle, StartsAtZeroWithoutRangeAndCopiesBoth) {
    static_assert(std::has_virtual_destructor_v<Angle>);
    const Angle source(1.0, kRad, kSigned), copy(source);
    Angle target;
    EXPECT_EQ(target.Rad(), 0.0);
    EXPECT_EQ(target.AngleRange(), kNone);
    EXPECT_EQ(&(target = source), &target);
    for (const Angle& angle : {copy, target}) {
        EXPECT_EQ(angle.Rad(), 1.0);
        EXPECT_EQ(angle.AngleRange(), kSigned);
    }
}

TEST(Angle, KeepsItsRangeUnlessTheSetterBringsOne) {
    Angle angle(0.0, kRad, kPositive);
    angle.Deg(-90.0, kNone);
    EXPECT_EQ(angle.Deg(), 270.0);
    angle.SetDms(-90, 0, 0.0, kNone);
    EXPECT_EQ(angle.Deg(), 270.0);
    angle.SetDms(-90, 0, 0.0, kFree);
    EXPECT_EQ(angle.Deg(), -90.0);
    EXPECT_EQ(angle.AngleRange(), kFree);
    EXPECT_EQ(Angle(-90, 0, 0.0, kPositive).Deg(), 270.0);
}

TEST(Angle, LeavesItsValueWhenTheRangeChanges) {
    Angle angle(-90.0, kDeg, kFree);
    for (const auto range : {kPositive, static_cast<Angle::eAngleRange>(4), kNone}) {
        angle.AngleRange(range);
        EXPECT_EQ(angle.AngleRange(), range);
        EXPECT_EQ(angle.Deg(), -90.0);
    }
}

TEST(AngleText, IsCutToTheBufferWhichIsClearedButCountedWhole) {
    char most[99];
    const auto form = Angle::eAngleTypeDmsFixed;
    EXPECT_LT(Angle(std::nan(""), kRad, kFree).AngleToString(most, 99, form, 40), 50U);
    const Angle angle(12.5, kDeg, kNone);
    const std::tuple<Angle::eAngleType, int, std::string> rows[] = {
        {kMarked, 2, "12 30' 0.00\""}, {kDeg, 9, "12.500000000"}, {kUnknown, 2, ""}};
    for (const auto& [type, decimals, text] : rows) {
        for (const DWORD size : {31u, 13u, 12u, 5u, 1u, 0u}) {
            std::string buffer(32, 'x'), expected = text.substr(0, size == 0 ? 0 : size - 1);
            expected.resize(size, '\0');
            EXPECT_EQ(angle.AngleToString(buffer.data(), size, type, decimals),
                      size == 0 ? 0 : text.size());
            EXPECT_EQ(buffer, expected + std::string(32 - size, 'x')) << size;
        }
        EXPECT_EQ(angle.AngleToString(nullptr, 10, type, decimals), 0U);
    }
}

}  // namespace
