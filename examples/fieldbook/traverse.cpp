// Angles, bearings, coordinate differences and their misclosures.
#include "traverse.h"

#include <cmath>

namespace fieldbook {

namespace {

// An angle that keeps its sign and may exceed a circle.
CJw32Angle freeAngle(double radians) {
    return {radians, CJw32Angle::eAngleTypeRad, CJw32Angle::eAngleRangeFree};
}

void closeAngles(const Book& book, Traverse& traverse) {
    const auto count = static_cast<double>(book.stations.size());
    traverse.sum = freeAngle(0);
    for (const auto& station : book.stations) traverse.sum.AddRad(station.angle.Rad());
    traverse.expected.Deg((count - 2) * 180, CJw32Angle::eAngleRangeFree);
    traverse.misclosure = freeAngle(traverse.sum.Rad() - traverse.expected.Rad());
    traverse.correction = freeAngle(-traverse.misclosure.Rad() / count);
}

// The next bearing is the way back along the last leg, turned by the angle at the station.
void carryBearings(const Book& book, Traverse& traverse) {
    const double sign = book.turns == Direction::Left ? 1 : -1;
    auto bearing = book.firstBearing;
    for (const auto& station : book.stations) {
        Leg leg;
        leg.corrected = freeAngle(station.angle.Rad() + traverse.correction.Rad());
        if (!traverse.legs.empty()) {
            bearing.AddDeg(180);
            bearing.AddRad(sign * leg.corrected.Rad());
        }
        leg.bearing = bearing;
        traverse.legs.push_back(leg);
    }
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
