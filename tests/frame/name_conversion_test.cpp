// Conversions of names, in both builds.
#include "frame/name_conversion.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// Whether a text lies within the object that gives it.
template <class Name, class Character>
bool isInPlace(const Name& name, const Character* text) {
    const auto* const begin = reinterpret_cast<const char*>(&name);
    const auto* const at = reinterpret_cast<const char*>(text);
    return at >= begin && at < begin + sizeof name;
}

std::basic_string<char> narrowed(const wchar_t* text) {
    std::string result;
    for (; *text != 0; ++text) result += static_cast<char>(*text);
    return result;
}

TEST(Names, LieInPlaceUpTo127WideAnd31NarrowCharacters) {
    for (const std::size_t length : {0u, 1u, 31u, 32u, 127u, 128u, 5000u}) {
        const std::string source(length, 'n');
        const Jw32WideName wide(source.c_str());
        const Jw32AnsiName name(wide);
        EXPECT_EQ(narrowed(wide), source);
        EXPECT_EQ(static_cast<const char*>(name), source);
        EXPECT_EQ(isInPlace(wide, static_cast<const wchar_t*>(wide)), length <= 127) << length;
        EXPECT_EQ(isInPlace(name, static_cast<const char*>(name)), length <= 31) << length;
    }
}

TEST(Names, OfNothingAreNull) {
    EXPECT_EQ(static_cast<const wchar_t*>(Jw32WideName(nullptr)), nullptr);
    EXPECT_EQ(static_cast<const char*>(Jw32AnsiName(nullptr)), nullptr);
}

}  // namespace
