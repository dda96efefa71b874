// CRC-32 of memory blocks and strings.
#include <array>
#include <limits>

#include "jw32/arithmetic.h"

namespace {

using Table = std::array<DWORD, 256>;

constexpr DWORD kPolynomial = 0xEDB88320;  // IEEE 802.3, bits reflected

constexpr Table makeTable() {
    Table table{};
    for (DWORD index = 0; index < table.size(); ++index) {
        DWORD entry = index;
        for (int bit = 0; bit < 8; ++bit)
            entry = (entry & 1U) != 0 ? (entry >> 1U) ^ kPolynomial : entry >> 1U;
        table[index] = entry;
    }
    return table;
}

constexpr Table kTable = makeTable();
static_assert(kTable[1] == 0x77073096 && kTable[255] == 0x2D02EF8D);

DWORD crcOf(const unsigned char* data, int length, DWORD seed) {
    DWORD crc = ~seed;
    for (int index = 0; index < length; ++index)
        crc = (crc >> 8U) ^ kTable[(data[index] ^ crc) & 0xFFU];
    return ~crc;
}

}  // namespace

DWORD Jw32CrcMemory(unsigned char* pbData, int nLength, DWORD dwSeed) {
    return crcOf(pbData, nLength, dwSeed);
}

DWORD Jw32CrcString(const char* pszText, DWORD dwSeed) {
    int length = 0;
    while (length < std::numeric_limits<int>::max() && pszText[length] != '\0') ++length;
    return crcOf(reinterpret_cast<const unsigned char*>(pszText), length, dwSeed);
}
