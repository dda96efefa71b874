// Lengths and comparisons of text.
#include <algorithm>
#include <cstring>

#include "core/ansi.h"
#include "core/script.h"
#include "errhandlingapi.h"
#include "host/host_errors.h"
#include "stringapiset.h"
#include "text/case_mapping.h"
#include "winerror.h"
#include "winnls.h"

namespace {

std::u16string decoded(LPCSTR text, int length, bool ignoreCase) {
    const auto bytes = length < 0 ? std::strlen(text) : static_cast<std::size_t>(length);
    const auto wide = machine::fromAnsi({text, bytes});
    return ignoreCase ? machine::upperCase(wide) : wide;
}

}  // namespace

int WINAPI lstrlenA(LPCSTR text) {
    return text == nullptr ? 0 : static_cast<int>(std::strlen(text));
}

int WINAPI lstrlenW(LPCWSTR text) {
    int length = 0;
    while (text != nullptr && text[length] != 0) ++length;
    return length;
}

int WINAPI CompareStringA(LCID locale, DWORD flags, LPCSTR left, int leftLength, LPCSTR right,
                          int rightLength) try {
    if (const auto scripted =
            machine::call("CompareStringA", locale, flags, left, leftLength, right, rightLength)) {
        return scripted.or_(0);
    }
    if (left == nullptr || right == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const bool ignoreCase = (flags & NORM_IGNORECASE) != 0;
    const auto order =
        decoded(left, leftLength, ignoreCase).compare(decoded(right, rightLength, ignoreCase));
    return order < 0 ? CSTR_LESS_THAN : order == 0 ? CSTR_EQUAL : CSTR_GREATER_THAN;
} catch (const std::exception&) {
    return machine::outOfMemory(0);
}
