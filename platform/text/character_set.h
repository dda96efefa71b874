// Sets of ASCII characters, for questions that are asked of each character of a name.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace machine {

class CharacterSet {
  public:
    constexpr explicit CharacterSet(std::u16string_view characters) {
        for (const char16_t character : characters) bits_[character / 64] |= bitOf(character);
    }
    // The characters below the blank as well.
    constexpr CharacterSet withControls() const {
        auto set = *this;
        set.bits_[0] |= 0xFFFFFFFF;
        return set;
    }
    constexpr bool holds(char16_t character) const {
        return character < 128 && (bits_[character / 64] & bitOf(character)) != 0;
    }

  private:
    static constexpr std::uint64_t bitOf(char16_t character) {
        return std::uint64_t{1} << (character % 64);
    }

    std::array<std::uint64_t, 2> bits_{};
};

}  // namespace machine
