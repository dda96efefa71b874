// Mapped files: whole, piece by piece, and what is refused.
#include <gtest/gtest.h>
#include <jw32/mm_file.h>

#include <cstring>

#include "support/scratch_drives.h"
#include "support/triple.h"

namespace {

constexpr auto reading = CJw32MmFile::eRead;
constexpr auto writing = CJw32MmFile::eReadWrite;
constexpr const char* emptyFileText = "Cannot create filemapping for files with size 0";

class MmFile : public ScratchDrives {
  protected:
    MmFile() {
        SYSTEM_INFO system;
        GetSystemInfo(&system);
        granularity_ = system.dwAllocationGranularity;
        std::string content(2 * granularity_ + 1000, '.');
        content[0] = 'a';
        content[granularity_] = 'b';
        content[2 * granularity_] = 'c';
        size_ = static_cast<DWORD>(content.size());
        write(large(), content);
        write(small(), "content");
        write(c("empty"), "");
    }

    std::string large() const { return c("large"); }
    std::string small() const { return c("small"); }
    static char firstOf(const void* view) { return *static_cast<const char*>(view); }

    DWORD granularity_ = 0, size_ = 0;
};

TEST_F(MmFile, ShowsAWholeFileAndTellsItsSizeFromThenOn) {
    CJw32MmFile file;
    EXPECT_EQ(file.Size(), 0u);
    Triple triple;
    const void* const view =
        file.Open(reading, small().c_str(), &triple.code, triple.text, triple.size);
    ASSERT_NE(view, nullptr) << triple;
    EXPECT_TRUE(triple.isClear()) << triple;
    EXPECT_EQ(std::memcmp(view, "content", 7), 0);
    DWORD high = 1;
    EXPECT_EQ(file.Size(&high), 7u);
    EXPECT_EQ(high, 0u);
    file.Close();
    file.Close();
    EXPECT_EQ(file.Size(), 7u) << "after Close";
    ASSERT_NE(file.Open(reading, large().c_str()), nullptr) << "another file";
    EXPECT_EQ(file.Size(), size_);
}

TEST_F(MmFile, WritesThroughTheViewAndSharesWithNobody) {
    CJw32MmFile file, another;
    DWORD mapped = 99;
    auto* const view = static_cast<char*>(file.Open(writing, small().c_str(), mapped));
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(mapped, 7u);
    Triple triple;
    EXPECT_EQ(another.Open(reading, small().c_str(), &triple.code, triple.text, triple.size),
              nullptr);
    EXPECT_TRUE(triple.tells(ERROR_SHARING_VIOLATION)) << triple;
    view[0] = 'C';
    file.Close();
    EXPECT_EQ(read(small()), "Content");
    ASSERT_NE(file.Open(reading, small().c_str()), nullptr);
    EXPECT_NE(another.Open(reading, small().c_str()), nullptr) << "two readers";
}

TEST_F(MmFile, RefusesAnEmptyFileInItsOwnWords) {
    CJw32MmFile file;
    DWORD mapped = 99;
    Triple triple;
    EXPECT_EQ(
        file.Open(writing, c("empty").c_str(), mapped, &triple.code, triple.text, triple.size),
        nullptr);
    EXPECT_EQ(triple.code, 0xFFFFFFFFu);
    EXPECT_STREQ(triple.text, emptyFileText);
    EXPECT_EQ(mapped, 0u);
    Triple text, code;
    EXPECT_EQ(file.Open(reading, c("empty").c_str(), nullptr, text.text, text.size), nullptr);
    EXPECT_STREQ(text.text, emptyFileText) << "the text alone";
    EXPECT_EQ(file.Open(reading, c("empty").c_str(), &code.code), nullptr);
    EXPECT_EQ(code.code, 0xFFFFFFFFu) << "the code alone";
    char cut[7] = "";
    EXPECT_EQ(file.Open(reading, c("empty").c_str(), nullptr, cut, sizeof cut), nullptr);
    EXPECT_STREQ(cut, "Cannot");
    EXPECT_NE(file.Open(writing, small().c_str()), nullptr) << "the object can be used on";
}

TEST_F(MmFile, RefusesWhatCannotBeOpened) {
    CJw32MmFile file;
    ASSERT_NE(file.Open(reading, small().c_str()), nullptr);
    file.Close();
    Triple triple;
    EXPECT_EQ(file.Open(reading, c("none").c_str(), &triple.code, triple.text, triple.size),
              nullptr);
    EXPECT_TRUE(triple.tells(ERROR_FILE_NOT_FOUND)) << triple;
    EXPECT_EQ(file.Size(), 0u);
    ASSERT_NE(file.Open(reading, small().c_str()), nullptr);
    file.Close();
    triple = {};
    EXPECT_EQ(file.Open(static_cast<CJw32MmFile::eOpenmode>(3), small().c_str(), &triple.code,
                        triple.text, triple.size),
              nullptr);
    EXPECT_TRUE(triple.isClear()) << "no such mode: " << triple;
    EXPECT_EQ(file.Size(), 0u) << "no such mode";
}

TEST_F(MmFile, IsNotDisturbedByASecondOpen) {
    CJw32MmFile file;
    const void* const view = file.Open(reading, small().c_str());
    DWORD mapped = 99;
    Triple triple;
    EXPECT_EQ(file.Open(reading, large().c_str(), mapped, &triple.code, triple.text, triple.size),
              nullptr);
    EXPECT_TRUE(triple.isClear()) << triple;
    EXPECT_EQ(mapped, 0u);
    EXPECT_EQ(firstOf(view), 'c');
    EXPECT_EQ(file.Size(), 7u);
}

TEST_F(MmFile, MovesItsViewByRoundedOffsets) {
    const DWORD step = granularity_;
    const struct {
        const char* what;
        DWORD offset, length, rounded, mapped;
        char first;
    } rows[] = {
        {"a piece", step, 10, step, 10, 'b'},
        {"rounded down", step + 100, 10, step, 10, 'b'},
        {"cut at the end", step + 100, 2 * step, step, size_ - step, 'b'},
        {"up to the end", 2 * step, 1000, 2 * step, 1000, 'c'},
        {"the last byte", size_ - 1, 5000, 2 * step, 1000, 'c'},
        {"no length: the rest", step, 0, step, 0, 'b'},
        {"a sum beyond 32 bits", step, 0xFFFFFFFF, step, size_ - step, 'b'},
    };
    for (const auto mode : {reading, writing}) {
        CJw32MmFile file;
        ASSERT_NE(file.Open(mode, large().c_str()), nullptr);
        for (const auto& row : rows) {
            SCOPED_TRACE(row.what);
            DWORD offset = row.offset, length = row.length;
            Triple triple;
            char* const view = static_cast<char*>(
                file.ReMap(offset, length, &triple.code, triple.text, triple.size));
            ASSERT_NE(view, nullptr) << triple;
            EXPECT_TRUE(triple.isClear()) << triple;
            EXPECT_EQ(offset, row.rounded);
            EXPECT_EQ(length, row.mapped);
            EXPECT_EQ(firstOf(view), row.first);
            if (mode == writing) *view = row.first;  // the view may be written
        }
    }
}

TEST_F(MmFile, KeepsItsViewWhenThePlaceLiesOutside) {
    CJw32MmFile file;
    DWORD offset = 0, length = 10;
    Triple triple;
    EXPECT_EQ(file.ReMap(offset, length, &triple.code, triple.text, triple.size), nullptr);
    EXPECT_TRUE(triple.isClear()) << "a closed object: " << triple;
    const void* const view = file.Open(reading, large().c_str());
    for (const DWORD outside : {size_, DWORD{0xFFFFFFFF}}) {
        offset = outside;
        EXPECT_EQ(file.ReMap(offset, length, &triple.code, triple.text, triple.size), nullptr);
        EXPECT_TRUE(triple.isClear()) << triple;
        EXPECT_EQ(offset, outside);
        EXPECT_EQ(length, 10u);
        EXPECT_EQ(firstOf(view), 'a');
    }
}

TEST_F(MmFile, IsReleasedOnceByWhoeverOfItsCopiesClosesFirst) {
    CJw32MmFile first, third;
    ASSERT_NE(first.Open(writing, large().c_str()), nullptr);
    CJw32MmFile second(first);
    third = first;
    DWORD offset = granularity_, length = 10;
    ASSERT_NE(second.ReMap(offset, length), nullptr);
    EXPECT_EQ(firstOf(first.ReMap(offset, length)), 'b') << "the others can go on";
    second.Close();
    EXPECT_NE(second.Open(writing, large().c_str()), nullptr) << "all is released";
    EXPECT_EQ(first.ReMap(offset, length), nullptr) << "what is released gives no view";
    first.Close();
    third.Close();
    EXPECT_EQ(firstOf(second.ReMap(offset, length)), 'b')
        << "the others have released what is not theirs";
}

}  // namespace
