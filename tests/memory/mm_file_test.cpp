// Mapped files: whole, piece by piece, and what is refused.
#include "memory/mapped_file.h"

namespace {

class MmFile : public MappedFile {
  protected:
    MmFile() {
        write(large, std::string(step, 'a') + std::string(step, 'b') + std::string(1000, 'c'));
        write(small, "content");
        write(empty, "");
    }

    static constexpr DWORD step = 0x10000, size = 2 * step + 1000;
    const std::string large = c("large"), small = c("small"), empty = c("empty");
};

TEST_F(MmFile, IsWrittenThroughTheViewAndTellsTheSizeAtTheLastOpen) {
    EXPECT_EQ(file.Size(), 0u);
    ASSERT_EQ(openPart(writing, small), Report(true));
    EXPECT_EQ(part, 7u);
    view[0] = 'C';
    file.Close();
    file.Close();
    EXPECT_EQ(read(small), "Content");
    EXPECT_EQ(file.Size(), 7u) << "after Close";
    EXPECT_EQ(open(reading, c("none")), Report(false, ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(file.Size(), 0u) << "no file";
    open(reading, small);
    file.Close();
    EXPECT_EQ(open(static_cast<CJw32MmFile::eOpenmode>(3), small), Report(false)) << "no mode";
    EXPECT_EQ(file.Size(), 0u) << "no mode";
}

TEST_F(MmFile, RefusesAnEmptyFileInItsOwnWords) {
    EXPECT_EQ(openPart(writing, empty), Report(false, 0xFFFFFFFF));
    EXPECT_EQ(part, 0u);
    char text[48] = "";
    EXPECT_EQ(file.Open(reading, empty.c_str(), nullptr, text, sizeof text), nullptr);
    EXPECT_STREQ(text, "Cannot create filemapping for files with size 0");
    EXPECT_EQ(open(writing, small), Report(true)) << "the object can be used on";
}

TEST_F(MmFile, IsNotDisturbedByASecondOpenOrAPlaceOutside) {
    EXPECT_EQ(move({0, 10}), Report(false)) << "a closed object";
    open(reading, large);
    const char* const former = view;
    EXPECT_EQ(openPart(reading, small), Report(false));
    EXPECT_EQ(part, 0u);
    EXPECT_EQ(file.Size(), size);
    EXPECT_EQ(move({size, 10}), Report(false));
    EXPECT_EQ(place, Place(size, 10));
    EXPECT_EQ(*former, 'a');
}

TEST_F(MmFile, MovesItsViewByRoundedOffsets) {
    const struct {
        const char* what;
        Place wanted, given;
        char first;
    } rows[] = {{"rounded down", {step + 100, 10}, {step, 10}, 'b'},
                {"cut at the end", {step + 100, 2 * step}, {step, size - step}, 'b'},
                {"the last byte", {size - 1, 5000}, {2 * step, 1000}, 'c'},
                {"no length: the rest", {step, 0}, {step, 0}, 'b'},
                {"a sum beyond 32 bits", {step, 0xFFFFFFFF}, {step, size - step}, 'b'}};
    open(reading, large);
    for (const auto& row : rows) {
        ASSERT_EQ(move(row.wanted), Report(true)) << row.what;
        EXPECT_EQ(place, row.given) << row.what;
        EXPECT_EQ(*view, row.first) << row.what;
    }
    CJw32MmFile copy(file);
    EXPECT_NE(copy.ReMap(place.first, place.second), nullptr);
    EXPECT_EQ(move({step, 10}), Report(true)) << "when a copy has moved it";
    copy.Close();
    EXPECT_EQ(move({step, 10}), Report(false)) << "when a copy has released it";
}

}  // namespace
