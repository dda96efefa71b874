// Reading, writing, positions, sizes and the end of handles.
#include "contract_files.h"

namespace {

constexpr DWORD none = INVALID_SET_FILE_POINTER;

class FileIo : public ContractFiles {
  protected:
    Opened open(DWORD access) const { return Opened(c("file"), access, shareAll, OPEN_EXISTING); }
    static DWORD seek(const Opened& file, LONG distance, DWORD origin) {
        return SetFilePointer(file.handle, distance, nullptr, origin);
    }
    DWORD moved = 4711;
    char byte = 'x';
};

TEST_F(FileIo, WritesAndCutsAtThePosition) {
    {
        const auto file = open(writing);
        EXPECT_TRUE(WriteFile(file.handle, "ab", 2, &moved, nullptr));
        EXPECT_EQ(moved, 2u);
        EXPECT_EQ(seek(file, 9, FILE_BEGIN), 9u);
        EXPECT_EQ(GetFileSize(file.handle, nullptr), 7u) << "a position makes no file longer";
        EXPECT_TRUE(WriteFile(file.handle, "yz", 2, &moved, nullptr));
        EXPECT_EQ(seek(file, -1, FILE_CURRENT), 10u);
        EXPECT_TRUE(SetEndOfFile(file.handle));
    }
    EXPECT_EQ(read(c("file")), std::string("abntent\0\0y", 10));
}

TEST_F(FileIo, NeedsTheAccessThatTheHandleHas) {
    const auto reader = open(reading), writer = open(writing);
    EXPECT_EQ(codeOf(WriteFile(reader.handle, &byte, 1, &moved, nullptr)), denied);
    EXPECT_EQ(codeOf(ReadFile(writer.handle, &byte, 1, &moved, nullptr)), denied);
    EXPECT_EQ(codeOf(FindClose(reader.handle)), badHandle) << "a file is no search";
    // Known difference: Wine takes the handle for a wrong parameter.
    EXPECT_EQ(codeOf(SetEndOfFile(reader.handle)), onWine() ? badParameter : denied);
}

TEST_F(FileIo, SetsThePositionFromItsOrigin) {
    const auto file = open(reading | writing);
    EXPECT_EQ(seek(file, 100, FILE_BEGIN), 100u);
    EXPECT_EQ(seek(file, -1, FILE_END), 6u);
    EXPECT_EQ(seek(file, -2, FILE_CURRENT), 4u);
    EXPECT_EQ(codeOf(seek(file, -5, FILE_CURRENT) != none), DWORD{ERROR_NEGATIVE_SEEK});
    EXPECT_EQ(codeOf(seek(file, 0, 3) != none), badParameter);
    EXPECT_EQ(seek(file, 0, FILE_CURRENT), 4u) << "moves though it fails";
    LONG high = 1;
    EXPECT_EQ(SetFilePointer(file.handle, 5, &high, FILE_BEGIN), 5u);
    EXPECT_EQ(high, 1);
    EXPECT_TRUE(SetEndOfFile(file.handle));
    DWORD sizeHigh = 4711;
    EXPECT_EQ(GetFileSize(file.handle, &sizeHigh), 5u);
    EXPECT_EQ(sizeHigh, 1u);
    if (onWine()) return;  // known difference: Wine gives the low half of the position then
    EXPECT_EQ(codeOf(seek(file, 0, FILE_END) != none), badParameter) << "needs the high part";
}

TEST_F(FileIo, RefusesHandlesThatAreNotOpen) {
    const HANDLE stale = open(reading).handle;
    for (const HANDLE handle : {stale, HANDLE{nullptr}, INVALID_HANDLE_VALUE}) {
        EXPECT_EQ(codeOf(ReadFile(handle, &byte, 1, &moved, nullptr)), badHandle) << handle;
        EXPECT_EQ(codeOf(WriteFile(handle, &byte, 1, &moved, nullptr)), badHandle) << handle;
        EXPECT_EQ(codeOf(SetFilePointer(handle, 0, nullptr, 0) != none), badHandle) << handle;
        EXPECT_EQ(codeOf(GetFileSize(handle, nullptr) != none), badHandle) << handle;
        EXPECT_EQ(codeOf(SetEndOfFile(handle)), badHandle) << handle;
        EXPECT_EQ(codeOf(FindClose(handle)), badHandle) << handle;
    }
    EXPECT_EQ(codeOf(CloseHandle(stale)), badHandle);
}

}  // namespace
