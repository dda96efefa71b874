// Every vector of vectors.txt, to the last bit: results are compared in the shortest form that
// leads back to the same double.
#include <gtest/gtest.h>
#include <jw32/angle.h>
#include <jw32/angles.h>
#include <jw32/divisors.h>
#include <jw32/temperature.h>

#include <charconv>
#include <cstring>

#include "angles/rounding.h"
#include "support/vectors.h"

namespace {

using Angle = CJw32Angle;
using Numbers = std::vector<double>;
using Function = std::function<std::string(const Numbers&)>;

// Words among the arguments: ranges and units by their numbers.
const std::map<std::string, double> words = {
    {"none", 0}, {"positive", 1}, {"signed", 2},  {"free", 3},  {"rad", 0},   {"deg", 1},
    {"gon", 2},  {"marked", 3},   {"unknown", 6}, {"plain", 4}, {"fixed", 5},
};

double numberOf(const std::string& word) {
    if (const auto found = words.find(word); found != words.end()) return found->second;
    double number = 0.0;
    const char* const end = word.data() + word.size();
    const auto read = std::from_chars(word.data(), end, number);
    EXPECT_TRUE(read.ptr == end && read.ec == std::errc()) << word << " is no number";
    return number;
}

template <class... More>
std::string text(double first, More... more) {
    char digits[32];
    const std::string result(digits, std::to_chars(digits, std::end(digits), first).ptr);
    if constexpr (sizeof...(more) > 0) return result + ' ' + text(static_cast<double>(more)...);
    return result;
}

// A function of numbers that gives a number.
template <class Result, class... Argument>
Function plain(Result (*function)(Argument...)) {
    return [function](const Numbers& n) {
        const auto call = [&]<std::size_t... Index>(std::index_sequence<Index...>) {
            return static_cast<double>(function(static_cast<Argument>(n.at(Index))...));
        };
        return text(call(std::index_sequence_for<Argument...>()));
    };
}

// A function that splits a number: value, decimals, wrap.
Function split(void (*function)(double, int&, int&, int&, double&, int, int)) {
    return [function](const Numbers& n) {
        int sign = 7, whole = 7, minutes = 7;
        double seconds = 7.0;
        const auto decimals = static_cast<int>(n.at(1)), wrap = static_cast<int>(n.at(2));
        function(n.at(0), sign, whole, minutes, seconds, decimals, wrap);
        return text(sign, whole, minutes, seconds);
    };
}

template <class Number>
Function pair(Number (*divisor)(Number, Number), Number (*multiple)(Number, Number)) {
    return [=](const Numbers& n) {
        const auto first = static_cast<Number>(n.at(0)), second = static_cast<Number>(n.at(1));
        return text(divisor(first, second), multiple(first, second));
    };
}

Angle angle(double value, double unit, double range = Angle::eAngleRangeNone) {
    return {value, static_cast<Angle::eAngleType>(unit), static_cast<Angle::eAngleRange>(range)};
}

std::string read(const Angle& angle, double unit) {
    if (unit == 1) return text(angle.Deg());
    return text(unit == 2 ? angle.Gon() : angle.Rad());
}

void set(Angle& angle, double value, double unit, Angle::eAngleRange range) {
    if (unit == 1) return angle.Deg(value, range);
    return unit == 2 ? angle.Gon(value, range) : angle.Rad(value, range);
}

// A value, given to the constructor and to the setter: range, unit, value.
std::string fold(const Numbers& n) {
    const Angle made = angle(n.at(2), n.at(1), n.at(0));
    Angle changed = angle(1.0, Angle::eAngleTypeRad, Angle::eAngleRangeFree);
    set(changed, n.at(2), n.at(1), made.AngleRange());
    EXPECT_EQ(made.AngleRange(), n.at(0));
    EXPECT_EQ(changed.AngleRange(), n.at(0) == 0 ? 3 : n.at(0)) << "none leaves the former range";
    EXPECT_EQ(read(changed, n.at(1)), read(made, n.at(1))) << "is set otherwise than made";
    return read(made, n.at(1));
}

// Sums: range, unit, start, and what is added.
Function sum(void (*add)(Angle&, const Numbers&)) {
    return [add](const Numbers& n) {
        Angle result = angle(n.at(2), n.at(1), n.at(0));
        add(result, n);
        EXPECT_EQ(result.AngleRange(), n.at(0));
        return read(result, n.at(1));
    };
}

void addDms(Angle& angle, const Numbers& n) {
    angle.AddDms(static_cast<short>(n.at(3)), static_cast<short>(n.at(4)), n.at(5));
}

std::string getDms(const Numbers& n) {
    short whole = 7, minutes = 7;
    double seconds = 7.0;
    const Angle source = angle(n.at(1), Angle::eAngleTypeDeg, n.at(0));
    source.GetDms(whole, minutes, seconds, static_cast<int>(n.at(2)));
    return text(whole, minutes, seconds);
}

std::string setDms(const Numbers& n) {
    const auto whole = static_cast<short>(n.at(0)), minutes = static_cast<short>(n.at(1));
    return text(Angle(whole, minutes, n.at(2), Angle::eAngleRangeNone).Deg());
}

std::string radians(const Numbers& n) {
    return text(angle(n.at(1), n.at(0)).Rad());
}

// The text of an angle in a buffer that is large enough: unit, value, form, decimals.
std::string angleText(const Numbers& n) {
    std::string buffer(100, 'x');
    const auto form = static_cast<Angle::eAngleType>(n.at(2));
    const DWORD length =
        angle(n.at(1), n.at(0)).AngleToString(buffer.data(), 100, form, static_cast<int>(n.at(3)));
    EXPECT_EQ(length, std::strlen(buffer.c_str())) << buffer;
    return '|' + buffer.substr(0, length) + '|';
}

std::string dmsTexts(const Numbers& n) {
    const auto form = [&n](double type) { return angleText({1, n.at(0), type, n.at(1)}); };
    return form(3) + form(4) + form(5);
}

const std::map<std::string, Function> functions = {
    {"Jw32Deg2DMS", split(Jw32Deg2DMS)},
    {"Jw32Grad2GCCC", split(Jw32Grad2GCCC)},
    {"Jw32Rad2DMS:split", split(Jw32Rad2DMS)},
    {"Jw32Rad2GCCC:split", split(Jw32Rad2GCCC)},
    {"Jw32DMS2DMS:split", split(Jw32DMS2DMS)},
    {"Jw32GCCC2GCCC:split", split(Jw32GCCC2GCCC)},
    {"Jw32Rad2DMS:pack", plain(static_cast<double (*)(double, int, int)>(Jw32Rad2DMS))},
    {"Jw32Rad2GCCC:pack", plain(static_cast<double (*)(double, int, int)>(Jw32Rad2GCCC))},
    {"Jw32DMS2DMS:pack", plain<double, int>(Jw32DMS2DMS)},
    {"Jw32GCCC2GCCC:pack", plain<double, int>(Jw32GCCC2GCCC)},
    {"Jw32DMS2Deg", plain(Jw32DMS2Deg)},
    {"Jw32GCCC2Grad", plain(Jw32GCCC2Grad)},
    {"Jw32DMS2Rad:parts", plain<double, int>(Jw32DMS2Rad)},
    {"Jw32GCCC2Rad:parts", plain<double, int>(Jw32GCCC2Rad)},
    {"Jw32DMS2Rad:packed", plain<double, double>(Jw32DMS2Rad)},
    {"Jw32GCCC2Rad:packed", plain<double, double>(Jw32GCCC2Rad)},
    {"Fold", fold},
    {"Radians", radians},
    {"AddRad", sum([](Angle& a, const Numbers& n) { a.AddRad(n.at(3)); })},
    {"AddDeg", sum([](Angle& a, const Numbers& n) { a.AddDeg(n.at(3)); })},
    {"AddGon", sum([](Angle& a, const Numbers& n) { a.AddGon(n.at(3)); })},
    {"AddDms", sum(addDms)},
    {"GetDms", getDms},
    {"SetDms", setDms},
    {"AngleToString", angleText},
    {"DmsTexts", dmsTexts},
    {"Int", pair(__Jw32Gcdi, __Jw32Lcmi)},
    {"Long", pair(__Jw32Gcdl, __Jw32Lcml)},
    {"Doubles", pair(__Jw32Gcdd, __Jw32Lcmd)},
    {"Jw32C2K", plain(Jw32C2K)},
    {"Jw32K2C", plain(Jw32K2C)},
    {"Jw32RoundToStep", plain(jw32::angles::Jw32RoundToStep)},
    {"Jw32IsAtLeast", plain(jw32::angles::Jw32IsAtLeast)},
    {"powerOfTen", plain(jw32::angles::powerOfTen)},
    {"truncated", plain(jw32::angles::truncated)},
};

TEST(AnglesAndNumbers, HoldTheVectors) {
    Operations operations;
    for (const auto& [name, function] : functions) {
        operations[name] = [function = function](const Words& arguments) {
            Numbers numbers;
            for (const auto& word : arguments) numbers.push_back(numberOf(word));
            return function(numbers);
        };
    }
    holdVectors(operations);
}

}  // namespace
