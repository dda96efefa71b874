// Simple case mapping of the scripts that have case, after the Unicode character database.
#include "text/case_mapping.h"

#include <algorithm>
#include <iterator>

namespace machine {

namespace {

enum class Pairs { Shifted, EvenUpper, OddUpper };

// Lower-case characters first to last. Shifted: the upper case lies `distance` below. EvenUpper and
// OddUpper: upper and lower case alternate, and the upper one is even or odd.
struct CaseRange {
    char16_t first, last;
    Pairs pairs;
    int distance = 1;
};

constexpr CaseRange ranges[] = {
    {u'a', u'z', Pairs::Shifted, 32},       {0x00E0, 0x00F6, Pairs::Shifted, 32},  // Latin-1
    {0x00F8, 0x00FE, Pairs::Shifted, 32},                                          //
    {0x00FF, 0x00FF, Pairs::Shifted, -121},  // y with diaeresis: U+0178
    {0x0101, 0x012F, Pairs::EvenUpper},      // Latin Extended-A
    {0x0133, 0x0137, Pairs::EvenUpper},      //
    {0x013A, 0x0148, Pairs::OddUpper},       //
    {0x014B, 0x0177, Pairs::EvenUpper},      //
    {0x017A, 0x017E, Pairs::OddUpper},       //
    {0x01CE, 0x01DC, Pairs::OddUpper},       // Latin Extended-B
    {0x01DF, 0x01EF, Pairs::EvenUpper},      //
    {0x01F9, 0x021F, Pairs::EvenUpper},      //
    {0x0223, 0x0233, Pairs::EvenUpper},      //
    {0x03AC, 0x03AC, Pairs::Shifted, 38},    // Greek
    {0x03AD, 0x03AF, Pairs::Shifted, 37},    //
    {0x03B1, 0x03C1, Pairs::Shifted, 32},    //
    {0x03C3, 0x03CB, Pairs::Shifted, 32},    //
    {0x03CC, 0x03CC, Pairs::Shifted, 64},    //
    {0x03CD, 0x03CE, Pairs::Shifted, 63},    //
    {0x0430, 0x044F, Pairs::Shifted, 32},    // Cyrillic
    {0x0450, 0x045F, Pairs::Shifted, 80},    //
    {0x0461, 0x0481, Pairs::EvenUpper},      //
    {0x048B, 0x04BF, Pairs::EvenUpper},      //
    {0x04C2, 0x04CE, Pairs::OddUpper},       //
    {0x04D1, 0x052F, Pairs::EvenUpper},      //
    {0x0561, 0x0586, Pairs::Shifted, 48},    // Armenian
    {0x1E01, 0x1E95, Pairs::EvenUpper},      // Latin Extended Additional
    {0x1EA1, 0x1EFF, Pairs::EvenUpper},      //
    {0xFF41, 0xFF5A, Pairs::Shifted, 32},    // fullwidth
};

char16_t upperInRange(const CaseRange& range, char16_t character) {
    const bool odd = character % 2 != 0;
    switch (range.pairs) {
        case Pairs::EvenUpper:
            return static_cast<char16_t>(odd ? character - 1 : character);
        case Pairs::OddUpper:
            return static_cast<char16_t>(odd ? character : character - 1);
        case Pairs::Shifted:
            break;
    }
    return static_cast<char16_t>(character - range.distance);
}

}  // namespace

char16_t upperCase(char16_t character) {
    if (character < 0x80) {
        const bool lower = character >= u'a' && character <= u'z';
        return static_cast<char16_t>(lower ? character - 32 : character);
    }
    const auto* const found =
        std::find_if(std::begin(ranges), std::end(ranges), [&](const CaseRange& range) {
            return range.first <= character && character <= range.last;
        });
    return found == std::end(ranges) ? character : upperInRange(*found, character);
}

std::u16string upperCase(std::u16string_view text) {
    std::u16string result(text);
    for (auto& character : result) character = upperCase(character);
    return result;
}

bool equalIgnoringCase(std::u16string_view left, std::u16string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char16_t a, char16_t b) { return upperCase(a) == upperCase(b); });
}

}  // namespace machine
