// The header of a compound file: its first 512 bytes.
#include "compound/header.h"

#include <algorithm>

namespace compound {
namespace {

constexpr std::uint64_t signature = 0xE11AB1A1E011CFD0;
constexpr std::uint16_t minorVersion = 0x3E, byteOrder = 0xFFFE, miniShift = 6;

constexpr std::uint16_t shiftOf(int version) {
    return version == 4 ? 12 : 9;
}

}  // namespace

Header Header::fresh(int version) {
    Header header;
    auto* const bytes = header.bytes_.data();
    store(bytes, signature);
    store(bytes + 24, minorVersion);
    store(bytes + 26, static_cast<std::uint16_t>(version));
    store(bytes + 28, byteOrder);
    store(bytes + 30, shiftOf(version));
    store(bytes + 32, miniShift);
    header.set(56, static_cast<std::uint32_t>(miniCutoff));
    header.setMiniFat(endOfChain, 0);
    header.setDifat(endOfChain, 0);
    for (std::size_t i = 0; i < headerSlots; ++i) header.setSlot(i, freeSector);
    return header;
}

bool Header::isSignature(const std::byte* bytes, std::size_t size) {
    return size >= sizeof signature && load<std::uint64_t>(bytes) == signature;
}

Header Header::read(Medium& medium) {
    Header header;
    const auto size = medium.readSome(0, header.bytes_.data(), headerSize);
    if (!isSignature(header.bytes_.data(), size)) throw Failure{Error::notCompound};
    const int version = header.version();
    const bool sound = size == headerSize && (version == 3 || version == 4) &&
                       load<std::uint16_t>(header.at(28)) == byteOrder &&
                       load<std::uint16_t>(header.at(30)) == shiftOf(version) &&
                       load<std::uint16_t>(header.at(32)) == miniShift &&
                       header.number(56) == miniCutoff;
    if (!sound) throw Failure{Error::corrupt};
    return header;
}

}  // namespace compound
