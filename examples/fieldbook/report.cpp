// Numbers and angles as text, and the tables that they stand in.
#include "report.h"

#include <algorithm>
#include <cmath>

namespace fieldbook {

namespace {

constexpr double secondParts = 360000;  // of 0.01 seconds in a degree
constexpr double gonParts = 100000;
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
        const auto width = widths();
        for (const auto& row : rows_) {
            std::string line = row[0] + padding(row[0], width[0]);
            for (std::size_t i = 1; i < row.size(); ++i) {
                line += "  " + padding(row[i], width[i]) + row[i];
            }
            line.erase(line.find_last_not_of(' ') + 1);
            lines.push_back(std::move(line));
        }
    }

  private:
    std::vector<std::size_t> widths() const {
        std::vector<std::size_t> widest(rows_.front().size());
        for (const auto& row : rows_) {
            for (std::size_t i = 0; i < row.size(); ++i) {
                widest[i] = std::max(widest[i], characters(row[i]));
            }
        }
        return widest;
    }

    std::vector<Lines> rows_;
};

std::string digits(long long value, std::size_t atLeast) {
    const auto text = std::to_string(value);
    return std::string(atLeast - std::min(atLeast, text.size()), '0') + text;
}

// A number of units of the last decimal.
std::string decimal(long long units, std::size_t decimals) {
    auto text = digits(std::llabs(units), decimals + 1);
    text.insert(text.size() - decimals, ".");
    return (units < 0 ? "-" : "") + text;
}

// Adding 0 makes a plain 0 of a negative one. A bearing just below the full circle becomes 0.
std::string degreesText(const CJw32Angle& angle) {
    const double shown = std::round(angle.Deg() * secondParts) / secondParts + 0.0;
    const CJw32Angle rounded(shown, CJw32Angle::eAngleTypeDeg, angle.AngleRange());
    int sign = 0, degrees = 0, minutes = 0;
    double seconds = 0;
    Jw32Deg2DMS(rounded.Deg(), sign, degrees, minutes, seconds, 2, 0);
    const auto hundredths = std::llround(seconds * 100);
    return (sign < 0 ? "-" : "") + std::to_string(degrees) + "\u00B0 " + digits(minutes, 2) + "' " +
           digits(hundredths / 100, 2) + "." + digits(hundredths % 100, 2) + "\"";
}

std::string gonsText(const CJw32Angle& angle) {
    const double shown = std::round(angle.Gon() * gonParts) / gonParts;
    const CJw32Angle rounded(shown, CJw32Angle::eAngleTypeGon, angle.AngleRange());
    return decimal(std::llround(rounded.Gon() * gonParts), 5);
}

using AngleText = std::string (*)(const CJw32Angle& angle);

AngleText textIn(Unit unit) {
    return unit == Unit::PackedDegrees ? degreesText : gonsText;
}

// A value that is half a millimetre but for rounding errors counts as half.
std::string metres(double value) {
    return decimal(std::llround(std::round(value / noise) * noise * 1000), 3);
}

std::string ratio(double value) {
    constexpr double ratioNoise = 1e-6;
    return "1:" + std::to_string(std::llround(std::floor(value + ratioNoise)));
}

std::string precision(const Traverse& traverse) {
    constexpr double shownAsZero = 0.0005;
    if (traverse.linear < shownAsZero - noise) return "no misclosure to be seen";
    return ratio(traverse.length / traverse.linear);
}

void appendAngles(const Book& book, const Traverse& traverse, Lines& lines) {
    const AngleText text = textIn(book.unit);
    Table table;
    table.add({"Station", "Booked", "Angle", "Corrected", "Bearing", "Distance"});
    for (std::size_t i = 0; i < book.stations.size(); ++i) {
        const auto& station = book.stations[i];
        const auto& leg = traverse.legs[i];
        table.add({station.name, station.booked, text(station.angle), text(leg.corrected),
                   text(leg.bearing), metres(station.distance)});
    }
    table.add({book.stations[0].name, "", "", "", text(traverse.closingBearing), ""});
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
    table.add({book.stations[0].name, "", "", metres(traverse.closingNorth),
               metres(traverse.closingEast)});
    table.appendTo(lines);
}

void appendAngularMisclosure(const Book& book, const Traverse& traverse, Lines& lines) {
    const AngleText text = textIn(book.unit);
    Table table;
    table.add({"Sum of the angles", text(traverse.sum)});
    table.add({"It should be", text(traverse.expected)});
    table.add({"Angular misclosure", text(traverse.misclosure)});
    table.add({"Allowed", text(traverse.allowedMisclosure)});
    table.add({"Correction of each angle", text(traverse.correction)});
    table.appendTo(lines);
}

void appendLinearMisclosure(const Book& book, const Traverse& traverse, Lines& lines) {
    Table table;
    table.add({"Length of the traverse", metres(traverse.length)});
    table.add({"Misclosure to the north", metres(traverse.north)});
    table.add({"Misclosure to the east", metres(traverse.east)});
    table.add({"Linear misclosure", metres(traverse.linear)});
    table.add({"Allowed", metres(traverse.allowedLinear)});
    table.add({"Relative precision", precision(traverse)});
    table.add({"At least", ratio(book.tolerance.ratio)});
    table.appendTo(lines);
}

std::string verdict(const Traverse& traverse) {
    if (traverse.anglesPass && traverse.legsPass)
        return "Both misclosures are within the tolerance.";
    if (traverse.legsPass) return "The angular misclosure exceeds the tolerance.";
    if (traverse.anglesPass) return "The linear misclosure exceeds the tolerance.";
    return "Both misclosures exceed the tolerance.";
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
    appendAngularMisclosure(book, traverse, lines);
    lines.push_back("");
    lines.push_back("Legs as measured, coordinates adjusted by the compass rule, in metres");
    lines.push_back("");
    appendCoordinates(book, traverse, lines);
    lines.push_back("");
    appendLinearMisclosure(book, traverse, lines);
    lines.push_back("");
    lines.push_back(verdict(traverse));
    return lines;
}

}  // namespace fieldbook
