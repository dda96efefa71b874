// Parts from packed numbers.
#include <cmath>

#include "angles/parts.h"
#include "jw32/angles.h"

namespace {

using namespace jw32::angles;

// Keeps two decimals such as .34, whose double lies just below, from being read as 33 minutes.
constexpr double kMinutesGuard = 5e-07;

Parts digitsOf(double packed) {
    Parts parts{};
    parts.sign = packed < 0.0 ? -1 : 1;
    const double magnitude = std::fabs(packed);
    parts.whole = truncated(magnitude);
    parts.minutes = truncated((magnitude - parts.whole) * 100.0 + kMinutesGuard);
    parts.seconds = (magnitude - (parts.minutes / 100.0 + parts.whole)) * 10000.0;
    if (parts.seconds < 0.0) parts.seconds = 0.0;
    return parts;
}

// Takes on seconds and minutes that the guard or a rounding brought to a full hundred.
void carryHundreds(Parts& parts) {
    if (Jw32IsAtLeast(parts.seconds, 100.0) != 0) {
        parts.seconds -= 100.0;
        parts.minutes = increased(parts.minutes);
    }
    if (parts.minutes >= 100) {
        parts.minutes -= 100;
        parts.whole = increased(parts.whole);
    }
}

}  // namespace

void Jw32DMS2DMS(double dPacked, int& nSign, int& nDegrees, int& nMinutes, double& dSeconds,
                 int nDecimals, int bWrap) {
    Parts parts = digitsOf(dPacked);
    carryHundreds(parts);
    carrySeconds(parts, kSexagesimal, nDecimals);
    foldWhole(parts, kSexagesimal, bWrap);
    handOut(parts, nSign, nDegrees, nMinutes, dSeconds);
}

void Jw32GCCC2GCCC(double dPacked, int& nSign, int& nGons, int& nMinutes, double& dSeconds,
                   int nDecimals, int bWrap) {
    Parts parts = digitsOf(dPacked);
    carrySeconds(parts, kCentesimal, nDecimals);
    foldWhole(parts, kCentesimal, bWrap);
    handOut(parts, nSign, nGons, nMinutes, dSeconds);
}
