// The constants that the conversions and the angle class share.
#pragma once

#include <bit>
#include <cstdint>

namespace jw32::angles {

inline constexpr double kEpsilon = 2.220446049250313e-16;  // 2 to the power of -52

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kTwoPi = 6.283185307179586;

inline constexpr double kRadiansPerDegree = 0.017453292519943295;
inline constexpr double kRadiansPerGon = 0.015707963267948967;
inline constexpr double kDegreesPerRadian = 57.29577951308232;
inline constexpr double kGonsPerRadian = 63.66197723675813;

// Seconds above these, half a shown digit included, are a full minute: the second double below the
// base, so that a sum that rounding left just short of it counts too.
inline constexpr double kSexagesimalCarry = 59.999999999999986;
inline constexpr double kCentesimalCarry = 99.99999999999997;
static_assert(std::bit_cast<std::uint64_t>(kSexagesimalCarry) == 0x404DFFFFFFFFFFFE);
static_assert(std::bit_cast<std::uint64_t>(kCentesimalCarry) == 0x4058FFFFFFFFFFFE);

}  // namespace jw32::angles
