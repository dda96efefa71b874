// Parts from degrees, gons and radians.
#include <cmath>

#include "angles/parts.h"
#include "jw32/angles.h"

namespace {

using namespace jw32::angles;

Parts partsOf(const Notation& notation, double value, int decimals, int wrap) {
    Parts parts{};
    parts.sign = value < 0.0 ? -1 : 1;
    const double magnitude = std::fabs(value);
    parts.whole = truncated(magnitude);
    const double minutes = (magnitude - parts.whole) * notation.base;
    parts.minutes = truncated(minutes);
    parts.seconds = (minutes - parts.minutes) * notation.base;
    if (parts.seconds < 0.0) parts.seconds = 0.0;
    carrySeconds(parts, notation, decimals);
    foldWhole(parts, notation, wrap);
    return parts;
}

}  // namespace

void Jw32Deg2DMS(double dDegrees, int& nSign, int& nDegrees, int& nMinutes, double& dSeconds,
                 int nDecimals, int bWrap) {
    handOut(partsOf(kSexagesimal, dDegrees, nDecimals, bWrap), nSign, nDegrees, nMinutes, dSeconds);
}

void Jw32Grad2GCCC(double dGons, int& nSign, int& nGons, int& nMinutes, double& dSeconds,
                   int nDecimals, int bWrap) {
    handOut(partsOf(kCentesimal, dGons, nDecimals, bWrap), nSign, nGons, nMinutes, dSeconds);
}

void Jw32Rad2DMS(double dRadians, int& nSign, int& nDegrees, int& nMinutes, double& dSeconds,
                 int nDecimals, int bWrap) {
    Jw32Deg2DMS(dRadians * kDegreesPerRadian, nSign, nDegrees, nMinutes, dSeconds, nDecimals,
                bWrap);
}

void Jw32Rad2GCCC(double dRadians, int& nSign, int& nGons, int& nMinutes, double& dSeconds,
                  int nDecimals, int bWrap) {
    Jw32Grad2GCCC(dRadians * kGonsPerRadian, nSign, nGons, nMinutes, dSeconds, nDecimals, bWrap);
}
