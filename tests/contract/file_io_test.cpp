// Reading, writing, positions, sizes and the end of handles.
#include "contract_files.h"

namespace {

class FileIo : public ContractFiles {
  protected:
    void SetUp() override { write(c("file"), "0123456789"); }

    Opened open(DWORD access) const {
        return Opened(Wide(c("file")), access, shareAll, OPEN_EXISTING);
    }
};

TEST_F(FileIo, ReadsUpToTheEnd) {
    const auto file = open(GENERIC_READ);
    char target[16] = "";
    DWORD moved = 4711;
    EXPECT_TRUE(ReadFile(file.handle, target, 4, &moved, nullptr));
    EXPECT_EQ(std::string(target, moved), "0123");
    EXPECT_TRUE(ReadFile(file.handle, target, sizeof target, &moved, nullptr));
    EXPECT_EQ(std::string(target, moved), "456789");
    EXPECT_TRUE(ReadFile(file.handle, target, sizeof target, &moved, nullptr)) << "at the end";
    EXPECT_EQ(moved, 0u);
    EXPECT_TRUE(ReadFile(file.handle, target, 0, &moved, nullptr)) << "a count of 0";
}

TEST_F(FileIo, WritesInPlaceAndBehindTheEnd) {
    {
        const auto file = open(GENERIC_WRITE);
        DWORD moved = 4711;
        EXPECT_TRUE(WriteFile(file.handle, "ab", 2, &moved, nullptr));
        EXPECT_EQ(moved, 2u);
        EXPECT_TRUE(WriteFile(file.handle, "", 0, &moved, nullptr)) << "a count of 0";
        EXPECT_EQ(moved, 0u);
        EXPECT_EQ(SetFilePointer(file.handle, 12, nullptr, FILE_BEGIN), 12u);
        EXPECT_EQ(GetFileSize(file.handle, nullptr), 10u) << "a position makes no file longer";
        EXPECT_TRUE(WriteFile(file.handle, "z", 1, &moved, nullptr));
    }
    EXPECT_EQ(read(c("file")), std::string("ab23456789\0\0z", 13));
}

TEST_F(FileIo, NeedsTheAccessThatTheHandleHas) {
    const auto reader = open(GENERIC_READ), writer = open(GENERIC_WRITE);
    char byte = 'x';
    DWORD moved = 4711;
    EXPECT_EQ(codeOf([&] { return WriteFile(reader.handle, &byte, 1, &moved, nullptr); }),
              DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(moved, 0u);
    EXPECT_EQ(codeOf([&] { return ReadFile(writer.handle, &byte, 1, &moved, nullptr); }),
              DWORD{ERROR_ACCESS_DENIED});
    // Known difference: Wine takes the handle for a wrong parameter.
    EXPECT_EQ(codeOf([&] { return SetEndOfFile(reader.handle); }),
              onWine() ? DWORD{ERROR_INVALID_PARAMETER} : DWORD{ERROR_ACCESS_DENIED});
}

struct Seek {
    LONG distance;
    DWORD origin, position, code;
};
std::ostream& operator<<(std::ostream& out, const Seek& seek) {
    return out << seek.distance << " from origin " << seek.origin;
}
class FilePointer : public FileIo, public testing::WithParamInterface<Seek> {};

TEST_P(FilePointer, IsSetFromItsOrigin) {
    const auto& seek = GetParam();
    const auto file = open(GENERIC_READ);
    ASSERT_EQ(SetFilePointer(file.handle, 3, nullptr, FILE_BEGIN), 3u);
    SetLastError(0);
    EXPECT_EQ(SetFilePointer(file.handle, seek.distance, nullptr, seek.origin), seek.position);
    EXPECT_EQ(GetLastError(), seek.code);
    const DWORD expected = seek.code == 0 ? seek.position : 3;
    EXPECT_EQ(SetFilePointer(file.handle, 0, nullptr, FILE_CURRENT), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Of, FilePointer,
    testing::Values(Seek{7, FILE_BEGIN, 7, 0}, Seek{100, FILE_BEGIN, 100, 0},
                    Seek{-2, FILE_CURRENT, 1, 0}, Seek{0, FILE_END, 10, 0},
                    Seek{-4, FILE_END, 6, 0},
                    Seek{-1, FILE_BEGIN, INVALID_SET_FILE_POINTER, ERROR_NEGATIVE_SEEK},
                    Seek{-4, FILE_CURRENT, INVALID_SET_FILE_POINTER, ERROR_NEGATIVE_SEEK},
                    Seek{-11, FILE_END, INVALID_SET_FILE_POINTER, ERROR_NEGATIVE_SEEK},
                    Seek{0, 3, INVALID_SET_FILE_POINTER, ERROR_INVALID_PARAMETER}));

TEST_F(FileIo, KnowsPositionsBeyond32Bits) {
    const auto file = open(GENERIC_READ | GENERIC_WRITE);
    LONG high = 1;
    EXPECT_EQ(SetFilePointer(file.handle, 5, &high, FILE_BEGIN), 5u);
    EXPECT_EQ(high, 1);
    EXPECT_TRUE(SetEndOfFile(file.handle));
    DWORD sizeHigh = 4711;
    EXPECT_EQ(GetFileSize(file.handle, &sizeHigh), 5u);
    EXPECT_EQ(sizeHigh, 1u);
}

TEST_F(FileIo, NeedsTheHighPartForPositionsBeyond32Bits) {
    if (onWine()) GTEST_SKIP() << "known difference: Wine gives the low half of the position";
    const auto file = open(GENERIC_READ | GENERIC_WRITE);
    LONG high = 1;
    SetFilePointer(file.handle, 5, &high, FILE_BEGIN);
    ASSERT_TRUE(SetEndOfFile(file.handle));
    SetFilePointer(file.handle, 7, nullptr, FILE_BEGIN);
    SetLastError(0);
    EXPECT_EQ(SetFilePointer(file.handle, 0, nullptr, FILE_END), INVALID_SET_FILE_POINTER)
        << "has no room for the high part";
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(SetFilePointer(file.handle, 0, nullptr, FILE_CURRENT), 7u);
}

TEST_F(FileIo, CutsAtThePosition) {
    {
        const auto file = open(GENERIC_WRITE);
        SetFilePointer(file.handle, 4, nullptr, FILE_BEGIN);
        EXPECT_TRUE(SetEndOfFile(file.handle));
        EXPECT_EQ(GetFileSize(file.handle, nullptr), 4u);
    }
    EXPECT_EQ(read(c("file")), "0123");
}

TEST_F(FileIo, RefusesHandlesThatAreNotOpen) {
    HANDLE stale = nullptr;
    {
        const auto file = open(GENERIC_READ);
        stale = file.handle;
    }
    char byte = 'x';
    DWORD moved = 4711;
    for (const HANDLE handle : {stale, HANDLE{nullptr}, INVALID_HANDLE_VALUE,
                                reinterpret_cast<HANDLE>(INT_PTR{0x7654320})}) {
        SCOPED_TRACE(handle);
        const std::pair<const char*, DWORD> codes[] = {
            {"ReadFile", codeOf([&] { return ReadFile(handle, &byte, 1, &moved, nullptr); })},
            {"WriteFile", codeOf([&] { return WriteFile(handle, &byte, 1, &moved, nullptr); })},
            {"SetFilePointer",
             codeOf([&] { return SetFilePointer(handle, 0, nullptr, 0) != INVALID_FILE_SIZE; })},
            {"GetFileSize",
             codeOf([&] { return GetFileSize(handle, nullptr) != INVALID_FILE_SIZE; })},
            {"SetEndOfFile", codeOf([&] { return SetEndOfFile(handle); })},
            {"FindClose", codeOf([&] { return FindClose(handle); })},
        };
        for (const auto& [name, code] : codes) EXPECT_EQ(code, DWORD{ERROR_INVALID_HANDLE}) << name;
    }
    EXPECT_EQ(codeOf([&] { return CloseHandle(stale); }), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(codeOf([&] { return CloseHandle(nullptr); }), DWORD{ERROR_INVALID_HANDLE});
}

TEST_F(FileIo, GivesNothingOfTheNullDeviceAndTakesAll) {
    const Opened file(L"NUL", GENERIC_READ | GENERIC_WRITE, shareAll, OPEN_EXISTING);
    ASSERT_TRUE(file);
    char byte = 'x';
    DWORD moved = 4711;
    EXPECT_TRUE(WriteFile(file.handle, &byte, 1, &moved, nullptr));
    EXPECT_EQ(moved, 1u);
    EXPECT_TRUE(ReadFile(file.handle, &byte, 1, &moved, nullptr));
    EXPECT_EQ(moved, 0u);
}

}  // namespace
