// Conversions of names, in both builds.
#include "frame/name_conversion.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// Whether a text lies within the object that gives it.
template <class Character, class Name>
bool isInPlace(const Name& name) {
    const Character* const text = name;
    const auto offset = reinterpret_cast<const char*>(text) - reinterpret_cast<const char*>(&name);
    return offset >= 0 && offset < static_cast<std::ptrdiff_t>(sizeof name);
}

TEST(Names, LieInPlaceUpTo127WideAnd31NarrowCharactersAndMayBeNull) {
    EXPECT_EQ(static_cast<const wchar_t*>(Jw32WideName(nullptr)), nullptr);
    EXPECT_EQ(static_cast<const char*>(Jw32AnsiName(nullptr)), nullptr);
    for (const std::size_t length : {0u, 1u, 31u, 32u, 127u, 128u, 5000u}) {
        const std::string source(length, 'n');
        const Jw32WideName wide(source.c_str());
        const Jw32AnsiName name(wide);
        EXPECT_EQ(source, static_cast<const char*>(name)) << "there and back";
        EXPECT_EQ(isInPlace<wchar_t>(wide), length <= 127) << length;
        EXPECT_EQ(isInPlace<char>(name), length <= 31) << length;
    }
}

}  // namespace
