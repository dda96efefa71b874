// Packed numbers from parts and from radians.
#include <cmath>

#include "angles/parts.h"
#include "jw32/angles.h"

namespace {

using namespace jw32::angles;

// The magnitude of an angle on its way into a packed number; as doubles, the degrees cannot
// overflow.
struct Magnitude {
    double whole;
    int minutes;
    double seconds;
};

void normaliseSexagesimal(Magnitude& angle) {
    if (angle.seconds >= 60.0) {
        angle.minutes = truncated(angle.minutes + std::floor(angle.seconds / 60.0));
        angle.seconds = std::fmod(angle.seconds, 60.0);
    }
    if (angle.minutes >= 60) {
        angle.whole += angle.minutes / 60;
        angle.minutes %= 60;
    }
}

// Whether what so many decimals of the packed number drop is worth a minute.
bool isMinuteDue(const Magnitude& angle, int decimals) {
    if (decimals < 0) return false;
    switch (decimals) {
        case 0:
            return angle.minutes >= 50;
        case 1:
            return angle.minutes >= 55;
        case 2:
            return Jw32IsAtLeast(angle.seconds, 50.0) != 0;
        case 3:
            return Jw32IsAtLeast(angle.seconds, 55.0) != 0;
        default:
            return angle.seconds + halfUnit(decimals - 4) > kSexagesimalCarry;
    }
}

void carryMinute(Magnitude& angle) {
    angle.seconds = 0.0;
    ++angle.minutes;
    if (angle.minutes <= kSexagesimal.lastMinute) return;
    angle.minutes = 0;
    angle.whole += 1.0;
}

// As long as doubles hold the circle exactly, the remainder is what repeated subtraction leaves.
double foldedToCircle(double value, double circle) {
    if (Jw32IsAtLeast(value, circle) == 0) return value;
    const double rest = std::fmod(value, circle);
    return Jw32IsAtLeast(rest, circle) != 0 ? rest - circle : rest;
}

double packed(const Magnitude& angle, const Notation& notation, int sign, int decimals, int wrap) {
    double value = (angle.whole + angle.minutes / 100.0) + angle.seconds / 10000.0;
    if (decimals >= 0) value = Jw32RoundToStep(value, powerOfTen(-decimals));
    if (wrap != 0) value = foldedToCircle(value, notation.circle);
    return sign < 0 ? -value : value;
}

Magnitude magnitudeOf(int whole, int minutes, double seconds) {
    return {std::fabs(whole), minutes, seconds < 0.0 ? 0.0 : seconds};
}

}  // namespace

double Jw32DMS2DMS(int nSign, int nDegrees, int nMinutes, double dSeconds, int nDecimals,
                   int bWrap) {
    Magnitude angle = magnitudeOf(nDegrees, nMinutes, dSeconds);
    normaliseSexagesimal(angle);
    if (isMinuteDue(angle, nDecimals)) carryMinute(angle);
    return packed(angle, kSexagesimal, nSign, nDecimals, bWrap);
}

double Jw32GCCC2GCCC(int nSign, int nGons, int nMinutes, double dSeconds, int nDecimals,
                     int bWrap) {
    return packed(magnitudeOf(nGons, nMinutes, dSeconds), kCentesimal, nSign, nDecimals, bWrap);
}

double Jw32Rad2DMS(double dRadians, int nDecimals, int bWrap) {
    Parts parts{};
    Jw32Rad2DMS(dRadians, parts.sign, parts.whole, parts.minutes, parts.seconds, nDecimals, bWrap);
    return Jw32DMS2DMS(parts.sign, parts.whole, parts.minutes, parts.seconds, nDecimals, bWrap);
}

double Jw32Rad2GCCC(double dRadians, int nDecimals, int bWrap) {
    Parts parts{};
    Jw32Rad2GCCC(dRadians, parts.sign, parts.whole, parts.minutes, parts.seconds, nDecimals, bWrap);
    return Jw32GCCC2GCCC(parts.sign, parts.whole, parts.minutes, parts.seconds, nDecimals, bWrap);
}
