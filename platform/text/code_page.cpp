// Conversions between UTF-16 and the machine's code pages.
#include "text/code_page.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <utility>

#include "text/utf16.h"
#include "text/utf8.h"

namespace machine {

namespace {

constexpr char16_t replacement = 0xFFFD;

// Code page 1252, bytes 0x80 to 0x9F; the unassigned ones stand for the control characters of the
// same number, and all other bytes for the character of their number.
constexpr std::array<char16_t, 32> upperControls1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char16_t decode1252(std::uint8_t byte) {
    return byte >= 0x80 && byte < 0xA0 ? upperControls1252[byte - 0x80U] : char16_t{byte};
}

// Empty: the code page lacks the character.
std::string encode1252(char16_t character) {
    const auto found = std::find(upperControls1252.begin(), upperControls1252.end(), character);
    if (found != upperControls1252.end()) {
        return {static_cast<char>(0x80 + (found - upperControls1252.begin()))};
    }
    const bool same = character < 0x80 || (character >= 0xA0 && character <= 0xFF);
    return same ? std::string{static_cast<char>(character)} : std::string();
}

// One conversion of the host's, for one character at a time. Code page 932 carries no state from
// character to character.
class HostConversion {
  public:
    HostConversion(const char* to, const char* from) : handle_(::iconv_open(to, from)) {}
    ~HostConversion() {
        if (valid()) ::iconv_close(handle_);
    }
    HostConversion(const HostConversion&) = delete;
    HostConversion& operator=(const HostConversion&) = delete;

    // The number of bytes written to `out`; 0 when the input is no character of the source.
    std::size_t convert(std::string_view in, char* out, std::size_t room) {
        if (!valid()) return 0;
        char* source = const_cast<char*>(in.data());
        std::size_t left = in.size(), free = room;
        ::iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        const auto result = ::iconv(handle_, &source, &left, &out, &free);
        return result == static_cast<std::size_t>(-1) ? 0 : room - free;
    }

  private:
    bool valid() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

    iconv_t handle_;
};

// Code page 932: single bytes that stand for no character of the host's, and their counterparts.
constexpr std::array<std::pair<std::uint8_t, char16_t>, 5> singleBytes932 = {
    {{0x80, 0x0080}, {0xA0, 0xF8F0}, {0xFD, 0xF8F1}, {0xFE, 0xF8F2}, {0xFF, 0xF8F3}}};
constexpr char16_t replacement932 = 0x30FB;

char16_t decode932(std::string_view character) {
    for (const auto& [byte, unit] : singleBytes932) {
        if (character.size() == 1 && static_cast<std::uint8_t>(character[0]) == byte) return unit;
    }
    static thread_local HostConversion conversion("UTF-16LE", "CP932");
    std::array<char, 4> out{};
    if (conversion.convert(character, out.data(), out.size()) != 2) return replacement932;
    const auto low = static_cast<std::uint8_t>(out[0]), high = static_cast<std::uint8_t>(out[1]);
    return static_cast<char16_t>(low | (high << 8));
}

// Empty: the code page lacks the character.
std::string encode932(char16_t character) {
    for (const auto& [byte, unit] : singleBytes932) {
        if (character == unit) return {static_cast<char>(byte)};
    }
    static thread_local HostConversion conversion("CP932", "UTF-16LE");
    const std::array<char, 2> in = {static_cast<char>(character & 0xFF),
                                    static_cast<char>(character >> 8)};
    std::array<char, 4> out{};
    const auto length = conversion.convert({in.data(), in.size()}, out.data(), out.size());
    return {out.data(), length};
}

// How many bytes of a text that begins with no valid character one replacement stands for: those
// that could begin one.
std::size_t invalidUtf8Length(std::string_view text) {
    const auto couldBegin = [&](std::size_t length) {
        return firstUtf8Character(std::string(text.substr(0, length)) + "\x80\x80").length > 0;
    };
    std::size_t length = 1;
    while (length < text.size() && couldBegin(length + 1)) ++length;
    return length;
}

std::u16string decodeUtf8(std::string_view text) {
    std::u16string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const auto character = firstUtf8Character(text);
        const bool valid = character.length > 0;
        const auto length = valid ? character.length : invalidUtf8Length(text);
        if (valid) result += fromUtf8(text.substr(0, length));
        if (!valid) result.push_back(replacement);
        text.remove_prefix(length);
    }
    return result;
}

bool isSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDFFF;
}

bool isPair(std::u16string_view text) {
    return text.size() > 1 && text[0] >= 0xD800 && text[0] <= 0xDBFF && text[1] >= 0xDC00 &&
           text[1] <= 0xDFFF;
}

std::string encodeUtf8(std::u16string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::size_t length = isPair(text) ? 2 : 1;
        const bool lone = length == 1 && isSurrogate(text[0]);
        result +=
            lone ? toUtf8(std::u16string_view(&replacement, 1)) : toUtf8(text.substr(0, length));
        text.remove_prefix(length);
    }
    return result;
}

// Whether the byte opens a double-byte character of the code page.
bool isLeadByte(std::uint32_t codePage, std::uint8_t byte) {
    return codePage == 932 && ((byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC));
}

}  // namespace

bool isCodePage(std::uint32_t codePage) {
    return codePage == utf8CodePage || codePage == 1252 || codePage == 932;
}

std::size_t firstCharacterLength(std::uint32_t codePage, std::string_view text) {
    if (codePage == utf8CodePage) {
        return std::max<std::size_t>(firstUtf8Character(text).length, 1);
    }
    const bool hasTrail = text.size() > 1 && text[1] != '\0';
    return hasTrail && isLeadByte(codePage, static_cast<std::uint8_t>(text[0])) ? 2 : 1;
}

std::u16string decode(std::uint32_t codePage, std::string_view text) {
    if (codePage == utf8CodePage) return decodeUtf8(text);
    std::u16string result;
    while (!text.empty()) {
        const auto length = firstCharacterLength(codePage, text);
        const auto byte = static_cast<std::uint8_t>(text[0]);
        const bool plain = codePage == 1252 || byte < 0x80;
        result.push_back(plain ? decode1252(byte) : decode932(text.substr(0, length)));
        text.remove_prefix(length);
    }
    return result;
}

Encoded encode(std::uint32_t codePage, std::u16string_view text, std::string_view substitute) {
    if (codePage == utf8CodePage) return {encodeUtf8(text), false};
    Encoded result;
    for (const char16_t unit : text) {
        const auto bytes = codePage == 1252 || unit < 0x80 ? encode1252(unit) : encode932(unit);
        result.replaced = result.replaced || bytes.empty();
        result.text += bytes.empty() ? substitute : bytes;
    }
    return result;
}

}  // namespace machine
