// The reduction of a closed traverse: from the book to misclosures and coordinates.
#pragma once

#include <vector>

#include "book.h"

namespace fieldbook {

// What the reduction finds for one station and the leg that leaves it. Lengths in metres.
struct Leg {
    CJw32Angle corrected;        // the station's angle with its share of the misclosure
    CJw32Angle bearing;          // of the leg
    double north = 0, east = 0;  // what the leg adds to the coordinates
    double stationNorth = 0, stationEast = 0;  // of the station, adjusted
};

struct Traverse {
    CJw32Angle sum;                            // of the booked angles
    CJw32Angle expected;                       // what the sum should be
    CJw32Angle misclosure;                     // sum less expected
    CJw32Angle correction;                     // of each angle
    std::vector<Leg> legs;                     // one for each station, in the order of the book
    double length = 0;                         // of all legs
    double north = 0, east = 0;                // by how much the last leg misses the first station
    double linear = 0;                         // the distance that these two make
    CJw32Angle closingBearing;                 // of the first leg, carried on from the last one
    double closingNorth = 0, closingEast = 0;  // of the first station, reached by the last leg
    CJw32Angle allowedMisclosure;
    double allowedLinear = 0;                   // metres
    bool anglesPass = false, legsPass = false;  // whether the misclosures are within the tolerance
};

// Spreads the angular misclosure over all angles alike, carries the bearing along the legs, and
// adjusts the coordinates by the compass rule: each leg takes its share by its length.
Traverse reduce(const Book& book);

}  // namespace fieldbook
