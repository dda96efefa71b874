// printf-like formatting into bounded buffers, with exact ties of %f rounded away from zero.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

#include "crtsecure.h"
#include "decimal_digits.h"

namespace {

// A bounded buffer that remembers when something did not fit.
class Output {
  public:
    Output(char* target, std::size_t size) : target_(target), size_(size) {}

    void put(std::string_view text) {
        const auto fits = std::min(text.size(), size_ - 1 - used_);
        text.copy(target_ + used_, fits);
        used_ += fits;
        overflown_ = overflown_ || fits < text.size();
    }
    void pad(char character, std::size_t count) {
        for (; count > 0 && !overflown_; --count) put({&character, 1});
    }
    int finish() {
        target_[overflown_ ? 0 : used_] = '\0';
        return overflown_ ? -1 : static_cast<int>(used_);
    }

  private:
    char* target_;
    std::size_t size_;
    std::size_t used_ = 0;
    bool overflown_ = false;
};

// One conversion of a format: flags, width and precision read, and where it ends.
struct Conversion {
    bool left = false, zero = false, plus = false, blank = false;
    int width = 0;
    int precision = -1;
    char letter = '\0';
};

int readNumber(const char*& format, va_list& arguments) {
    if (*format == '*') {
        ++format;
        return va_arg(arguments, int);
    }
    int number = 0;
    format = std::from_chars(format, format + std::strlen(format), number).ptr;
    return number;
}

Conversion readConversion(const char*& format, va_list& arguments) {
    Conversion conversion;
    for (;; ++format) {
        if (*format == '-')
            conversion.left = true;
        else if (*format == '0')
            conversion.zero = true;
        else if (*format == '+')
            conversion.plus = true;
        else if (*format == ' ')
            conversion.blank = true;
        else
            break;
    }
    conversion.width = readNumber(format, arguments);
    if (conversion.width < 0) {
        conversion.left = true;
        conversion.width = -conversion.width;
    }
    if (*format == '.') conversion.precision = readNumber(++format, arguments);
    format += std::strspn(format, "hl");  // int and long have 32 bits alike
    conversion.letter = *format;
    if (*format != '\0') ++format;
    return conversion;
}

void putPadded(Output& output, const Conversion& conversion, std::string_view sign,
               std::string_view body, bool mayZero) {
    const auto length = sign.size() + body.size();
    const auto width = static_cast<std::size_t>(conversion.width);
    const auto padding = width > length ? width - length : 0;
    const bool zeros = mayZero && conversion.zero && !conversion.left;
    if (!conversion.left && !zeros) output.pad(' ', padding);
    output.put(sign);
    if (zeros) output.pad('0', padding);
    output.put(body);
    if (conversion.left) output.pad(' ', padding);
}

std::string_view signOf(const Conversion& conversion, bool negative) {
    return negative ? "-" : conversion.plus ? "+" : conversion.blank ? " " : "";
}

void putDouble(Output& output, const Conversion& conversion, double value) {
    char text[decimalRoom];
    const int wanted = conversion.precision < 0 ? 6 : conversion.precision;
    const int decimals = std::min(wanted, mostDecimals);
    const auto length = writeDecimal(text, std::fabs(value), decimals);
    putPadded(output, conversion, signOf(conversion, std::signbit(value)), {text, length},
              std::isfinite(value));
}

// The digits of a number, with zeros in front up to the precision.
template <class Number>
void putInteger(Output& output, const Conversion& conversion, Number magnitude, bool negative,
                int base) {
    char digits[64];
    const auto end = std::to_chars(digits, digits + sizeof digits, magnitude, base).ptr;
    if (conversion.letter == 'X') {
        std::for_each(digits, end, [](char& digit) {
            if (digit >= 'a') digit = static_cast<char>(digit - 'a' + 'A');
        });
    }
    const int length = static_cast<int>(end - digits);
    char body[128];
    const int zeros = std::clamp(conversion.precision - length, 0, 63);
    std::memset(body, '0', static_cast<std::size_t>(zeros));
    std::memcpy(body + zeros, digits, static_cast<std::size_t>(length));
    putPadded(output, conversion, signOf(conversion, negative),
              {body, static_cast<std::size_t>(zeros + length)}, conversion.precision < 0);
}

void putText(Output& output, const Conversion& conversion, const char* text) {
    if (text == nullptr) text = "(null)";
    const auto most = conversion.precision < 0 ? std::strlen(text)
                                               : static_cast<std::size_t>(conversion.precision);
    putPadded(output, conversion, "", {text, ::strnlen(text, most)}, false);
}

void putConversion(Output& output, const Conversion& conversion, va_list& arguments) {
    switch (conversion.letter) {
        case 'd':
        case 'i': {
            const int value = va_arg(arguments, int);
            const auto bits = static_cast<unsigned>(value);
            return putInteger(output, conversion, value < 0 ? 0U - bits : bits, value < 0, 10);
        }
        case 'u':
            return putInteger(output, conversion, va_arg(arguments, unsigned), false, 10);
        case 'x':
        case 'X':
            return putInteger(output, conversion, va_arg(arguments, unsigned), false, 16);
        case 'f':
            return putDouble(output, conversion, va_arg(arguments, double));
        case 's':
            return putText(output, conversion, va_arg(arguments, const char*));
        case 'c': {
            const char character = static_cast<char>(va_arg(arguments, int));
            return putPadded(output, conversion, "", {&character, 1}, false);
        }
        default:
            return output.put({&conversion.letter, 1});
    }
}

}  // namespace

int vsprintf_s(char* target, std::size_t size, const char* format, va_list arguments) {
    if (target == nullptr || size == 0 || format == nullptr) return -1;
    Output output(target, size);
    va_list rest;
    va_copy(rest, arguments);
    while (*format != '\0') {
        const auto plain = std::strcspn(format, "%");
        output.put({format, plain});
        format += plain;
        if (*format == '\0') break;
        ++format;
        const auto conversion = readConversion(format, rest);
        if (conversion.letter == '\0') break;
        putConversion(output, conversion, rest);
    }
    va_end(rest);
    return output.finish();
}

int sprintf_s(char* target, std::size_t size, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int result = vsprintf_s(target, size, format, arguments);
    va_end(arguments);
    return result;
}
