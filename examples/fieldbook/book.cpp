// The lines of a field book: keywords, their values, and what is accepted as such.
#include "book.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <unordered_map>

namespace fieldbook {

namespace {

using Fields = std::vector<std::string_view>;

constexpr double largestLength = 1e7;  // metres
constexpr double largestRatio = 1e9;
constexpr std::size_t fewestStations = 3;
// Names and numbers stand in columns: a single long one would widen every row of the report.
constexpr std::size_t longestWord = 64;  // bytes

// What stands in the book, cut between two characters where it would fill the message.
std::string quoted(std::string_view text) {
    constexpr std::size_t most = 30;
    if (text.size() <= most) return "'" + std::string(text) + "'";
    auto length = most;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) --length;
    return "'" + std::string(text.substr(0, length)) + "...'";
}

std::optional<double> numberIn(std::string_view text) {
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end || !std::isfinite(value)) return std::nullopt;
    return value;
}

// A number that is written like 12.5; never one that depends on the language of the system.
double parseNumber(std::string_view text, std::size_t line) {
    if (text.size() > longestWord)
        throw BookError(line, quoted(text) + " is too long for a number");
    if (const auto value = numberIn(text)) return *value;
    std::string withPoint(text);
    std::replace(withPoint.begin(), withPoint.end(), ',', '.');
    if (withPoint != text && numberIn(withPoint)) {
        throw BookError(line, quoted(text) + " has a decimal comma: write " + withPoint);
    }
    throw BookError(line, quoted(text) + " is not a number");
}

double parseLength(std::string_view text, std::size_t line) {
    const double value = parseNumber(text, line);
    if (std::fabs(value) > largestLength) {
        throw BookError(line, quoted(text) + " is too large: at most 10000000 m are accepted");
    }
    return value;
}

// Packed degrees can hold minutes and seconds that no instrument shows: those are slips of the pen.
void checkPackedDegrees(double packed, std::string_view text, std::size_t line) {
    constexpr double shownAsSixty = 59.999995;  // 60 seconds have no exact packed form
    int sign = 0, degrees = 0, minutes = 0;
    double seconds = 0;
    Jw32DMS2DMS(packed, sign, degrees, minutes, seconds, -1, 0);
    if (minutes > 59) {
        throw BookError(line, quoted(text) + " has " + std::to_string(minutes) +
                                  " minutes: packed degrees are DDD.MMSSss");
    }
    if (seconds > shownAsSixty) {
        throw BookError(line,
                        quoted(text) + " has 60 seconds or more: packed degrees are DDD.MMSSss");
    }
}

CJw32Angle parseAngle(Unit unit, std::string_view text, std::size_t line) {
    const bool degrees = unit == Unit::PackedDegrees;
    const double packed = parseNumber(text, line);
    if (packed < 0 || packed >= (degrees ? 360 : 400)) {
        throw BookError(line, quoted(text) +
                                  " is outside the circle: an angle lies between 0 and " +
                                  (degrees ? "360 degrees" : "400 gons"));
    }
    if (degrees) checkPackedDegrees(packed, text, line);
    return {degrees ? Jw32DMS2Rad(packed) : Jw32GCCC2Rad(packed), CJw32Angle::eAngleTypeRad,
            CJw32Angle::eAngleRangePositive};
}

