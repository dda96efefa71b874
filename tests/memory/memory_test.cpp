// Blocks of memory, of one process and shared ones, and what copies of every kind release.
#include <jw32/memory.h>
#include <jw32/shared_memory.h>

#include <algorithm>

#include "memory/mapped_file.h"

namespace {

TEST(Memory, IsZeroOnBothSidesOfTheThresholdAndStaysUntilItIsClosed) {
    CJw32Memory memory;
    const auto open = [&memory](unsigned int bytes, unsigned int threshold) {
        return reported([&](auto... t) { return memory.Open(bytes, threshold, t...) != nullptr; });
    };
    for (const unsigned int size : {100u, 0x80001u}) {
        EXPECT_EQ(open(0, 50), Report(false)) << "no size";
        ASSERT_EQ(open(size, 0), Report(true)) << size;
        unsigned char* const block = memory.Address();
        EXPECT_EQ(std::count(block, block + size, 0), size);
        EXPECT_EQ(open(20, 1), Report(false)) << "a second block";
        EXPECT_EQ(memory.Address(), block);
        EXPECT_EQ(memory.Size(), size);
        memory.Close();
        memory.Close();
        EXPECT_EQ(memory.Address(), nullptr) << size;
        EXPECT_EQ(memory.Size(), 0u) << size;
    }
}

class SharedMemory : public testing::Test {
  protected:
    static auto create(CJw32SharedMemory& memory, const std::string& name, DWORD size) {
        return reported([&](auto... t) { return memory.Create(name.c_str(), size, t...); });
    }
    static auto open(CJw32SharedMemory& memory, const std::string& name) {
        return reported([&](auto... t) { return memory.Open(name.c_str(), t...); });
    }

    const std::string name = "jw32-test-" + std::to_string(GetCurrentProcessId());
    CJw32SharedMemory maker, opener;
};

TEST_F(SharedMemory, ShowsEveryOpenerTheSameBytes) {
    auto* const made = static_cast<unsigned char*>(maker.Create(name.c_str(), 5000));
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(std::count(made, made + 5000, 0), 5000);
    EXPECT_EQ(opener.Exist(name.c_str()), 1);
    EXPECT_EQ(create(maker, name + "-other", 20), Report(nullptr)) << "while it is open";
    EXPECT_EQ(open(maker, name), Report(nullptr)) << "while it is open";
    EXPECT_EQ(maker, made);
    EXPECT_EQ(maker.Size(), 5000u);

    EXPECT_EQ(create(opener, name, 20), Report(nullptr)) << "the name is taken";
    EXPECT_EQ(opener.Size(), 0u) << "the name is taken";
    auto* const joined = static_cast<unsigned char*>(opener.Open(name.c_str()));
    ASSERT_NE(joined, nullptr);
    made[4999] = 7;
    maker.Close();
    maker.Close();
    EXPECT_EQ(maker, static_cast<unsigned char*>(nullptr));
    EXPECT_EQ(maker.Size(), 5000u) << "after Close";
    EXPECT_EQ(joined[4999], 7) << "the block lives on";
}

TEST_F(SharedMemory, ReportsWhatThePlatformRefuses) {
    const std::string longest(259, 'n'), tooLong(260, 'n');
    EXPECT_EQ(create(maker, name, 0), Report(nullptr, ERROR_INVALID_PARAMETER));
    EXPECT_EQ(create(maker, tooLong, 10), Report(nullptr, ERROR_FILENAME_EXCED_RANGE));
    EXPECT_EQ(maker.Size(), 10u) << "the size that was asked for";
    EXPECT_EQ(open(maker, name), Report(nullptr, ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(maker.Size(), 0u) << "after a failed Open";
    EXPECT_NE(maker.Create(longest.c_str(), 10), nullptr);
    EXPECT_NE(CJw32SharedMemory().Create(nullptr, 10), nullptr) << "a block without a name";
}

// All that `open` opens is released by the first of the copies to close, and by that alone.
template <class Object, class Open>
void closeCopiesOf(const char* kind, Open open) {
    Object first, third;
    ASSERT_NE(open(first), nullptr) << kind;
    Object second(first);
    third = first;
    second.Close();
    const auto* const bytes = static_cast<unsigned char*>(open(second));
    ASSERT_NE(bytes, nullptr) << kind << " is held by the copies";
    first.Close();
    third.Close();
    EXPECT_EQ(bytes[9], 0) << kind << " was another's";
}

TEST_F(MappedFile, AndOtherMemoryIsReleasedOnceByItsCopies) {
    const auto name = c("zeros"), block = "jw32-test-" + std::to_string(GetCurrentProcessId());
    write(name, std::string(10, '\0'));
    closeCopiesOf<CJw32Memory>("pages", [](auto& o) { return o.Open(10, 1); });
    closeCopiesOf<CJw32MmFile>("file", [&](auto& o) { return o.Open(writing, name.c_str()); });
    closeCopiesOf<CJw32SharedMemory>("block", [&](auto& o) { return o.Create(block.c_str(), 10); });
}

}  // namespace
