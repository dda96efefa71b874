// Memory blocks on both sides of the threshold, and what copies of every kind of memory release.
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
        std::fill(block, block + size, static_cast<unsigned char>(0xA5));
        EXPECT_EQ(open(20, 1), Report(false)) << "a second block";
        EXPECT_EQ(memory.Address(), block);
        EXPECT_EQ(memory.Size(), size);
        memory.Close();
        memory.Close();
        EXPECT_EQ(memory.Address(), nullptr) << size;
        EXPECT_EQ(memory.Size(), 0u) << size;
    }
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
    closeCopiesOf<CJw32Memory>("heap", [](auto& o) { return o.Open(10); });
    closeCopiesOf<CJw32Memory>("pages", [](auto& o) { return o.Open(10, 1); });
    closeCopiesOf<CJw32MmFile>("file", [&](auto& o) { return o.Open(writing, name.c_str()); });
    closeCopiesOf<CJw32SharedMemory>("block", [&](auto& o) { return o.Create(block.c_str(), 10); });
}

}  // namespace
