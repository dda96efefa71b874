// Random formats, held against the host's own snprintf where the C standard decides, and formats
// that are refused.
#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <bit>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>

namespace {

class Formats {
  public:
    std::uint64_t below(std::uint64_t limit) { return random_() % limit; }
    std::string oneOf(const std::string& letters) { return {letters[below(letters.size())]}; }

    // Flags, width and precision, where `flags` are those that the standard knows for the letter.
    std::string start(const std::string& flags) {
        std::string format = "%";
        for (const char flag : flags) {
            if (below(3) == 0) format += flag;
        }
        if (below(2) == 0) format += std::to_string(1 + below(40));
        constexpr std::array precisions{"", ".", ".0", ".1", ".2", ".9", ".18", ".70", ".1200"};
        return format + precisions[below(precisions.size())];
    }
    std::string modifier() {
        constexpr std::array modifiers{"", "hh", "h", "ll", "j", "z", "t"};
        return modifiers[below(modifiers.size())];
    }
    double number() {
        if (below(2) == 0) return static_cast<std::int32_t>(random_()) / 1000.0;
        const auto number = std::bit_cast<double>(random_());
        return std::isnan(number) ? HUGE_VAL : number;
    }
    std::int64_t integer() {
        constexpr std::array<std::int64_t, 6> some{0, 1, -1, 7, INT64_MIN, INT64_MAX};
        const auto at = below(2 * some.size());
        return at < some.size() ? some[at] : static_cast<std::int64_t>(random_() >> below(64));
    }

  private:
    std::mt19937_64 random_{20};
};

template <class... Argument>
void expectAsTheHost(const std::string& format, std::size_t size, Argument... arguments) {
    std::array<char, 2000> host, text;
    const auto length = std::snprintf(host.data(), host.size(), format.c_str(), arguments...);
    errno = 0;
    const int result = sprintf_s(text.data(), size, format.c_str(), arguments...);
    const bool fits = static_cast<std::size_t>(length) < size;
    ASSERT_EQ(result, fits ? length : -1) << format;
    ASSERT_STREQ(text.data(), fits ? host.data() : "") << format;
    ASSERT_EQ(errno, fits ? 0 : ERANGE) << format;
}

// A tie at the precision, which the host rounds to even.
bool isTie(const std::string& format, double number) {
    std::array<char, 3000> exact;
    std::snprintf(exact.data(), exact.size(), "%.1100f", number);
    const auto dot = format.find('.');
    const auto precision = dot == std::string::npos ? 6 : std::atoi(format.c_str() + dot + 1);
    const std::string digits(exact.data());
    const auto rest = digits.find('.') + 1 + static_cast<std::size_t>(precision);
    return digits.size() > rest && digits[rest] == '5' &&
           digits.find_first_not_of('0', rest + 1) == std::string::npos;
}

TEST(BoundedFormat, IsThatOfTheHost) {
    Formats random;
    for (int i = 0; i < 30000 && !::testing::Test::HasFailure(); ++i) {
        const std::size_t size = random.below(4) == 0 ? 1 + random.below(40) : 2000;
        const auto modifier = random.modifier();
        const auto isWide = modifier.find_first_of("ljzt") != std::string::npos;
        auto integer = random.integer();
        auto format = random.below(2) == 0 ? random.start("-+ 0") + modifier + random.oneOf("di")
                                           : random.start("-#0") + modifier + random.oneOf("oxX");
        if (format.back() == 'o') integer |= 1;  // "%#.0o" of 0 is a "0" to the standard alone
        if (isWide) {
            expectAsTheHost(format + " then %s", size, integer, "text");
        } else {
            expectAsTheHost(format + " then %s", size, static_cast<int>(integer), "text");
        }
        const int width = static_cast<int>(random.below(80)) - 40;
        expectAsTheHost(random.start("-") + "s|%*c|%-*.*u", size, "some text", width, 'x', width,
                        width / 2, static_cast<unsigned>(integer));
        format = random.start("-+ #0") + random.oneOf("fF");
        const double number = random.number();
        if (!isTie(format, number)) expectAsTheHost(format + "|%d", size, number, 5);
    }
}

TEST(BoundedFormat, RoundsTiesAwayFromZero) {
    const auto shown = [](double magnitude, int decimals) {
        std::array<char, 64> text{};
        sprintf_s(text.data(), text.size(), "%.*f", decimals, magnitude);
        return std::string(text.data());
    };
    EXPECT_EQ(shown(0.5, 0) + shown(2.5, 0) + shown(9.5, 0), "1310");
    EXPECT_EQ(shown(0.125, 2) + ' ' + shown(0.99609375, 7), "0.13 0.9960938");
    EXPECT_EQ(shown(std::ldexp(1, -18), 17) + ' ' + shown(std::ldexp(1, -19), 18),
              "0.00000381469726563 0.000001907348632813");
    EXPECT_EQ(shown(std::ldexp(1, -62), 61),
              "0.0000000000000000002168404344971008868014905601739883422851563");
    EXPECT_EQ(shown(4503599627370495.5, 0) + ' ' + shown(4503599627370497.5, 0),
              "4503599627370496 4503599627370498");
}

TEST(BoundedFormat, RefusesAsAWholeWhatItDoesNotKnow) {
    for (const std::string unknown :
         {"%n", "%", "%5", "%q", "%1$d", "%'d", "%ls", "%lc", "%S", "%e", "%g", "%a", "%Lf",
          "%.-1d", "%hf", "%wd", "%99999999999d", "%.99999999999f"}) {
        std::array<char, 64> text{"old"};
        errno = 0;
        EXPECT_EQ(sprintf_s(text.data(), text.size(), (unknown + " %s").c_str(), 1, 1), -1);
        EXPECT_STREQ(text.data(), "") << unknown;
        EXPECT_EQ(errno, EINVAL) << unknown;
    }
    std::array<char, 64> text{"old"};
    EXPECT_EQ(sprintf_s(text.data(), text.size(), std::string("%*d").c_str(), INT_MIN, 1), -1);
    EXPECT_STREQ(text.data(), "");
    EXPECT_EQ(sprintf_s(nullptr, 1, std::string("a").c_str()), -1);
    EXPECT_EQ(sprintf_s(text.data(), 0, std::string("a").c_str()), -1);
}

TEST(DecimalDigits, AreOfFiniteNumbersAndAsManyAsWanted) {
    std::array<char, 1300> digits{"old"};
    int point = 4711, sign = 4711;
    for (const double none : {-HUGE_VAL, HUGE_VAL, std::nan("")}) {
        EXPECT_EQ(_fcvt_s(digits.data(), digits.size(), none, 3, &point, &sign), EINVAL);
        EXPECT_STREQ(digits.data(), "");
    }
    EXPECT_EQ(_fcvt_s(digits.data(), digits.size(), 0.5, 1200, &point, &sign), 0);
    EXPECT_EQ(digits.data(), '5' + std::string(1199, '0'));
    EXPECT_EQ(_fcvt_s(digits.data(), 1200, 0.5, 1200, &point, &sign), ERANGE);
}

}  // namespace
