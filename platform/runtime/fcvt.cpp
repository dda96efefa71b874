// The digit string of a double.
#include <algorithm>
#include <cmath>
#include <string_view>

#include "crtsecure.h"
#include "decimal_digits.h"

namespace {

// With fewer than no decimals, digits in front of the point are left out, unrounded.
std::string_view withoutLast(std::string_view digits, int count) {
    const auto drop = std::min(digits.size(), static_cast<std::size_t>(count));
    return digits.substr(0, digits.size() - drop);
}

}  // namespace

errno_t _fcvt_s(char* digits, std::size_t size, double value, int decimals, int* point, int* sign) {
    if (digits == nullptr || size == 0 || point == nullptr || sign == nullptr) return EINVAL;
    digits[0] = '\0';
    *sign = std::signbit(value) ? 1 : 0;
    *point = 0;
    if (!std::isfinite(value)) return EINVAL;
    char text[decimalRoom];
    const int shown = std::clamp(decimals, 0, mostDecimals);
    auto length = writeDecimal(text, std::fabs(value), shown);
    const auto integerLength = length - (shown > 0 ? static_cast<std::size_t>(shown) + 1 : 0);
    if (shown > 0) {
        --length;
        std::memmove(text + integerLength, text + integerLength + 1, length - integerLength);
    }
    std::string_view all(text, length);
    const auto zeros = value == 0.0 ? 1 : std::min(all.find_first_not_of('0'), length);
    *point = static_cast<int>(integerLength) - static_cast<int>(zeros);
    all.remove_prefix(zeros);
    if (decimals < 0) all = withoutLast(all, -std::max(decimals, -mostDecimals));
    const auto zerosAfter = static_cast<std::size_t>(std::max(decimals - shown, 0));
    if (all.size() + zerosAfter >= size) return ERANGE;
    all.copy(digits, all.size());
    std::memset(digits + all.size(), '0', zerosAfter);
    digits[all.size() + zerosAfter] = '\0';
    return 0;
}