Fields split(std::string_view text) {
    Fields fields;
    for (;;) {
        text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
        if (text.empty()) return fields;
        const auto length = std::min(text.find_first_of(" \t"), text.size());
        fields.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
}

// Reads one line after another and holds what the lines so far have told.
class Reader {
  public:
    void readLine(std::string_view text);
    Book finish();

  private:
    using Action = void (Reader::*)(const Fields& values);
    struct Keyword {
        std::string_view word;
        std::size_t values;
        std::string_view names;  // of the values
        Action action;
    };

    static const Keyword& keywordOf(std::string_view word, std::size_t line);
    void readTitle(std::string_view text);
    void readUnit(const Fields& values);
    void readTurns(const Fields& values);
    void readStart(const Fields& values);
    void readBearing(const Fields& values);
    void readTolerance(const Fields& values);
    void readStation(const Fields& values);

    Unit unit() const;
    void onlyOnce(bool stoodBefore, std::string_view word) const;
    [[noreturn]] void fail(const std::string& reason) const { throw BookError(line_, reason); }

    Book book_;
    std::optional<Unit> unit_;
    bool hasTurns_ = false, hasStart_ = false, hasBearing_ = false, hasTolerance_ = false;
    std::unordered_map<std::string_view, std::size_t> lines_;  // of the stations, by their names
    std::size_t line_ = 0;
};

const Reader::Keyword& Reader::keywordOf(std::string_view word, std::size_t line) {
    static constexpr std::array<Keyword, 6> keywords = {{
        {"unit", 1, "deg or gon", &Reader::readUnit},
        {"turns", 1, "left or right", &Reader::readTurns},
        {"start", 2, "northing and easting", &Reader::readStart},
        {"bearing", 1, "the bearing of the first leg", &Reader::readBearing},
        {"tolerance", 2, "an angle and a ratio", &Reader::readTolerance},
        {"station", 3, "name, angle and distance", &Reader::readStation},
    }};
    const auto found = std::find_if(keywords.begin(), keywords.end(),
                                    [&](const Keyword& keyword) { return keyword.word == word; });
    if (found == keywords.end()) {
        throw BookError(line, quoted(word) +
                                  " is not a keyword: a line begins with title, unit, "
                                  "turns, start, bearing, tolerance or station");
    }
    return *found;
}

void Reader::readLine(std::string_view text) {
    ++line_;
    if (text.ends_with('\r')) text.remove_suffix(1);
    const auto isControl = [](char c) { return (c >= 0 && c < ' ' && c != '\t') || c == 0x7F; };
    if (std::any_of(text.begin(), text.end(), isControl)) {
        fail("there are bytes in it that are not text: is this a field book?");
    }
    text = text.substr(0, text.find('#'));
    auto fields = split(text);
    if (fields.empty()) return;
    if (fields[0] == "title") return readTitle(text);
    const auto& keyword = keywordOf(fields[0], line_);
    fields.erase(fields.begin());
    if (fields.size() != keyword.values) {
        fail(quoted(keyword.word) + " takes " + std::string(keyword.names) + ": " +
             std::to_string(keyword.values) +
             (keyword.values == 1 ? " value, not " : " values, not ") +
             std::to_string(fields.size()));
    }
    (this->*keyword.action)(fields);
}

void Reader::readTitle(std::string_view text) {
    onlyOnce(!book_.title.empty(), "title");
    const auto fields = split(text);
    if (fields.size() < 2) fail("'title' takes a text");
    const char* const end = fields.back().data() + fields.back().size();
    book_.title.assign(fields[1].data(), end);
}

void Reader::readUnit(const Fields& values) {
    onlyOnce(unit_.has_value(), "unit");
    if (values[0] != "deg" && values[0] != "gon") {
        fail(quoted(values[0]) + " is not a unit: it is deg (packed degrees) or gon");
    }
    unit_ = values[0] == "deg" ? Unit::PackedDegrees : Unit::Gons;
}

void Reader::readTurns(const Fields& values) {
    onlyOnce(hasTurns_, "turns");
    if (values[0] != "left" && values[0] != "right") {
        fail(quoted(values[0]) + " is not a direction: it is left or right");
    }
    hasTurns_ = true;
    book_.turns = values[0] == "left" ? Direction::Left : Direction::Right;
}

void Reader::readStart(const Fields& values) {
    onlyOnce(hasStart_, "start");
    hasStart_ = true;
    book_.north = parseLength(values[0], line_);
    book_.east = parseLength(values[1], line_);
}

void Reader::readBearing(const Fields& values) {
    onlyOnce(hasBearing_, "bearing");
    hasBearing_ = true;
    book_.firstBearing = parseAngle(unit(), values[0], line_);
}

// The ratio is written as 5000 or as 1:5000.
void Reader::readTolerance(const Fields& values) {
    onlyOnce(hasTolerance_, "tolerance");
    hasTolerance_ = true;
    book_.tolerance.angle = parseAngle(unit(), values[0], line_).Deg();
    const auto ratio = values[1].substr(values[1].starts_with("1:") ? 2 : 0);
    book_.tolerance.ratio = parseNumber(ratio, line_);
    if (book_.tolerance.ratio < 1 || book_.tolerance.ratio > largestRatio ||
        book_.tolerance.ratio != std::floor(book_.tolerance.ratio)) {
        fail(quoted(values[1]) +
             " is not a ratio: a whole number from 1 to 1000000000 is, as 5000 "
             "for 1:5000");
    }
}

void Reader::readStation(const Fields& values) {
    if (values[0].size() > longestWord) fail("the name " + quoted(values[0]) + " is too long");
    const auto [earlier, isNew] = lines_.emplace(values[0], line_);
    if (!isNew) {
        fail("station " + quoted(values[0]) + " stands in line " + std::to_string(earlier->second) +
             " already");
    }
    const auto angle = parseAngle(unit(), values[1], line_);
    if (angle.Rad() == 0) fail("an angle of 0 between two legs cannot be");
    const double distance = parseLength(values[2], line_);
    if (distance <= 0) fail("the distance " + quoted(values[2]) + " is not above 0");
    book_.stations.push_back({std::string(values[0]), std::string(values[1]), angle, distance});
}

Unit Reader::unit() const {
    if (!unit_) fail("an angle before the unit is known: 'unit deg' or 'unit gon' must come first");
    return *unit_;
}

void Reader::onlyOnce(bool stoodBefore, std::string_view word) const {
    if (stoodBefore) fail(quoted(word) + " stands in the book already");
}

Book Reader::finish() {
    const std::string end = "the book ends here without ";
    if (!unit_) fail(end + "a 'unit' line");
    if (!hasStart_) fail(end + "a 'start' line");
    if (!hasBearing_) fail(end + "a 'bearing' line");
    if (book_.stations.size() < fewestStations) {
        fail("the book ends here with " + std::to_string(book_.stations.size()) +
             " stations: a closed traverse has at least 3");
    }
    book_.unit = *unit_;
    return std::move(book_);
}

}  // namespace

Book parseBook(std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    if (text.empty()) throw BookError(1, "the file is empty");
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) {
        throw BookError(1, "the file is in UTF-16: save it as UTF-8");
    }
    Reader reader;
    while (!text.empty()) {
        const auto length = std::min(text.find('\n'), text.size());
        reader.readLine(text.substr(0, length));
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return reader.finish();
}

}  // namespace fieldbook
