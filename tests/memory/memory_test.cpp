// Memory blocks on both sides of the threshold.
#include <gtest/gtest.h>
#include <jw32/memory.h>

#include <algorithm>

#include "support/triple.h"

namespace {

constexpr unsigned int defaultThreshold = 0x80000;

TEST(Memory, IsZeroOnBothSidesOfTheThreshold) {
    CJw32Memory memory;
    for (const unsigned int size : {1u, 100u, defaultThreshold, defaultThreshold + 1}) {
        Triple triple;
        unsigned char* const block = memory.Open(size, 0, &triple.code, triple.text, triple.size);
        ASSERT_NE(block, nullptr) << size << triple;
        EXPECT_TRUE(triple.isClear()) << triple;
        EXPECT_EQ(memory.Address(), block);
        EXPECT_EQ(memory.Size(), size);
        EXPECT_EQ(std::count(block, block + size, 0), size);
        std::fill(block, block + size, static_cast<unsigned char>(0xA5));
        memory.Close();
        memory.Close();
        EXPECT_EQ(memory.Address(), nullptr) << size;
        EXPECT_EQ(memory.Size(), 0u) << size;
    }
}

TEST(Memory, RefusesNoSizeAndASecondBlockWithoutAReport) {
    CJw32Memory memory;
    Triple triple;
    EXPECT_EQ(memory.Open(0, 50, &triple.code, triple.text, triple.size), nullptr);
    EXPECT_TRUE(triple.isClear()) << triple;
    unsigned char* const block = memory.Open(10);
    block[9] = 7;
    triple = {};
    EXPECT_EQ(memory.Open(20, 1, &triple.code, triple.text, triple.size), nullptr);
    EXPECT_TRUE(triple.isClear()) << triple;
    EXPECT_EQ(memory.Address(), block);
    EXPECT_EQ(memory.Size(), 10u);
    EXPECT_EQ(block[9], 7);
}

TEST(Memory, IsReleasedOnceByWhoeverOfItsCopiesClosesFirst) {
    for (const unsigned int threshold : {0u, 1u}) {
        CJw32Memory first;
        unsigned char* const block = first.Open(100, threshold);
        CJw32Memory second(first), third;
        third = second;
        EXPECT_EQ(third.Address(), block);
        EXPECT_EQ(third.Size(), 100u);
        second.Close();
        unsigned char* const another = second.Open(100, threshold);
        ASSERT_NE(another, nullptr);
        another[99] = 5;
        first.Close();
        third.Close();
        EXPECT_EQ(another[99], 5) << "the others have released what is not theirs";
    }
}

}  // namespace
