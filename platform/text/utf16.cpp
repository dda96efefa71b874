// Conversions between UTF-16 and the host's UTF-8.
#include "text/utf16.h"

#include <algorithm>
#include <cstddef>
#include <type_traits>

#include "text/utf8.h"

namespace machine {

namespace {

constexpr char16_t escapeBase = 0xDC00;  // U+DC80 to U+DCFF stand for bytes that are not UTF-8

bool isHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool isLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}
bool isEscapedByte(char16_t unit) {
    return unit >= escapeBase + 0x80 && unit <= escapeBase + 0xFF;
}

std::uint8_t byteAt(std::string_view text, std::size_t index) {
    return static_cast<std::uint8_t>(text[index]);
}

bool isContinuation(std::string_view text, std::size_t index) {
    return index < text.size() && (byteAt(text, index) & 0xC0) == 0x80;
}

// How many characters from the beginning on are the same in both forms.
template <class Text>
std::ptrdiff_t plainLength(const Text& text) {
    const auto isPlain = [](auto unit) {
        return static_cast<std::make_unsigned_t<decltype(unit)>>(unit) < 0x80;
    };
    return std::find_if_not(text.begin(), text.end(), isPlain) - text.begin();
}

void appendUtf8(std::string& text, std::uint32_t codePoint) {
    const auto put = [&](std::uint32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (codePoint < 0x80) return put(codePoint);
    if (codePoint < 0x800) {
        put(0xC0 | (codePoint >> 6));
    } else if (codePoint < 0x10000) {
        put(0xE0 | (codePoint >> 12));
        put(0x80 | ((codePoint >> 6) & 0x3F));
    } else {
        put(0xF0 | (codePoint >> 18));
        put(0x80 | ((codePoint >> 12) & 0x3F));
        put(0x80 | ((codePoint >> 6) & 0x3F));
    }
    put(0x80 | (codePoint & 0x3F));
}

void appendUtf16(std::u16string& text, std::uint32_t codePoint) {
    if (codePoint < 0x10000) {
        text.push_back(static_cast<char16_t>(codePoint));
        return;
    }
    const auto rest = codePoint - 0x10000;
    text.push_back(static_cast<char16_t>(0xD800 + (rest >> 10)));
    text.push_back(static_cast<char16_t>(0xDC00 + (rest & 0x3FF)));
}

}  // namespace

Utf8Character firstUtf8Character(std::string_view text) {
    constexpr Utf8Character invalid{0, 0};
    const std::uint32_t lead = byteAt(text, 0);
    if (lead < 0x80) return {lead, 1};
    if (lead < 0xC2 || lead > 0xF4) return invalid;
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    std::uint32_t codePoint = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(text, i)) return invalid;
        codePoint = (codePoint << 6) | (byteAt(text, i) & 0x3FU);
    }
    constexpr std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    if (codePoint < smallest[length] || codePoint > 0x10FFFF || surrogate) return invalid;
    return {codePoint, length};
}

std::string toUtf8(std::u16string_view text) {
    const auto plain = plainLength(text);
    std::string result(text.begin(), text.begin() + plain);
    for (auto i = static_cast<std::size_t>(plain); i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (isHighSurrogate(unit) && i + 1 < text.size() && isLowSurrogate(text[i + 1])) {
            const std::uint32_t high = unit - 0xD800U, low = text[++i] - 0xDC00U;
            appendUtf8(result, 0x10000 + (high << 10) + low);
        } else if (isEscapedByte(unit)) {
            result.push_back(static_cast<char>(unit - escapeBase));
        } else {
            appendUtf8(result, unit);
        }
    }
    return result;
}

std::u16string fromUtf8(std::string_view text) {
    const auto plain = plainLength(text);
    std::u16string result(text.begin(), text.begin() + plain);
    text.remove_prefix(static_cast<std::size_t>(plain));
    while (!text.empty()) {
        const auto character = firstUtf8Character(text);
        if (character.length == 0) {
            result.push_back(static_cast<char16_t>(escapeBase + byteAt(text, 0)));
            text.remove_prefix(1);
        } else {
            appendUtf16(result, character.codePoint);
            text.remove_prefix(character.length);
        }
    }
    return result;
}

std::u16string fromWide(const wchar_t* text) {
    if (text == nullptr) return {};
    const wchar_t* end = text;
    while (*end != 0) ++end;
    return std::u16string(text, end);
}

std::string toUtf8(const wchar_t* text) {
    return toUtf8(fromWide(text));
}

}  // namespace machine
