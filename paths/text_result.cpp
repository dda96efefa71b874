// Text results in the caller's buffer.
#include "paths/text_result.h"

#include <algorithm>
#include <cstring>

#include "frame/multibyte.h"

DWORD storeText(const char* text, char* buffer, DWORD size) {
    const auto length = static_cast<DWORD>(std::strlen(text));
    _mbsnbcpy_s(multibyte::bytes(buffer), size, multibyte::bytes(text), std::min(length, size - 1));
    return length;
}
