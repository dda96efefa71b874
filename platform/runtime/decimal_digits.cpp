// Decimal forms of doubles, with exact ties rounded away from zero.
#include "decimal_digits.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace {

constexpr int fractionBits = 52;

constexpr double wholeFrom = 9007199254740992.0;  // 2^53: what is larger has no fraction

// The usual case is done by whole numbers alone: below 2^53, with no more decimals than 64 bits hold.
constexpr int mostFastDecimals = 17;

constexpr auto powersOfTen = [] {
    struct {
        std::uint64_t at[mostFastDecimals + 1];
    } powers{};
    std::uint64_t power = 1;
    for (auto& each : powers.at) {
        each = power;
        power *= 10;
    }
    return powers;
}();

struct Split {
    std::uint64_t whole;
    std::uint64_t decimals;  // as a number, rounded
};

// The magnitude is its significand over 2^shift.
Split splitAt(double magnitude, int decimals) {
    const auto bits = std::bit_cast<std::uint64_t>(magnitude);
    const auto exponent = static_cast<int>(bits >> fractionBits);
    const auto fraction = bits & ((std::uint64_t{1} << fractionBits) - 1);
    const auto significand = exponent == 0 ? fraction : fraction | std::uint64_t{1} << fractionBits;
    const int shift = fractionBits + 1023 - std::max(exponent, 1);
    const auto unit = powersOfTen.at[decimals];
    if (shift == 0) return {significand, 0};
    // The product below has less than 53 + 57 bits.
    if (shift > 110) return {0, 0};
    const auto whole = shift < 64 ? significand >> shift : 0;
    const auto rest = shift < 64 ? significand - (whole << shift) : significand;
    __extension__ using Wide = unsigned __int128;
    const auto half = Wide{1} << (shift - 1);
    const auto rounded = static_cast<std::uint64_t>((Wide{rest} * unit + half) >> shift);
    return rounded < unit ? Split{whole, rounded} : Split{whole + 1, 0};
}

std::size_t writeFast(char* text, double magnitude, int decimals) {
    const auto split = splitAt(magnitude, decimals);
    char* end = std::to_chars(text, text + 20, split.whole).ptr;
    if (decimals > 0) {
        *end++ = '.';
        auto rest = split.decimals;
        for (int i = decimals; i-- > 0; rest /= 10) end[i] = static_cast<char>('0' + rest % 10);
        end += decimals;
    }
    return static_cast<std::size_t>(end - text);
}

std::size_t writeByHost(char (&text)[decimalRoom], double magnitude, int decimals) {
    const auto format = std::chars_format::fixed;
    const auto end = std::to_chars(text, text + sizeof text, magnitude, format, decimals).ptr;
    return static_cast<std::size_t>(end - text);
}

// The host rounds exact ties to even. A tie at p decimals needs a value of at most p + 1 binary
// digits after the point, and p + 1 decimals show such a value exactly.
bool isExactTie(double magnitude, int decimals) {
    constexpr int most = 900;  // the scaled value stays finite
    if (!(magnitude < wholeFrom) || decimals > most) return false;
    const double scaled = std::ldexp(magnitude, decimals + 1);
    return scaled == std::floor(scaled);
}

}  // namespace

std::size_t writeDecimal(char (&text)[decimalRoom], double magnitude, int decimals) {
    if (magnitude < wholeFrom && decimals <= mostFastDecimals) {
        return writeFast(text, magnitude, decimals);
    }
    if (!isExactTie(magnitude, decimals)) return writeByHost(text, magnitude, decimals);
    // Such a value ends in 25 or 75, so that nothing is carried beyond the digit that is kept.
    const auto length = writeByHost(text, magnitude, decimals + 1);
    if (text[length - 1] == '5') ++text[length - 2];
    return length - 1;
}
