// Named shared memory within one process.
#include <gtest/gtest.h>
#include <jw32/shared_memory.h>

#include <algorithm>
#include <string>

#include "support/triple.h"

namespace {

class SharedMemory : public testing::Test {
  protected:
    const std::string name_ = "jw32-test-" + std::to_string(GetCurrentProcessId());
    const char* const name = name_.c_str();
};

TEST_F(SharedMemory, ShowsEveryOpenerTheSameBytes) {
    CJw32SharedMemory maker, opener;
    EXPECT_EQ(maker.Exist(name), 0);
    Triple triple;
    void* const view = maker.Create(name, 5000, &triple.code, triple.text, triple.size);
    ASSERT_NE(view, nullptr) << triple;
    EXPECT_TRUE(triple.isClear()) << triple;
    unsigned char* const bytes = maker;
    EXPECT_EQ(bytes, view);
    EXPECT_TRUE(std::all_of(bytes, bytes + 5000, [](unsigned char byte) { return byte == 0; }));
    EXPECT_EQ(maker.Size(), 5000u);
    EXPECT_EQ(opener.Exist(name), 1);

    auto* const other = static_cast<unsigned char*>(opener.Open(name));
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(static_cast<unsigned char*>(opener), other);
    EXPECT_EQ(opener.Size(), 0u) << "an opener cannot know the size";
    bytes[4999] = 7;
    EXPECT_EQ(other[4999], 7);

    CJw32SharedMemory second;
    triple = {};
    EXPECT_EQ(second.Create(name, 20, &triple.code, triple.text, triple.size), nullptr);
    EXPECT_TRUE(triple.isClear()) << "the name is taken: " << triple;
    EXPECT_EQ(second.Size(), 0u);

    maker.Close();
    maker.Close();
    EXPECT_EQ(static_cast<unsigned char*>(maker), nullptr);
    EXPECT_EQ(maker.Size(), 5000u) << "after Close";
    EXPECT_EQ(other[4999], 7) << "the block lives on";
    opener.Close();
    EXPECT_EQ(opener.Exist(name), 0);
}

TEST_F(SharedMemory, IsNotDisturbedWhileItIsOpen) {
    CJw32SharedMemory memory;
    void* const view = memory.Create(name, 10);
    const auto other = name_ + "-other";
    Triple triple;
    EXPECT_EQ(memory.Create(other.c_str(), 20, &triple.code, triple.text, triple.size), nullptr);
    EXPECT_TRUE(triple.isClear()) << triple;
    triple = {};
    EXPECT_EQ(memory.Open(name, &triple.code, triple.text, triple.size), nullptr);
    EXPECT_TRUE(triple.isClear()) << triple;
    EXPECT_EQ(static_cast<unsigned char*>(memory), view);
    EXPECT_EQ(memory.Size(), 10u);
    EXPECT_EQ(memory.Exist(other.c_str()), 0);
}

TEST_F(SharedMemory, ReportsWhatThePlatformRefuses) {
    CJw32SharedMemory memory;
    Triple triple;
    EXPECT_EQ(memory.Create(name, 0, &triple.code, triple.text, triple.size), nullptr);
    EXPECT_TRUE(triple.tells(ERROR_INVALID_PARAMETER)) << triple;
    ASSERT_NE(memory.Create(name, 10), nullptr);
    memory.Close();
    triple = {};
    EXPECT_EQ(memory.Open(name, &triple.code, triple.text, triple.size), nullptr);
    EXPECT_TRUE(triple.tells(ERROR_FILE_NOT_FOUND)) << triple;
    EXPECT_EQ(memory.Size(), 0u) << "after a failed Open";
    const std::string tooLong(300, 'n');
    triple = {};
    EXPECT_EQ(memory.Create(tooLong.c_str(), 10, &triple.code, triple.text, triple.size), nullptr);
    EXPECT_TRUE(triple.tells(ERROR_FILENAME_EXCED_RANGE)) << triple;
    EXPECT_EQ(memory.Size(), 10u) << "the size that was asked for";
}

TEST_F(SharedMemory, TakesTheLongestNameAndNone) {
    const std::string longest(259, 'n');
    CJw32SharedMemory maker, opener, nameless;
    ASSERT_NE(maker.Create(longest.c_str(), 10), nullptr);
    EXPECT_NE(opener.Open(longest.c_str()), nullptr);
    EXPECT_NE(nameless.Create(nullptr, 10), nullptr);
    EXPECT_EQ(nameless.Exist(nullptr), 0);
}

TEST_F(SharedMemory, IsReleasedOnceByWhoeverOfItsCopiesClosesFirst) {
    CJw32SharedMemory first, third;
    ASSERT_NE(first.Create(name, 10), nullptr);
    CJw32SharedMemory second(first);
    third = first;
    second.Close();
    EXPECT_EQ(second.Exist(name), 0) << "the copies hold no block of their own";
    auto* const bytes = static_cast<unsigned char*>(second.Create(name, 10));
    ASSERT_NE(bytes, nullptr);
    first.Close();
    third.Close();
    EXPECT_EQ(second.Exist(name), 1) << "the others have released what is not theirs";
    bytes[9] = 7;
}

}  // namespace
