// Looking for a name.
#include "files/first_match.h"

#include "frame/name_conversion.h"
#include "frame/owner.h"

std::optional<DWORD> attributesOfFirstMatch(const char* name) {
    WIN32_FIND_DATAW match;
    const UniqueSearch search(FindFirstFileW(Jw32WideName(name), &match));
    if (!search) return std::nullopt;
    return match.dwFileAttributes;
}
