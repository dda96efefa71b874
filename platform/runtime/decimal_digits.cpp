// Decimal forms of doubles, with exact ties rounded away from zero.
//
// The host rounds exact ties to even. A tie at p decimals needs a value of at most p + 1 binary
// digits behind the point, and such a value is told exactly with p + 1 decimals: the last of these
// is then rounded by hand. Every other value is left to the host.
#include "decimal_digits.h"

#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

bool isExactTie(double magnitude, int decimals) {
    if (!std::isfinite(magnitude) || decimals > 60) return false;
    const double scaled = std::ldexp(magnitude, decimals + 1);
    return scaled == std::floor(scaled);
}

// Adds one to the last digit of the text; a carry out of the first digit makes room for a "1".
std::size_t roundUp(char* text, std::size_t length) {
    for (std::size_t i = length; i-- > 0;) {
        if (text[i] == '.') continue;
        if (text[i] != '9') {
            ++text[i];
            return length;
        }
        text[i] = '0';
    }
    std::memmove(text + 1, text, length + 1);
    text[0] = '1';
    return length + 1;
}

}  // namespace

std::size_t writeDecimal(char (&text)[decimalRoom], double magnitude, int decimals) {
    if (!isExactTie(magnitude, decimals)) {
        return static_cast<std::size_t>(
            std::snprintf(text, sizeof text, "%.*f", decimals, magnitude));
    }
    auto length =
        static_cast<std::size_t>(std::snprintf(text, sizeof text, "%.*f", decimals + 1, magnitude));
    const bool up = text[length - 1] >= '5';
    length -= decimals == 0 ? 2 : 1;
    text[length] = '\0';
    return up ? roundUp(text, length) : length;
}
