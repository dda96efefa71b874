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

TEST_F(MmFile, IsWrittenThroughTheViewAndTellsItsSizeFromThenOn) {
    EXPECT_EQ(file.Size(), 0u);
    ASSERT_EQ(openPart(writing, small), Report(true));
    EXPECT_EQ(mapped, 7u);
    view[0] = 'C';
    file.Close();
    file.Close();
    EXPECT_EQ(read(small), "Content");
    DWORD high = 1;
    EXPECT_EQ(file.Size(&high), 7u) << "after Close";
    EXPECT_EQ(high, 0u);
}

TEST_F(MmFile, HasNoSizeWhenItCannotBeOpened) {
    const auto noMode = static_cast<Mode>(3);
    for (const auto& [mode, name, code] :
         {std::tuple(reading, c("none"), ERROR_FILE_NOT_FOUND), {noMode, small, 0}}) {
        open(reading, small);
        file.Close();
        EXPECT_EQ(open(mode, name), Report(false, code));
        EXPECT_EQ(file.Size(), 0u) << name;
    }
}

TEST_F(MmFile, RefusesAnEmptyFileInItsOwnWords) {
    EXPECT_EQ(openPart(writing, empty), Report(false, 0xFFFFFFFF));
    EXPECT_EQ(mapped, 0u);
    char text[48] = "";
    EXPECT_EQ(file.Open(reading, empty.c_str(), nullptr, text, sizeof text), nullptr);
    EXPECT_STREQ(text, "Cannot create filemapping for files with size 0");
    EXPECT_EQ(file.Open(reading, empty.c_str(), &mapped), nullptr) << "the code alone";
    EXPECT_EQ(open(writing, small), Report(true)) << "the object can be used on";
}

TEST_F(MmFile, IsNotDisturbedByASecondOpenOrAPlaceOutside) {
    EXPECT_EQ(move({0, 10}), Report(false)) << "a closed object";
    open(reading, large);
    const char* const former = view;
    EXPECT_EQ(openPart(reading, small), Report(false));
    EXPECT_EQ(mapped, 0u);
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
}

TEST_F(MmFile, HasOneViewWithItsCopies) {
    open(writing, large);
    CJw32MmFile copy(file);
    Place to(step, 10);
    ASSERT_NE(copy.ReMap(to.first, to.second), nullptr);
    ASSERT_EQ(move(to), Report(true)) << "the others can go on";
    EXPECT_EQ(*view, 'b');
    copy.Close();
    EXPECT_EQ(move(to), Report(false)) << "what is released gives no view";
}

}  // namespace
