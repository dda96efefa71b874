// The angle class: its value, its range rule and its arithmetic.
#include "jw32/angle.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "angles/constants.h"
#include "angles/rounding.h"

namespace {

using namespace jw32::angles;

struct Circle {
    double full;
    double half;
};

constexpr Circle kRadians{kTwoPi, kPi};
constexpr Circle kDegrees{360.0, 180.0};
constexpr Circle kGons{400.0, 200.0};

Circle circleOf(CJw32Angle::eAngleType unit) {
    if (unit == CJw32Angle::eAngleTypeDeg) return kDegrees;
    if (unit == CJw32Angle::eAngleTypeGon) return kGons;
    return kRadians;
}

double toRadians(double value, Circle circle) {
    return (value * kPi) / circle.half;
}

double fromRadians(double radians, Circle circle) {
    return (radians * circle.half) / kPi;
}

// A part behind others counts in the direction that those in front of it have taken.
double extended(double value, double part) {
    return value < 0.0 ? value - part : value + part;
}

double degreesOf(short degrees, short minutes, double seconds) {
    return extended(extended(degrees, minutes / 60.0), seconds / 3600.0);
}

struct Dms {
    double degrees;
    double minutes;
    double seconds;
};

// The fraction, with the sign of the value also where it is 0. std::modf would do, but a C runtime
// drops that sign.
double splitOff(double& whole, double value) {
    whole = std::trunc(value);
    return std::copysign(std::isinf(value) ? 0.0 : value - whole, value);
}

// The parts of an angle; the first that is not 0 has its sign, and those behind are not negative.
Dms partsOf(double degrees) {
    Dms parts{};
    double rest = splitOff(parts.degrees, degrees);
    if (parts.degrees < 0.0) rest = std::fabs(rest);
    rest = splitOff(parts.minutes, rest * 60.0);
    if (parts.minutes < 0.0) rest = std::fabs(rest);
    parts.seconds = rest * 60.0;
    return parts;
}

// Takes seconds that would be shown as 60 on to the minutes, away from zero.
void carrySeconds(Dms& parts, bool isNegative, int decimals) {
    if (decimals < 0 || !(std::fabs(parts.seconds) + halfUnit(decimals) > kSexagesimalCarry))
        return;
    parts.seconds = 0.0;
    parts.minutes += isNegative && parts.degrees == 0.0 ? -1.0 : 1.0;
    if (std::fabs(parts.minutes) < 60.0) return;
    parts.minutes = 0.0;
    parts.degrees += isNegative ? -1.0 : 1.0;
}

short toShort(double value) {
    using Limits = std::numeric_limits<short>;
    return static_cast<short>(std::clamp(truncated(value), int{Limits::min()}, int{Limits::max()}));
}

}  // namespace

CJw32Angle::CJw32Angle() : m_dAngle(0.0), m_eRange(eAngleRangeNone) {}

CJw32Angle::CJw32Angle(CJw32Angle const& other) = default;

CJw32Angle::CJw32Angle(double const& dValue, eAngleType eType, eAngleRange eRange)
    : m_dAngle(0.0), m_eRange(eRange) {
    switch (eType) {
        case eAngleTypeDeg:
            Deg(dValue, eAngleRangeNone);
            break;
        case eAngleTypeGon:
            Gon(dValue, eAngleRangeNone);
            break;
        default:
            Rad(dValue, eAngleRangeNone);
    }
}

CJw32Angle::CJw32Angle(short const& nDegrees, short const& nMinutes, double const& dSeconds,
                       eAngleRange eRange)
    : m_dAngle(0.0), m_eRange(eRange) {
    SetDms(nDegrees, nMinutes, dSeconds, eAngleRangeNone);
}

CJw32Angle::~CJw32Angle() = default;

CJw32Angle& CJw32Angle::operator=(CJw32Angle const& other) = default;

double CJw32Angle::Rad() const {
    return m_dAngle;
}

double CJw32Angle::Deg() const {
    return fromRadians(m_dAngle, kDegrees);
}

double CJw32Angle::Gon() const {
    return fromRadians(m_dAngle, kGons);
}

void CJw32Angle::Rad(double const& dValue, eAngleRange eRange) {
    if (eRange != eAngleRangeNone) m_eRange = eRange;
    m_dAngle = SimplifyAngle(dValue, eAngleTypeRad, m_eRange);
}

void CJw32Angle::Deg(double const& dValue, eAngleRange eRange) {
    if (eRange != eAngleRangeNone) m_eRange = eRange;
    m_dAngle = toRadians(SimplifyAngle(dValue, eAngleTypeDeg, m_eRange), kDegrees);
}

void CJw32Angle::Gon(double const& dValue, eAngleRange eRange) {
    if (eRange != eAngleRangeNone) m_eRange = eRange;
    m_dAngle = toRadians(SimplifyAngle(dValue, eAngleTypeGon, m_eRange), kGons);
}

CJw32Angle::eAngleRange CJw32Angle::AngleRange() const {
    return m_eRange;
}

void CJw32Angle::AngleRange(eAngleRange eRange) {
    m_eRange = eRange;
}

void CJw32Angle::GetDms(short& nDegrees, short& nMinutes, double& dSeconds, int nDecimals) const {
    Dms parts = partsOf(Deg());
    carrySeconds(parts, m_dAngle < 0.0, nDecimals);
    nDegrees = toShort(parts.degrees);
    nMinutes = toShort(parts.minutes);
    dSeconds = parts.seconds;
}

void CJw32Angle::SetDms(short const& nDegrees, short const& nMinutes, double const& dSeconds,
                        eAngleRange eRange) {
    Deg(degreesOf(nDegrees, nMinutes, dSeconds), eRange);
}

void CJw32Angle::AddRad(double const& dValue) {
    const double folded = SimplifyAngle(dValue + m_dAngle, eAngleTypeRad, m_eRange);
    m_dAngle = folded < 0.0 ? folded + kTwoPi : folded;
}

void CJw32Angle::AddDeg(double const& dValue) {
    double step = SimplifyAngle(dValue, eAngleTypeDeg, m_eRange);
    if (step < 0.0) step += kDegrees.full;
    m_dAngle = SimplifyAngle(toRadians(step, kDegrees) + m_dAngle, eAngleTypeRad, m_eRange);
}

void CJw32Angle::AddGon(double const& dValue) {
    double step = SimplifyAngle(dValue, eAngleTypeGon, m_eRange);
    if (step < 0.0) step += kGons.full;
    m_dAngle = SimplifyAngle(toRadians(step, kGons) + m_dAngle, eAngleTypeRad, m_eRange);
}

void CJw32Angle::AddDms(short const& nDegrees, short const& nMinutes, double const& dSeconds) {
    const double step = toRadians(degreesOf(nDegrees, nMinutes, dSeconds), kDegrees);
    m_dAngle = SimplifyAngle(step + m_dAngle, eAngleTypeRad, m_eRange);
}

double CJw32Angle::SimplifyAngle(double const& dValue, eAngleType eType, eAngleRange eRange) {
    const Circle circle = circleOf(eType);
    const double magnitude = std::fabs(dValue);
    switch (eRange) {
        case eAngleRangePositive:
            return dValue >= 0.0 ? std::fmod(dValue, circle.full)
                                 : circle.full - std::fmod(magnitude, circle.full);
        case eAngleRangeSigned:
            return dValue >= 0.0 ? std::fmod(magnitude, circle.half)
                                 : -std::fmod(magnitude, circle.half);
        default:
            return dValue;
    }
}
