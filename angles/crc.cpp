// CRC-32 of memory blocks and strings.
#include <array>
#include <limits>

#include "jw32/crc.h"

namespace {

constexpr DWORD kPolynomial = 0xEDB88320;  // IEEE 802.3, bits reflected
constexpr int kSlices = 8;                 // bytes that one step takes

// Table 0 takes one byte into the register; table k does so for a byte with k zero bytes behind it.
using Table = std::array<DWORD, 256>;
using Tables = std::array<Table, kSlices>;

constexpr Tables makeTables() {
    Tables tables{};
    for (DWORD index = 0; index < 256; ++index) {
        DWORD entry = index;
        for (int bit = 0; bit < 8; ++bit)
            entry = (entry & 1U) != 0 ? (entry >> 1U) ^ kPolynomial : entry >> 1U;
        tables[0][index] = entry;
    }
    for (std::size_t slice = 1; slice < kSlices; ++slice) {
        for (std::size_t index = 0; index < 256; ++index) {
            const DWORD shorter = tables[slice - 1][index];
            tables[slice][index] = (shorter >> 8U) ^ tables[0][shorter & 0xFFU];
        }
    }
    return tables;
}

constexpr Tables kTables = makeTables();
static_assert(kTables[0][1] == 0x77073096 && kTables[0][255] == 0x2D02EF8D);

DWORD wordAt(const unsigned char* data) {
    return DWORD{data[0]} | DWORD{data[1]} << 8U | DWORD{data[2]} << 16U | DWORD{data[3]} << 24U;
}

DWORD lookUp(DWORD word, std::size_t lastSlice) {
    return kTables[lastSlice + 3][word & 0xFFU] ^ kTables[lastSlice + 2][(word >> 8U) & 0xFFU] ^
           kTables[lastSlice + 1][(word >> 16U) & 0xFFU] ^ kTables[lastSlice][word >> 24U];
}

// The bytes of a step are looked up independently of each other, where a loop over single bytes
// would wait for each.
DWORD crcOf(const unsigned char* data, int length, DWORD seed) {
    DWORD crc = ~seed;
    for (; length >= kSlices; length -= kSlices, data += kSlices)
        crc = lookUp(wordAt(data) ^ crc, 4) ^ lookUp(wordAt(data + 4), 0);
    for (; length > 0; --length, ++data) crc = (crc >> 8U) ^ kTables[0][(*data ^ crc) & 0xFFU];
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
