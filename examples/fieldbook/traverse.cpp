// Angles, bearings, coordinate differences and their misclosures.
#include "traverse.h"

#include <cmath>
#include <numbers>

namespace fieldbook {

namespace {

using std::numbers::pi;

// Far below what is shown, and far above rounding errors.
constexpr double angleNoise = 1e-10;  // radians
constexpr double lengthNoise = 1e-7;  // metres

// An angle that keeps its sign and may exceed a circle.
CJw32Angle freeAngle(double radians) {
    return {radians, CJw32Angle::eAngleTypeRad, CJw32Angle::eAngleRangeFree};
}

void closeAngles(const Book& book, Traverse& traverse) {
    const auto count = static_cast<double>(book.stations.size());
    // The angles less 180 degrees each come to -360, however many there are: the sum stays small,
    // and so do its rounding errors.
    double misclosure = 2 * pi;
    for (const auto& station : book.stations) misclosure += station.angle.Rad() - pi;
    traverse.misclosure = freeAngle(misclosure);
    traverse.expected.Deg((count - 2) * 180, CJw32Angle::eAngleRangeFree);
    traverse.sum = freeAngle(traverse.expected.Rad() + misclosure);
    traverse.correction = freeAngle(-misclosure / count);
    traverse.allowedMisclosure.Deg(book.tolerance.angle * std::sqrt(count),
                                   CJw32Angle::eAngleRangeFree);
    traverse.anglesPass = std::fabs(misclosure) <= traverse.allowedMisclosure.Rad() + angleNoise;
}

// The way back along a leg, turned by the angle at the station that the leg has reached.
CJw32Angle bearingAfter(CJw32Angle bearing, const CJw32Angle& angle, Direction turns) {
    bearing.AddDeg(180);
    bearing.AddRad(turns == Direction::Left ? angle.Rad() : -angle.Rad());
    return bearing;
}

void carryBearings(const Book& book, Traverse& traverse) {
    for (const auto& station : book.stations) {
        Leg leg;
        leg.corrected = freeAngle(station.angle.Rad() + traverse.correction.Rad());
        leg.bearing = traverse.legs.empty()
                          ? book.firstBearing
                          : bearingAfter(traverse.legs.back().bearing, leg.corrected, book.turns);
        traverse.legs.push_back(leg);
    }
    traverse.closingBearing =
        bearingAfter(traverse.legs.back().bearing, traverse.legs.front().corrected, book.turns);
}

void closeLegs(const Book& book, Traverse& traverse) {
    for (std::size_t i = 0; i < traverse.legs.size(); ++i) {
        auto& leg = traverse.legs[i];
        const double distance = book.stations[i].distance;
        leg.north = distance * std::cos(leg.bearing.Rad());
        leg.east = distance * std::sin(leg.bearing.Rad());
        traverse.length += distance;
        traverse.north += leg.north;
        traverse.east += leg.east;
    }
    traverse.linear = std::hypot(traverse.north, traverse.east);
    traverse.allowedLinear = traverse.length / book.tolerance.ratio;
    traverse.legsPass = traverse.linear <= traverse.allowedLinear + lengthNoise;
}

void adjustStations(const Book& book, Traverse& traverse) {
    double north = book.north, east = book.east;
    for (std::size_t i = 0; i < traverse.legs.size(); ++i) {
        auto& leg = traverse.legs[i];
        const double share = book.stations[i].distance / traverse.length;
        leg.stationNorth = north;
        leg.stationEast = east;
        north += leg.north - traverse.north * share;
        east += leg.east - traverse.east * share;
    }
    traverse.closingNorth = north;
    traverse.closingEast = east;
}

}  // namespace

Traverse reduce(const Book& book) {
    Traverse traverse;
    closeAngles(book, traverse);
    carryBearings(book, traverse);
    closeLegs(book, traverse);
    adjustStations(book, traverse);
    return traverse;
}

}  // namespace fieldbook
