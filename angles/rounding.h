// Rounding, tolerant comparison and truncation of doubles, as the angle operations need them.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include "angles/constants.h"

namespace jw32::angles {

// 10 to a power, by repeated squaring. The power of -n is 1.0 / 10^n, not the nearest double to it.
constexpr double powerOfTen(int exponent) {
    double power = 1.0;
    double base = 10.0;
    unsigned bits =
        exponent < 0 ? 0U - static_cast<unsigned>(exponent) : static_cast<unsigned>(exponent);
    while (bits != 0) {
        if ((bits & 1U) != 0) power *= base;
        bits >>= 1U;
        if (bits != 0) base *= base;
    }
    return exponent < 0 ? 1.0 / power : power;
}

// Half a unit of the last of so many decimals.
constexpr double halfUnit(int decimals) {
    return 0.5 * powerOfTen(-decimals);
}

// The nearest int below in magnitude. What int cannot hold becomes its nearest value, NaN becomes
// 0.
inline int truncated(double value) {
    if (std::isnan(value)) return 0;
    return static_cast<int>(std::clamp(value, double{std::numeric_limits<int>::min()},
                                       double{std::numeric_limits<int>::max()}));
}

inline bool isNearlyEqual(double a, double b) {
    const double tolerance = std::max(std::fabs(a), std::fabs(b)) * kEpsilon + kEpsilon;
    return std::fabs(a - b) < tolerance;
}

// 1 when a is above b or within a few units of the last place of it, else 0.
inline int Jw32IsAtLeast(double a, double b) {
    return a > b || isNearlyEqual(a, b) ? 1 : 0;
}

// The value rounded to a multiple of the step, halves away from zero; unchanged for a step that is
// negative or nearly 0. The multiple carries the step's own error: 123456 steps of 0.0001 are
// 12.345600000000001.
inline double Jw32RoundToStep(double value, double step) {
    if (step < 0.0 || isNearlyEqual(step, 0.0)) return value;
    return std::copysign(std::floor(std::fabs(value) / step + 0.5) * step, value);
}

}  // namespace jw32::angles
