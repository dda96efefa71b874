// Checksums.
#include <gtest/gtest.h>
#include <jw32/crc.h>

#include <string>

namespace {

DWORD crcOf(std::string bytes, DWORD seed = 0) {
    return Jw32CrcMemory(reinterpret_cast<unsigned char*>(bytes.data()),
                         static_cast<int>(bytes.size()), seed);
}

TEST(Crc, IsTheStandardOneOverPiecesToo) {
    EXPECT_EQ(crcOf("123456789"), 0xCBF43926U);
    EXPECT_EQ(crcOf("456789", crcOf("123")), 0xCBF43926U);
    EXPECT_EQ(Jw32CrcString("456789", Jw32CrcString("123", 0)), 0xCBF43926U);
    EXPECT_EQ(Jw32CrcString("123456789", 0), 0xCBF43926U);
    EXPECT_EQ(crcOf("abc"), 0x352441C2U);
    EXPECT_EQ(crcOf("abc", 0xFFFFFFFF), 0x359A672FU);
    EXPECT_EQ(crcOf({'\xFF', '\0', '\xFF'}), 0x6CDB0272U) << "bytes above 0x7F and zeros count";
    EXPECT_EQ(Jw32CrcString("\xE4\xFF", 0), crcOf("\xE4\xFF"));
}

TEST(Crc, OfABlockIsThatOfItsBytesOneByOne) {
    unsigned char block[999];
    DWORD noise = 1;
    for (auto& byte : block) byte = static_cast<unsigned char>((noise = noise * 69069 + 1) >> 24);
    for (const int start : {0, 1, 3}) {
        DWORD crc = 0;
        for (int end = start; end < 999; ++end) {
            ASSERT_EQ(Jw32CrcMemory(block + start, end - start, 0), crc) << start << " to " << end;
            crc = Jw32CrcMemory(block + end, 1, crc);
        }
    }
}

TEST(Crc, OfNothingIsTheSeed) {
    for (const DWORD seed : {0U, 0x1234U}) {
        EXPECT_EQ(Jw32CrcMemory(nullptr, 0, seed), seed);
        EXPECT_EQ(Jw32CrcMemory(nullptr, -1, seed), seed);
        EXPECT_EQ(Jw32CrcString("", seed), seed);
    }
}

}  // namespace
