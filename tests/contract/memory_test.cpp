// What callers expect of the global heap, of pages of memory, and of mappings and their views.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>

#include "support/last_error.h"
#include "support/scratch_drives.h"

namespace {

constexpr DWORD reads = GENERIC_READ, writes = GENERIC_WRITE, both = reads | writes;
constexpr DWORD sharing = FILE_SHARE_READ | FILE_SHARE_WRITE;
constexpr DWORD badParameter = ERROR_INVALID_PARAMETER, denied = ERROR_ACCESS_DENIED;

DWORD granularity() {
    SYSTEM_INFO info;
    GetSystemInfo(&info);
    return info.dwAllocationGranularity;
}

bool isAligned(const void* address) {
    return reinterpret_cast<DWORD_PTR>(address) % granularity() == 0;
}

TEST(Memory, OfPagesLiesAtAMultipleOfTheGranularity) {
    EXPECT_EQ(granularity(), 64u * 1024);
    for (const SIZE_T size : {1, 0}) {
        void* const block = VirtualAlloc(nullptr, size, MEM_COMMIT, PAGE_READWRITE);
        EXPECT_EQ(codeOf(block != nullptr), size == 0 ? badParameter : 0);
        EXPECT_TRUE(isAligned(block));
        EXPECT_EQ(VirtualFree(block, 0, MEM_RELEASE), size != 0);
    }
}

class Mappings : public ScratchDrives {
  protected:
    Mappings() : step_(granularity()), size_(step_ + 1000) {
        write(c("data"), std::string(step_, 'a') + std::string(1000, 'b'));
    }
    HANDLE open(const char* name, DWORD access, DWORD share = sharing) const {
        return CreateFileA(c(name).c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr);
    }
    HANDLE map(const char* name, DWORD access, DWORD protection, DWORD size = 0) const {
        const HANDLE file = open(name, access);
        const HANDLE mapping = CreateFileMappingA(file, nullptr, protection, 0, size, nullptr);
        CloseHandle(file);
        return mapping;
    }
    const DWORD step_, size_;
};

TEST_F(Mappings, AreRefusedWithTheCodeOfTheReason) {
    write(c("empty"), "");
    EXPECT_EQ(codeOf(map("empty", reads, PAGE_READONLY)), DWORD{ERROR_FILE_INVALID});
    EXPECT_EQ(codeOf(map("data", reads, PAGE_READWRITE)), denied);
    EXPECT_EQ(codeOf(map("data", writes, PAGE_READWRITE)), denied) << "reading is needed, too";
    EXPECT_EQ(codeOf(map("data", reads, PAGE_READONLY, size_ + 1)), DWORD{ERROR_NOT_ENOUGH_MEMORY});
    EXPECT_EQ(codeOf(map("data", both, 0x99)), badParameter) << "no such protection";
    EXPECT_EQ(codeOf(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 0, "")),
              badParameter)
        << "memory of no size";
}

TEST_F(Mappings, GiveViewsByOffsetAndLength) {
    write(c("even"), std::string(step_, 'a'));
    const HANDLE data = map("data", reads, PAGE_READONLY), even = map("even", reads, PAGE_READONLY);
    // The code of a view; 0 if it is there, in its place and with the bytes.
    const auto codeOfView = [](HANDLE mapping, DWORD offset, SIZE_T length, char first = 0) {
        auto* const view =
            static_cast<char*>(MapViewOfFile(mapping, FILE_MAP_READ, 0, offset, length));
        if (view == nullptr) return GetLastError();
        EXPECT_TRUE(isAligned(view));
        EXPECT_EQ(*view, first);
        return codeOf(UnmapViewOfFile(view));
    };
    EXPECT_EQ(codeOfView(data, 0, 0, 'a'), 0u);
    EXPECT_EQ(codeOfView(data, step_, 0, 'b'), 0u);
    EXPECT_EQ(codeOfView(data, step_, 1000, 'b'), 0u) << "up to the end";
    EXPECT_EQ(codeOfView(data, 4096, 1), DWORD{ERROR_MAPPED_ALIGNMENT});
    EXPECT_EQ(codeOfView(data, 0, size_ + 1), denied);
    EXPECT_EQ(codeOfView(data, 2 * step_, 0), badParameter);
    EXPECT_EQ(codeOfView(even, step_, 0), badParameter);
    EXPECT_EQ(codeOfView(INVALID_HANDLE_VALUE, 0, 0), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(codeOf(MapViewOfFile(data, FILE_MAP_WRITE, 0, 0, 0)), denied);
    for (const HANDLE mapping : {data, even}) CloseHandle(mapping);
}

TEST_F(Mappings, GiveViewsThatAreWrittenByAccessAlone) {
    const HANDLE source = open("data", reads), mapping = map("data", both, PAGE_READWRITE);
    for (const DWORD access : {FILE_MAP_READ, FILE_MAP_WRITE, FILE_MAP_COPY}) {
        void* const view = MapViewOfFile(mapping, access, 0, 0, 0);
        DWORD count = 0;
        // The system stores for the caller, and fails where the caller could not.
        EXPECT_EQ(ReadFile(source, view, 1, &count, nullptr), access != FILE_MAP_READ) << access;
        UnmapViewOfFile(view);
    }
    for (const HANDLE handle : {source, mapping}) CloseHandle(handle);
}

TEST_F(Mappings, OutliveTheHandleOfTheFileAndViewsOutliveThem) {
    const HANDLE file = open("data", both, 0);
    const HANDLE mapping = CreateFileMappingA(file, nullptr, PAGE_READWRITE, 0, size_ + 5000, "");
    EXPECT_EQ(open("data", reads), INVALID_HANDLE_VALUE) << "the file is in use";
    CloseHandle(file);
    const HANDLE another = open("data", reads);
    EXPECT_NE(another, INVALID_HANDLE_VALUE) << "a mapping keeps nobody from the file";
    auto* const view = static_cast<char*>(MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, 0));
    ASSERT_NE(view, nullptr);
    for (const HANDLE handle : {another, mapping}) CloseHandle(handle);
    view[0] = 'z';
    EXPECT_TRUE(UnmapViewOfFile(view));
    EXPECT_EQ(codeOf(UnmapViewOfFile(view)), DWORD{ERROR_INVALID_ADDRESS}) << "twice";
    EXPECT_EQ(read(c("data")).front(), 'z');
    EXPECT_EQ(Jw32FileSize(c("data").c_str()), static_cast<LONG>(size_ + 5000)) << "it has grown";
}

