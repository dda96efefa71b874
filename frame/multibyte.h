// The multibyte set of the runtime for plain char text.
#pragma once

#include <mbstring.h>

#include <cstddef>

namespace multibyte {

inline const unsigned char* bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}
inline unsigned char* bytes(char* text) {
    return reinterpret_cast<unsigned char*>(text);
}
inline char* chars(unsigned char* text) {
    return reinterpret_cast<char*>(text);
}
inline const char* chars(const unsigned char* text) {
    return reinterpret_cast<const char*>(text);
}

/// The character behind the first one, never beyond the terminator: a first half of a character at
/// the end of the text counts as one character.
inline const char* next(const char* text) {
    const char* const wanted = chars(_mbsinc(bytes(text)));
    const char* at = text + 1;
    while (at < wanted && *at != '\0') ++at;
    return at;
}
inline char* next(char* text) {
    return text + (next(const_cast<const char*>(text)) - text);
}

/// The first or last place of a single-byte character, or of a text; null when there is none.
inline char* find(char* text, char wanted) {
    return chars(_mbschr(bytes(text), static_cast<unsigned char>(wanted)));
}
inline const char* find(const char* text, char wanted) {
    return chars(_mbschr(bytes(text), static_cast<unsigned char>(wanted)));
}
inline char* findLast(char* text, char wanted) {
    return chars(_mbsrchr(bytes(text), static_cast<unsigned char>(wanted)));
}
inline const char* findLast(const char* text, char wanted) {
    return chars(_mbsrchr(bytes(text), static_cast<unsigned char>(wanted)));
}
inline const char* find(const char* text, const char* wanted) {
    return chars(_mbsstr(bytes(text), bytes(wanted)));
}

inline bool equalIgnoringCase(const char* left, const char* right) {
    return _mbsicmp(bytes(left), bytes(right)) == 0;
}

/// Copies at most `count` bytes of the text, or with _TRUNCATE what fits, and terminates it.
template <std::size_t Size>
void copy(char (&target)[Size], const char* text, std::size_t count) {
    _mbsnbcpy_s(bytes(target), Size, bytes(text), count);
}

}  // namespace multibyte
