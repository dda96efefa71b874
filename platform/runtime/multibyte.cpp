// Text in the machine's code page, character by character.
#include <algorithm>
#include <climits>
#include <string_view>

#include "core/ansi.h"
#include "core/machine.h"
#include "host/host_errors.h"
#include "mbstring.h"
#include "text/case_mapping.h"
#include "text/code_page.h"

namespace {

std::string_view asView(const unsigned char* text) {
    return reinterpret_cast<const char*>(text);
}

unsigned char* result(const unsigned char* place) {
    return const_cast<unsigned char*>(place);
}

// The bytes of the character at the place, which may be the terminator; never beyond it.
std::size_t lengthAt(const unsigned char* text) {
    if (*text < 0x80) return 1;  // in every code page, and by far the most frequent
    constexpr std::size_t longest = 4;
    const auto* const bytes = reinterpret_cast<const char*>(text);
    const auto length = ::strnlen(bytes, longest);
    return machine::firstCharacterLength(machine::current().codePage, {bytes, length});
}

// Whether the character of that many bytes has the number that the runtime gives to it: its byte,
// or lead and trail byte in one number.
bool isCharacter(const unsigned char* text, std::size_t length, unsigned int character) {
    unsigned int number = 0;
    for (std::size_t i = 0; i < length; ++i) number = (number << 8) | text[i];
    return number == character;
}

}  // namespace

unsigned char* _mbsinc(const unsigned char* text) {
    return result(text + lengthAt(text));
}

unsigned char* _mbschr(const unsigned char* text, unsigned int character) {
    for (;; text += lengthAt(text)) {
        if (isCharacter(text, lengthAt(text), character)) return result(text);
        if (*text == 0) return nullptr;
    }
}

unsigned char* _mbsrchr(const unsigned char* text, unsigned int character) {
    const unsigned char* found = nullptr;
    for (;; text += lengthAt(text)) {
        if (isCharacter(text, lengthAt(text), character)) found = text;
        if (*text == 0) return result(found);
    }
}

unsigned char* _mbsstr(const unsigned char* text, const unsigned char* wanted) {
    const auto sought = asView(wanted);
    for (;; text += lengthAt(text)) {
        if (asView(text).substr(0, sought.size()) == sought) return result(text);
        if (*text == 0) return nullptr;
    }
}

int _mbsicmp(const unsigned char* left, const unsigned char* right) try {
    const auto a = machine::upperCase(machine::fromAnsi(asView(left)));
    const auto b = machine::upperCase(machine::fromAnsi(asView(right)));
    return a.compare(b);
} catch (const std::exception&) {
    return machine::outOfMemory(INT_MAX);  // the runtime's mark for what cannot be compared
}

errno_t _mbsnbcpy_s(unsigned char* target, std::size_t size, const unsigned char* source,
                    std::size_t count) {
    if (target == nullptr || size == 0) return EINVAL;
    target[0] = 0;
    if (source == nullptr) return EINVAL;
    const auto* const bytes = reinterpret_cast<const char*>(source);
    const bool truncating = count == _TRUNCATE;
    const auto wanted = truncating ? std::strlen(bytes) : ::strnlen(bytes, count);
    if (!truncating && wanted >= size) return ERANGE;
    const auto room = std::min(wanted, size - 1);
    std::size_t used = 0;
    while (used < room && used + lengthAt(source + used) <= room) used += lengthAt(source + used);
    std::memcpy(target, source, used);
    target[used] = 0;
    return truncating && used < wanted ? STRUNCATE : 0;
}
