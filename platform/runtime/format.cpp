// printf-like formatting into bounded buffers, with exact ties of %f rounded away from zero.
#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "crtsecure.h"
#include "decimal_digits.h"

namespace {

// A bounded buffer that remembers when something did not fit.
class Output {
  public:
    Output(char* target, std::size_t size)
        : target_(target), room_(std::min<std::size_t>(size, INT_MAX) - 1) {}

    void put(std::string_view text) {
        const auto fits = fitting(text.size());
        for (std::size_t i = 0; i < fits; ++i) target_[used_ + i] = text[i];
        used_ += fits;
    }
    void pad(char character, std::size_t count) {
        const auto fits = fitting(count);
        for (std::size_t i = 0; i < fits; ++i) target_[used_ + i] = character;
        used_ += fits;
    }
    bool isOverflown() const { return overflown_; }
    int finish() {
        target_[used_] = '\0';
        return static_cast<int>(used_);
    }

  private:
    std::size_t fitting(std::size_t count) {
        overflown_ = overflown_ || count > room_ - used_;
        return std::min(count, room_ - used_);
    }

    char* target_;
    std::size_t room_;
    std::size_t used_ = 0;
    bool overflown_ = false;
};

// How wide an argument is, by what stands before the letter of its conversion.
struct Modifier {
    std::string_view text;
    int bits;
};

constexpr Modifier noModifier{"", 32};
constexpr Modifier modifiers[] = {
    {"hh", 8},
    {"h", 16},
    {"ll", 64},
    {"l", 32},  // long has 32 bits
    {"I64", 64},
    {"I32", 32},
    {"I", sizeof(void*) * CHAR_BIT},
    {"j", 64},
    {"z", sizeof(void*) * CHAR_BIT},
    {"t", sizeof(void*) * CHAR_BIT},
};

// One conversion of a format: flags, width and precision read, and where it ends.
struct Conversion {
    bool left = false, zero = false, plus = false, blank = false, alternate = false;
    std::size_t width = 0;
    int precision = -1;  // negative: none is given
    Modifier modifier = noModifier;
    char letter = '\0';
};

// What a conversion writes, without the padding to its width.
struct Field {
    std::string_view prefix;  // sign or base
    std::size_t zerosBefore = 0;
    std::string_view body;
    std::size_t zerosAfter = 0;
    bool mayZero = false;  // the padding may be zeros
};

bool readNumber(const char*& format, va_list& arguments, int& number) {
    number = 0;
    if (*format == '*') {
        ++format;
        number = va_arg(arguments, int);
        return true;
    }
    for (; *format >= '0' && *format <= '9'; ++format) {
        if (number > (INT_MAX - 9) / 10) return false;
        number = number * 10 + (*format - '0');
    }
    return true;
}

void readFlags(const char*& format, Conversion& conversion) {
    for (;; ++format) {
        if (*format == '-')
            conversion.left = true;
        else if (*format == '0')
            conversion.zero = true;
        else if (*format == '+')
            conversion.plus = true;
        else if (*format == ' ')
            conversion.blank = true;
        else if (*format == '#')
            conversion.alternate = true;
        else
            return;
    }
}

Modifier readModifier(const char*& format) {
    for (const auto& modifier : modifiers) {
        const auto& [text, bits] = modifier;
        if (*format != text[0] || std::strncmp(format, text.data(), text.size()) != 0) continue;
        format += text.size();
        return modifier;
    }
    return noModifier;
}

bool readConversion(const char*& format, va_list& arguments, Conversion& conversion) {
    readFlags(format, conversion);
    int width = 0;
    if (!readNumber(format, arguments, width)) return false;
    conversion.left = conversion.left || width < 0;
    conversion.width = static_cast<std::size_t>(std::abs(std::int64_t{width}));
    if (*format == '.' && !readNumber(++format, arguments, conversion.precision)) return false;
    conversion.modifier = readModifier(format);
    conversion.letter = *format;
    if (*format != '\0') ++format;
    return true;
}

bool putField(Output& output, const Conversion& conversion, const Field& field) {
    const auto length =
        field.prefix.size() + field.zerosBefore + field.body.size() + field.zerosAfter;
    const auto padding = conversion.width > length ? conversion.width - length : 0;
    const bool zeros = field.mayZero && conversion.zero && !conversion.left;
    if (!conversion.left && !zeros) output.pad(' ', padding);
    output.put(field.prefix);
    output.pad('0', field.zerosBefore + (zeros ? padding : 0));
    output.put(field.body);
    output.pad('0', field.zerosAfter);
    if (conversion.left) output.pad(' ', padding);
    return true;
}

std::string_view signOf(const Conversion& conversion, bool negative) {
    return negative ? "-" : conversion.plus ? "+" : conversion.blank ? " " : "";
}

void toUpperCase(char* text, const char* end) {
    for (; text != end; ++text) {
        if (*text >= 'a' && *text <= 'z') *text = static_cast<char>(*text - 'a' + 'A');
    }
}

bool putDouble(Output& output, const Conversion& conversion, double value) {
    char text[decimalRoom];
    const int wanted = conversion.precision < 0 ? 6 : conversion.precision;
    const int decimals = std::min(wanted, mostDecimals);
    const bool finite = std::isfinite(value);
    auto length = writeDecimal(text, std::fabs(value), decimals);
    if (finite && wanted == 0 && conversion.alternate) text[length++] = '.';
    if (conversion.letter == 'F') toUpperCase(text, text + length);
    const int missing = finite ? wanted - decimals : 0;
    return putField(output, conversion,
                    {.prefix = signOf(conversion, std::signbit(value)),
                     .body = {text, length},
                     .zerosAfter = static_cast<std::size_t>(missing),
                     .mayZero = finite});
}

// The digits of a number, with zeros before them up to the precision. No precision needs a digit
// of 0.
bool putDigits(Output& output, const Conversion& conversion, std::string_view prefix,
               std::uint64_t magnitude, int base) {
    char digits[64];
    char* end = digits;
    if (magnitude != 0 || conversion.precision != 0) {
        end = std::to_chars(digits, digits + sizeof digits, magnitude, base).ptr;
    }
    if (conversion.letter == 'X' || conversion.letter == 'p') toUpperCase(digits, end);
    const int length = static_cast<int>(end - digits);
    int zeros = std::max(conversion.precision - length, 0);
    if (base == 8 && conversion.alternate && magnitude != 0) zeros = std::max(zeros, 1);
    return putField(output, conversion,
                    {.prefix = prefix,
                     .zerosBefore = static_cast<std::size_t>(zeros),
                     .body = {digits, static_cast<std::size_t>(length)},
                     .mayZero = conversion.precision < 0});
}

bool putSigned(Output& output, const Conversion& conversion, va_list& arguments) {
    const int bits = conversion.modifier.bits;
    std::int64_t value = bits == 64 ? va_arg(arguments, std::int64_t) : va_arg(arguments, int);
    if (bits == 16) value = static_cast<std::int16_t>(value);
    if (bits == 8) value = static_cast<std::int8_t>(value);
    const auto magnitude = static_cast<std::uint64_t>(value);
    return putDigits(output, conversion, signOf(conversion, value < 0),
                     value < 0 ? 0U - magnitude : magnitude, 10);
}

bool putUnsigned(Output& output, const Conversion& conversion, va_list& arguments, int base) {
    const int bits = conversion.modifier.bits;
    std::uint64_t value =
        bits == 64 ? va_arg(arguments, std::uint64_t) : va_arg(arguments, unsigned);
    if (bits == 16) value = static_cast<std::uint16_t>(value);
    if (bits == 8) value = static_cast<std::uint8_t>(value);
    const bool based = base == 16 && conversion.alternate && value != 0;
    const auto prefix = conversion.letter == 'X' ? "0X" : "0x";
    return putDigits(output, conversion, based ? prefix : "", value, base);
}

// All digits of an address, as the C runtime of Windows shows it.
bool putPointer(Output& output, Conversion conversion, const void* pointer) {
    conversion.precision = 2 * sizeof pointer;
    return putDigits(output, conversion, "", reinterpret_cast<std::uintptr_t>(pointer), 16);
}

bool putText(Output& output, const Conversion& conversion, const char* text) {
    if (text == nullptr) text = "(null)";
    const auto length = conversion.precision < 0
                            ? std::strlen(text)
                            : ::strnlen(text, static_cast<std::size_t>(conversion.precision));
    return putField(output, conversion, {.prefix = "", .body = {text, length}});
}

bool putCharacter(Output& output, const Conversion& conversion, char character) {
    return putField(output, conversion, {.prefix = "", .body = {&character, 1}});
}

// False for a conversion that is not known: how much it takes of the arguments is not known either.
bool putConversion(Output& output, const Conversion& conversion, va_list& arguments) {
    const auto modifier = conversion.modifier.text;
    const bool narrow = modifier.empty() || modifier == "h";
    switch (conversion.letter) {
        case 'd':
        case 'i':
            return putSigned(output, conversion, arguments);
        case 'u':
            return putUnsigned(output, conversion, arguments, 10);
        case 'o':
            return putUnsigned(output, conversion, arguments, 8);
        case 'x':
        case 'X':
            return putUnsigned(output, conversion, arguments, 16);
        case 'f':
        case 'F':
            return (modifier.empty() || modifier == "l") &&
                   putDouble(output, conversion, va_arg(arguments, double));
        case 's':
            return narrow && putText(output, conversion, va_arg(arguments, const char*));
        case 'c':
            return narrow &&
                   putCharacter(output, conversion, static_cast<char>(va_arg(arguments, int)));
        case 'p':
            return modifier.empty() &&
                   putPointer(output, conversion, va_arg(arguments, const void*));
        default:
            return false;
    }
}

// False when the format is refused.
bool putAll(Output& output, const char* format, va_list& arguments) {
    while (*format != '\0' && !output.isOverflown()) {
        const char* const plain = format;
        while (*format != '\0' && *format != '%') ++format;
        output.put({plain, static_cast<std::size_t>(format - plain)});
        if (*format == '\0') break;
        ++format;
        if (*format == '%') {
            output.pad(*format++, 1);
            continue;
        }
        Conversion conversion;
        if (!readConversion(format, arguments, conversion)) return false;
        if (!putConversion(output, conversion, arguments)) return false;
    }
    return true;
}

int fail(char* target, int code) {
    target[0] = '\0';
    errno = code;
    return -1;
}

}  // namespace

int vsprintf_s(char* target, std::size_t size, const char* format, va_list arguments) {
    if (target == nullptr || size == 0) {
        errno = EINVAL;
        return -1;
    }
    if (format == nullptr) return fail(target, EINVAL);
    Output output(target, size);
    va_list rest;
    va_copy(rest, arguments);
    const bool known = putAll(output, format, rest);
    va_end(rest);
    if (!known) return fail(target, EINVAL);
    return output.isOverflown() ? fail(target, ERANGE) : output.finish();
}

int sprintf_s(char* target, std::size_t size, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int result = vsprintf_s(target, size, format, arguments);
    va_end(arguments);
    return result;
}
