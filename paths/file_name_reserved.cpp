// The names of devices.
#include <windows.h>

#include <algorithm>

#include "jw32/file_names.h"

namespace {

constexpr const char* reservedNames[] = {
    "AUX",  "CON",  "CLOCK$", "PRN", "NUL",  "EPT",  "COM",  "COM1",
    "COM2", "COM3", "COM4",   "LPT", "LPT1", "LPT2", "LPT3", "LPT4",
};

}  // namespace

int Jw32IsReservedDeviceName(const char* pszName) {
    // The comparison fails for a null name, which is therefore no member.
    const auto isName = [pszName](const char* reserved) {
        return CompareStringA(LOCALE_SYSTEM_DEFAULT, NORM_IGNORECASE, reserved, -1, pszName, -1) ==
               CSTR_EQUAL;
    };
    return std::ranges::any_of(reservedNames, isName) ? 1 : 0;
}
