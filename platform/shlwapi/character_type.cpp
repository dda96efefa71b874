// Where a character may stand in a file name.
#include <array>
#include <string_view>

#include "shlwapi.h"

namespace {

constexpr UINT longAndShort = GCT_LFNCHAR | GCT_SHORTCHAR;

constexpr std::array<BYTE, 256> makeTypes() {
    std::array<BYTE, 256> types{};
    for (unsigned i = 0x20; i < types.size(); ++i) types[i] = longAndShort;
    const auto assign = [&](std::string_view characters, UINT type) {
        for (const char character : characters) {
            types[static_cast<UCHAR>(character)] = static_cast<BYTE>(type);
        }
    };
    assign(" ,;", GCT_LFNCHAR);
    assign("\"/<>|", GCT_INVALID);
    assign("*?", GCT_WILD);
    assign(":\\", GCT_SEPARATOR);
    return types;
}

constexpr auto types = makeTypes();

}  // namespace

UINT WINAPI PathGetCharTypeA(UCHAR character) {
    return types[character];
}
