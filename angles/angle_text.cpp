// The text forms of the angle class.
#include <windows.h>

#include <mbstring.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdarg>
#include <string_view>

#include "jw32/angle.h"

namespace {

constexpr std::size_t kTextSize = 50;
constexpr std::size_t kDigitsSize = 349;

// Decimals of seconds that a text can hold: the longest of the rest is -32768 59' 59." around them.
constexpr int kMostSecondsDecimals = kTextSize - 1 - 15;
// Digits of a decimal number that a text can hold, the sign and the point set aside.
constexpr int kMostDigits = kTextSize - 1 - 2;
// The first value with more digits than that in front of its point.
constexpr double kTooLarge = 1e47;

// The text of a call while it is composed.
class Text {
  public:
    void append(std::string_view part) {
        part = part.substr(0, kTextSize - 1 - length_);
        std::copy(part.begin(), part.end(), text_.begin() + length_);
        length_ += part.size();
    }

    void appendZeros(int count) {
        for (int index = 0; index < count; ++index) append("0");
    }

    // The formatting ends the program if the text does not fit, so the arguments must see to that.
    void format(const char* pattern, ...) {
        va_list arguments;
        va_start(arguments, pattern);
        const int length = vsprintf_s(text_.data(), text_.size(), pattern, arguments);
        va_end(arguments);
        length_ = static_cast<std::size_t>(std::max(length, 0));
    }

    // Copies what fits, with a terminator, and tells the length of the whole.
    DWORD copyOut(char* target, DWORD size) const {
        _mbsnbcpy_s(reinterpret_cast<unsigned char*>(target), size,
                    reinterpret_cast<const unsigned char*>(text_.data()),
                    std::min<std::size_t>(length_, size - 1));
        return static_cast<DWORD>(length_);
    }

  private:
    std::array<char, kTextSize> text_{};
    std::size_t length_ = 0;
};

int digitsInFront(double magnitude) {
    int count = 0;
    for (; magnitude >= 1.0; magnitude /= 10.0) ++count;
    return count;
}

void appendDigits(Text& text, std::string_view digits, int point, int decimals) {
    if (decimals <= 0) return text.append(digits);
    const auto inFront = static_cast<std::size_t>(std::max(point, 0));
    text.append(digits.substr(0, inFront));
    text.append(".");
    text.appendZeros(std::min(-point, decimals));
    text.append(digits.substr(std::min(inFront, digits.size())));
}

// A width of 0 for the seconds pads nothing.
struct DmsForm {
    const char* all;
    const char* fromMinutes;
    const char* fromSeconds;
    bool isFixed;
};

constexpr DmsForm kMarked{"%s%d %d' %*.*f\"", "%d' %*.*f\"", "%*.*f\"", false};
constexpr DmsForm kPlain{"%s%d %d %*.*f", "%d %*.*f", "%*.*f", false};
constexpr DmsForm kFixed{"%s%3d %2d %*.*f", "%2d %*.*f", "%*.*f", true};

const DmsForm* formOf(CJw32Angle::eAngleType type) {
    switch (type) {
        case CJw32Angle::eAngleTypeDmsMarked:
            return &kMarked;
        case CJw32Angle::eAngleTypeDmsPlain:
            return &kPlain;
        case CJw32Angle::eAngleTypeDmsFixed:
            return &kFixed;
        default:
            return nullptr;
    }
}

void appendDms(Text& text, const DmsForm& form, const CJw32Angle& angle, int decimals) {
    short degrees = 0;
    short minutes = 0;
    double seconds = 0.0;
    angle.GetDms(degrees, minutes, seconds, decimals);
    const int shown = std::abs(std::clamp(decimals, -kMostSecondsDecimals, kMostSecondsDecimals));
    const int width = form.isFixed ? shown + 3 : 0;
    if (decimals >= 0 || degrees != 0) {
        text.format(form.all, angle.Rad() < 0.0 ? "-" : "", std::abs(degrees), std::abs(minutes),
                    width, shown, std::fabs(seconds));
    } else if (minutes != 0) {
        text.format(form.fromMinutes, minutes, width, shown, seconds);
    } else {
        text.format(form.fromSeconds, width, shown, seconds + 0.0);  // -0.0 becomes 0.0
    }
}

}  // namespace

DWORD CJw32Angle::AngleToString(char* pszText, DWORD dwSize, eAngleType eType,
                                int nDecimals) const {
    if (pszText == nullptr || dwSize == 0) return 0;
    memset(pszText, 0, dwSize);
    switch (eType) {
        case eAngleTypeRad:
            return RadDegGonToString(pszText, dwSize, Rad(), nDecimals);
        case eAngleTypeDeg:
            return RadDegGonToString(pszText, dwSize, Deg(), nDecimals);
        case eAngleTypeGon:
            return RadDegGonToString(pszText, dwSize, Gon(), nDecimals);
        default:
            break;
    }
    Text text;
    if (const DmsForm* const form = formOf(eType)) appendDms(text, *form, *this, nDecimals);
    return text.copyOut(pszText, dwSize);
}

DWORD CJw32Angle::RadDegGonToString(char* pszText, DWORD dwSize, double const& dValue,
                                    int nDecimals) const {
    if (pszText == nullptr || dwSize == 0) return 0;
    memset(pszText, 0, dwSize);
    const double magnitude = std::fabs(dValue);
    if (!(magnitude < kTooLarge)) return 0;
    const int decimals = std::min(nDecimals, kMostDigits - digitsInFront(magnitude));
    std::array<char, kDigitsSize> digits{};
    int point = 0;
    int sign = 0;
    if (_fcvt_s(digits.data(), digits.size(), dValue, decimals, &point, &sign) != 0) return 0;
    Text text;
    if (dValue < 0.0) text.append("-");
    appendDigits(text, digits.data(), point, decimals);
    return text.copyOut(pszText, dwSize);
}
