// Named shared memory within one process.
#include <jw32/shared_memory.h>

#include <algorithm>

#include "support/triple.h"

namespace {

class SharedMemory : public testing::Test {
  protected:
    static auto create(CJw32SharedMemory& memory, const std::string& name, DWORD size) {
        return reported([&](auto... t) { return memory.Create(name.c_str(), size, t...); });
    }
    static auto open(CJw32SharedMemory& memory, const std::string& name) {
        return reported([&](auto... t) { return memory.Open(name.c_str(), t...); });
    }
    static unsigned char* bytesOf(const CJw32SharedMemory& memory) { return memory; }
    int exists() const { return opener.Exist(name.c_str()); }

    const std::string name = "jw32-test-" + std::to_string(GetCurrentProcessId());
    CJw32SharedMemory maker, opener;
};

TEST_F(SharedMemory, ShowsEveryOpenerTheSameBytes) {
    EXPECT_EQ(exists(), 0);
    void* const view = maker.Create(name.c_str(), 5000);
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(std::count(bytesOf(maker), bytesOf(maker) + 5000, 0), 5000);
    EXPECT_EQ(exists(), 1);
    EXPECT_EQ(create(maker, name + "-other", 20), Report(nullptr)) << "while it is open";
    EXPECT_EQ(open(maker, name), Report(nullptr)) << "while it is open";
    EXPECT_EQ(bytesOf(maker), view);
    EXPECT_EQ(maker.Size(), 5000u);

    EXPECT_EQ(create(opener, name, 20), Report(nullptr)) << "the name is taken";
    EXPECT_EQ(opener.Size(), 0u) << "the name is taken";
    const void* const other = opener.Open(name.c_str());
    ASSERT_TRUE(other != nullptr && other == bytesOf(opener));
    EXPECT_EQ(opener.Size(), 0u) << "an opener cannot know the size";
    bytesOf(maker)[4999] = 7;
    maker.Close();
    maker.Close();
    EXPECT_EQ(bytesOf(maker), nullptr);
    EXPECT_EQ(maker.Size(), 5000u) << "after Close";
    EXPECT_EQ(bytesOf(opener)[4999], 7) << "the block lives on";
    opener.Close();
    EXPECT_EQ(exists(), 0);
}

TEST_F(SharedMemory, ReportsWhatThePlatformRefuses) {
    const std::string longest(259, 'n'), tooLong(260, 'n');
    EXPECT_EQ(create(maker, name, 0), Report(nullptr, ERROR_INVALID_PARAMETER));
    EXPECT_EQ(create(maker, tooLong, 10), Report(nullptr, ERROR_FILENAME_EXCED_RANGE));
    EXPECT_EQ(maker.Size(), 10u) << "the size that was asked for";
    EXPECT_EQ(open(maker, name), Report(nullptr, ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(maker.Size(), 0u) << "after a failed Open";
    EXPECT_NE(maker.Create(longest.c_str(), 10), nullptr);
    EXPECT_NE(opener.Open(longest.c_str()), nullptr);
    EXPECT_NE(CJw32SharedMemory().Create(nullptr, 10), nullptr) << "a block without a name";
}

}  // namespace
