// An angle in parts, what the sexagesimal and the centesimal notation differ in, and the carry and
// the fold of the parts.
#pragma once

#include "angles/constants.h"
#include "angles/rounding.h"

namespace jw32::angles {

struct Notation {
    double base;     // minutes to the degree or gon, seconds to the minute
    int lastMinute;  // the highest number of minutes before they carry
    double carry;    // seconds above this are a full minute
    int circle;      // degrees or gons in the full circle
};

inline constexpr Notation kSexagesimal{60.0, 59, kSexagesimalCarry, 360};
inline constexpr Notation kCentesimal{100.0, 99, kCentesimalCarry, 400};

struct Parts {
    int sign;   // -1 or 1
    int whole;  // degrees or gons
    int minutes;
    double seconds;
};

// One more, as far as int goes.
inline int increased(int value) {
    return truncated(value + 1.0);
}

// Takes seconds that would be shown as the base itself on to the minutes.
inline void carrySeconds(Parts& parts, const Notation& notation, int decimals) {
    if (decimals < 0 || !(parts.seconds + halfUnit(decimals) > notation.carry)) return;
    parts.seconds = 0.0;
    parts.minutes = increased(parts.minutes);
    if (parts.minutes <= notation.lastMinute) return;
    parts.minutes = 0;
    parts.whole = increased(parts.whole);
}

// Takes the full circles off a count of degrees or gons, which is never negative.
inline void foldWhole(Parts& parts, const Notation& notation, int wrap) {
    if (wrap != 0) parts.whole %= notation.circle;
}

inline void handOut(const Parts& parts, int& sign, int& whole, int& minutes, double& seconds) {
    sign = parts.sign;
    whole = parts.whole;
    minutes = parts.minutes;
    seconds = parts.seconds;
}

}  // namespace jw32::angles