class Blocks : public testing::Test {
  protected:
    static std::string name(const char* end = "block") {
        return "jw32-test-" + std::to_string(GetCurrentProcessId()) + "-" + end;
    }
    // A block of the name; the code tells whether it is new.
    HANDLE create(const std::string& name, DWORD size = 5000) {
        SetLastError(4711);
        const HANDLE handle = CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                                 size, name.c_str());
        code_ = GetLastError();
        return handle;
    }
    static DWORD openCode(const std::string& name) {
        const HANDLE handle = OpenFileMappingA(FILE_MAP_WRITE, FALSE, name.c_str());
        const DWORD code = codeOf(handle != nullptr);
        if (handle != nullptr) CloseHandle(handle);
        return code;
    }
    DWORD code_ = 0;
};

TEST_F(Blocks, LiveAsLongAsAnyHandleWhateverViewsAreLeft) {
    EXPECT_EQ(openCode(name()), DWORD{ERROR_FILE_NOT_FOUND});
    const HANDLE first = create(name());
    EXPECT_EQ(code_, DWORD{ERROR_SUCCESS});
    const HANDLE second = create(name(), 100);
    EXPECT_EQ(code_, DWORD{ERROR_ALREADY_EXISTS});
    auto* const one = static_cast<char*>(MapViewOfFile(first, FILE_MAP_WRITE, 0, 0, 0));
    auto* const other = static_cast<char*>(MapViewOfFile(second, FILE_MAP_WRITE, 0, 0, 0));
    ASSERT_TRUE(one != nullptr && other != nullptr && one != other);
    EXPECT_EQ(std::count(one, one + 5000, '\0'), 5000);
    CloseHandle(first);
    EXPECT_EQ(openCode(name()), 0u) << "a handle is open";
    CloseHandle(second);
    EXPECT_EQ(openCode(name()), DWORD{ERROR_FILE_NOT_FOUND}) << "no handle is open";
    one[4999] = 'x';
    EXPECT_EQ(other[4999], 'x') << "the views keep the bytes, of the block that stood";
    for (const char* const view : {one, other}) UnmapViewOfFile(view);
}

TEST_F(Blocks, GoByTheRulesOfNames) {
    const HANDLE plain = create(name()), global = create("Global\\" + name());
    EXPECT_EQ(code_, DWORD{ERROR_SUCCESS}) << "the two name spaces are apart";
    EXPECT_EQ(openCode("Local\\" + name()), 0u) << "the session's names, written out";
    EXPECT_EQ(openCode("Global\\" + name()), 0u);
    for (const HANDLE handle : {plain, global}) CloseHandle(handle);
    for (const auto& odd : {name("a/b%.."), name("\xC3\xA4") + std::string(200, 'n')}) {
        const HANDLE handle = create(odd);
        EXPECT_EQ(openCode(odd), 0u) << odd;
        EXPECT_NE(openCode(odd + "x"), 0u) << odd;
        CloseHandle(handle);
    }
    EXPECT_EQ(codeOf(create("no\\such\\space")), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(codeOf(create(std::string(300, 'n'))), DWORD{ERROR_FILENAME_EXCED_RANGE});
    EXPECT_EQ(codeOf(OpenFileMappingA(FILE_MAP_WRITE, FALSE, nullptr)), badParameter);
    const HANDLE nameless = create(""), another = create("");
    EXPECT_EQ(code_, DWORD{ERROR_SUCCESS}) << "blocks without a name are two";
    EXPECT_NE(openCode(""), 0u);
    for (const HANDLE handle : {nameless, another}) CloseHandle(handle);
}

}  // namespace
