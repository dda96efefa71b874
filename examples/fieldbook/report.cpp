// Numbers and angles as text, and the tables that they stand in.
#include "report.h"

#include <algorithm>
#include <cmath>

namespace fieldbook {

namespace {

constexpr double secondParts = 360000;  // of 0.01 seconds in a degree
constexpr double noise = 1e-7;  // metres; far below what is shown, far above rounding errors

// Characters of UTF-8 text: all bytes but those that continue one.
std::size_t characters(const std::string& text) {
    const auto begins = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), begins));
}

std::string padding(const std::string& text, std::size_t width) {
    return std::string(width - std::min(width, characters(text)), ' ');
}

// Rows of text in aligned columns: the first to the left, the others to the right.
class Table {
  public:
    void add(Lines row) { rows_.push_back(std::move(row)); }

    void appendTo(Lines& lines) const {
        for (const auto& row : rows_) {
            std::string line = row[0] + padding(row[0], width(0));
            for (std::size_t i = 1; i < row.size(); ++i) {
                line += "  " + padding(row[i], width(i)) + row[i];
            }
            lines.push_back(std::move(line));
        }
    }

  private:
    std::size_t width(std::size_t column) const {
        std::size_t widest = 0;
        for (const auto& row : rows_) widest = std::max(widest, characters(row[column]));
        return widest;
    }

    std::vector<Lines> rows_;
};

std::string marked(const CJw32Angle& angle) {
    const double shown = std::round(angle.Deg() * secondParts) / secondParts;
    // Adding 0 makes a plain 0 of a negative one. A bearing just below the full circle becomes 0.
    const CJw32Angle rounded(shown + 0.0, CJw32Angle::eAngleTypeDeg, angle.AngleRange());
    char text[50] = "";
    rounded.AngleToString(text, sizeof text, CJw32Angle::eAngleTypeDmsMarked, 2);
    return text;
}

// Whole millimetres. A value that is half a millimetre but for rounding errors counts as half.
long long millimetres(double metres) {
    return std::llround(std::round(metres / noise) * noise * 1000);
}

std::string metres(double value) {
    const auto shown = millimetres(value);
    const auto digits = std::to_string(1000 + std::llabs(shown) % 1000);
    return (shown < 0 ? "-" : "") + std::to_string(std::llabs(shown) / 1000) + "." +
           digits.substr(1);
}

std::string precision(const Traverse& traverse) {
    const auto missed = millimetres(traverse.linear);
    if (missed == 0) return "no misclosure to be seen";
    return "1:" + std::to_string(millimetres(traverse.length) / missed);
}

void appendAngles(const Book& book, const Traverse& traverse, Lines& lines) {
    Table table;
    table.add({"Station", "Booked", "Angle", "Corrected", "Bearing", "Distance"});
    for (std::size_t i = 0; i < book.stations.size(); ++i) {
        const auto& station = book.stations[i];
        const auto& leg = traverse.legs[i];
        table.add({station.name, station.booked, marked(station.angle), marked(leg.corrected),
                   marked(leg.bearing), metres(station.distance)});
    }
    table.appendTo(lines);
}

void appendCoordinates(const Book& book, const Traverse& traverse, Lines& lines) {
    Table table;
    table.add({"Station", "To the north", "To the east", "Northing", "Easting"});
    for (std::size_t i = 0; i < book.stations.size(); ++i) {
        const auto& leg = traverse.legs[i];
        table.add({book.stations[i].name, metres(leg.north), metres(leg.east),
                   metres(leg.stationNorth), metres(leg.stationEast)});
    }
    table.appendTo(lines);
}

void appendAngularMisclosure(const Traverse& traverse, Lines& lines) {
    Table table;
    table.add({"Sum of the angles", marked(traverse.sum)});
    table.add({"It should be", marked(traverse.expected)});
    table.add({"Angular misclosure", marked(traverse.misclosure)});
    table.add({"Correction of each angle", marked(traverse.correction)});
    table.appendTo(lines);
}

void appendLinearMisclosure(const Traverse& traverse, Lines& lines) {
    Table table;
    table.add({"Length of the traverse", metres(traverse.length)});
    table.add({"Misclosure to the north", metres(traverse.north)});
    table.add({"Misclosure to the east", metres(traverse.east)});
    table.add({"Linear misclosure", metres(traverse.linear)});
    table.add({"Relative precision", precision(traverse)});
    table.appendTo(lines);
}

}  // namespace

std::string unitName(Unit unit) {
    return unit == Unit::PackedDegrees ? "packed degrees" : "gons";
}

Lines reportLines(const std::string& bookName, const Book& book, const Traverse& traverse) {
    const std::string turns = book.turns == Direction::Left ? "left" : "right";
    Lines lines = {
        "Closed traverse" + (book.title.empty() ? "" : ": " + book.title),
        "Book " + bookName + ", " + std::to_string(book.stations.size()) + " stations, booked in " +
            unitName(book.unit) + ", turning " + turns,
        "",
    };
    appendAngles(book, traverse, lines);
    lines.push_back("");
    appendAngularMisclosure(traverse, lines);
    lines.push_back("");
    lines.push_back("Legs as measured, coordinates adjusted by the compass rule, in metres");
    lines.push_back("");
    appendCoordinates(book, traverse, lines);
    lines.push_back("");
    appendLinearMisclosure(traverse, lines);
    return lines;
}

}  // namespace fieldbook
