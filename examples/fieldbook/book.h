// A surveyor's field book of a closed traverse, and how its text is read.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <jw32/jw32.h>

namespace fieldbook {

enum class Unit {
    PackedDegrees,  // DDD.MMSSss
    Gons,           // GGG.CCcc
};

// Which way round the traverse goes, and so which way an interior angle turns.
enum class Direction { Left, Right };

// What the misclosures may come to.
struct Tolerance {
    double angle =
        30.0 / 3600;      // degrees; the sum of n angles may be off by this times the root of n
    double ratio = 5000;  // the length of the traverse by its linear misclosure, at least
};

struct Station {
    std::string name;
    std::string booked;   // the angle as it stands in the book
    CJw32Angle angle;     // interior, between the leg that arrives and the leg that leaves
    double distance = 0;  // metres to the next station; from the last one, to the first
};

struct Book {
    std::string title;
    Unit unit = Unit::PackedDegrees;
    Direction turns = Direction::Left;
    CJw32Angle firstBearing;     // of the leg from the first station to the second
    double north = 0, east = 0;  // of the first station, metres
    Tolerance tolerance;
    std::vector<Station> stations;  // at least 3
};

// What is wrong with a book: what() is "line 7: the reason".
class BookError : public std::runtime_error {
  public:
    BookError(std::size_t line, const std::string& reason)
        : std::runtime_error("line " + std::to_string(line) + ": " + reason) {}
};

// Reads a book. Its form is described in examples/data/README.md.
// Throws BookError at the first line that cannot be used.
Book parseBook(std::string_view text);

}  // namespace fieldbook
