// Degrees, gons and radians from parts, and radians from packed numbers.
#include <cmath>

#include "angles/parts.h"
#include "jw32/angles.h"

namespace {

using namespace jw32::angles;

double decimalOf(const Notation& notation, int sign, int whole, int minutes, double seconds) {
    const double counted = seconds < 0.0 ? 0.0 : seconds;
    const double magnitude =
        (std::fabs(whole) + minutes / notation.base) + counted / (notation.base * notation.base);
    return sign < 0 ? -magnitude : magnitude;
}

}  // namespace

double Jw32DMS2Deg(int nSign, int nDegrees, int nMinutes, double dSeconds) {
    return decimalOf(kSexagesimal, nSign, nDegrees, nMinutes, dSeconds);
}

double Jw32DMS2Rad(int nSign, int nDegrees, int nMinutes, double dSeconds) {
    return Jw32DMS2Deg(nSign, nDegrees, nMinutes, dSeconds) * kRadiansPerDegree;
}

double Jw32DMS2Rad(double dPacked) {
    Parts parts{};
    Jw32DMS2DMS(dPacked, parts.sign, parts.whole, parts.minutes, parts.seconds, -1, 0);
    return Jw32DMS2Rad(parts.sign, parts.whole, parts.minutes, parts.seconds);
}

double Jw32GCCC2Grad(int nSign, int nGons, int nMinutes, double dSeconds) {
    return decimalOf(kCentesimal, nSign, nGons, nMinutes, dSeconds);
}

double Jw32GCCC2Rad(int nSign, int nGons, int nMinutes, double dSeconds) {
    return Jw32GCCC2Grad(nSign, nGons, nMinutes, dSeconds) * kRadiansPerGon;
}

double Jw32GCCC2Rad(double dPacked) {
    return dPacked * kRadiansPerGon;
}
