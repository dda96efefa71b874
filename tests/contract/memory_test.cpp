// What callers expect of the global heap, of pages of memory, and of mappings and their views.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "support/scratch_drives.h"

namespace {

bool isZero(const void* block, std::size_t size) {
    const auto* const bytes = static_cast<const unsigned char*>(block);
    return std::all_of(bytes, bytes + size, [](unsigned char byte) { return byte == 0; });
}

DWORD granularity() {
    SYSTEM_INFO info;
    GetSystemInfo(&info);
    return info.dwAllocationGranularity;
}

bool isAligned(const void* address) {
    return reinterpret_cast<DWORD_PTR>(address) % granularity() == 0;
}

TEST(Memory, OfTheHeapIsFixed) {
    const HGLOBAL handle = GlobalAlloc(GMEM_ZEROINIT, 100);
    EXPECT_EQ(GlobalLock(handle), handle);
    GlobalUnlock(handle);
    EXPECT_EQ(GlobalFree(handle), nullptr);
}

TEST(Memory, OfPagesLiesAtAMultipleOfTheGranularityAndIsTakenBackWhole) {
    EXPECT_EQ(granularity(), 64u * 1024);
    EXPECT_EQ(VirtualAlloc(nullptr, 0, MEM_COMMIT, PAGE_READWRITE), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
    void* const first = VirtualAlloc(nullptr, 1, MEM_COMMIT, PAGE_READWRITE);
    void* const second = VirtualAlloc(nullptr, 1, MEM_COMMIT, PAGE_READWRITE);
    EXPECT_TRUE(first != second && isAligned(first) && isAligned(second));
    EXPECT_FALSE(VirtualFree(first, 1, MEM_RELEASE)) << "a part of a block";
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
    for (void* const block : {first, second}) EXPECT_TRUE(VirtualFree(block, 0, MEM_RELEASE));
    EXPECT_FALSE(VirtualFree(first, 0, MEM_RELEASE)) << "twice";
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
}

class Mappings : public ScratchDrives {
  protected:
    Mappings() : size_(granularity() + 1000) {
        std::string content(size_, 'a');
        content[granularity()] = 'b';
        write(file(), content);
        write(c("empty"), "");
    }

    std::string file() const { return c("data"); }
    HANDLE open(DWORD access, const std::string& name) const {
        return CreateFileA(name.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                           OPEN_EXISTING, 0, nullptr);
    }
    HANDLE map(DWORD access, DWORD protection, DWORD size = 0) const {
        return map(file(), access, protection, size);
    }
    HANDLE map(const std::string& name, DWORD access, DWORD protection, DWORD size = 0) const {
        const HANDLE opened = open(access, name);
        const HANDLE mapping = CreateFileMappingA(opened, nullptr, protection, 0, size, nullptr);
        const DWORD code = GetLastError();
        CloseHandle(opened);
        SetLastError(code);
        return mapping;
    }

    const DWORD size_;
};

constexpr DWORD both = GENERIC_READ | GENERIC_WRITE;

TEST_F(Mappings, AreRefusedWithTheCodeOfTheReason) {
    const struct {
        const char* what;
        std::string name;
        DWORD access, protection, size, code;
    } rows[] = {
        {"an empty file", c("empty"), GENERIC_READ, PAGE_READONLY, 0, ERROR_FILE_INVALID},
        {"writing to a file open for reading", file(), GENERIC_READ, PAGE_READWRITE, 0,
         ERROR_ACCESS_DENIED},
        {"a file open for writing alone", file(), GENERIC_WRITE, PAGE_READWRITE, 0,
         ERROR_ACCESS_DENIED},
        {"more than a file that is read holds", file(), GENERIC_READ, PAGE_READONLY, size_ + 1,
         ERROR_NOT_ENOUGH_MEMORY},
        {"no such protection", file(), both, 0x99, 0, ERROR_INVALID_PARAMETER},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(map(row.name, row.access, row.protection, row.size), nullptr) << row.what;
        EXPECT_EQ(GetLastError(), row.code) << row.what;
    }
    EXPECT_EQ(CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 0, nullptr),
              nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER}) << "memory of no size";
}

TEST_F(Mappings, GiveViewsByAccessOffsetAndLength) {
    const DWORD step = granularity();
    write(c("even"), std::string(step, 'a'));
    const HANDLE reads = map(GENERIC_READ, PAGE_READONLY), writes = map(both, PAGE_READWRITE),
                 even = map(c("even"), GENERIC_READ, PAGE_READONLY);
    const struct {
        const char* what;
        HANDLE mapping;
        DWORD access, offset, length, code;
        char first;
    } rows[] = {
        {"the whole file", reads, FILE_MAP_READ, 0, 0, 0, 'a'},
        {"the whole file to write", writes, FILE_MAP_WRITE, 0, size_, 0, 'a'},
        {"the end of the file", reads, FILE_MAP_READ, step, 0, 0, 'b'},
        {"a piece of the end", writes, FILE_MAP_READ, step, 10, 0, 'b'},
        {"a private copy", reads, FILE_MAP_COPY, 0, 0, 0, 'a'},
        {"writing where reading is allowed", reads, FILE_MAP_WRITE, 0, 0, ERROR_ACCESS_DENIED, 0},
        {"an offset off the granularity", reads, FILE_MAP_READ, 4096, 1, ERROR_MAPPED_ALIGNMENT, 0},
        {"more than there is", reads, FILE_MAP_READ, 0, size_ + 1, ERROR_ACCESS_DENIED, 0},
        {"an offset behind the end", reads, FILE_MAP_READ, 2 * step, 0, ERROR_INVALID_PARAMETER, 0},
        {"all behind the end", even, FILE_MAP_READ, step, 0, ERROR_INVALID_PARAMETER, 0},
        {"no mapping", INVALID_HANDLE_VALUE, FILE_MAP_READ, 0, 0, ERROR_INVALID_HANDLE, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        void* const view = MapViewOfFile(row.mapping, row.access, 0, row.offset, row.length);
        EXPECT_EQ(view == nullptr, row.code != 0);
        if (view == nullptr) {
            EXPECT_EQ(GetLastError(), row.code);
            continue;
        }
        EXPECT_TRUE(isAligned(view));
        EXPECT_EQ(*static_cast<char*>(view), row.first);
        EXPECT_TRUE(UnmapViewOfFile(view));
    }
    for (const HANDLE mapping : {reads, writes, even}) CloseHandle(mapping);
}

TEST_F(Mappings, GiveViewsThatAreWrittenByAccessAlone) {
    const HANDLE source = open(GENERIC_READ, file()), mapping = map(both, PAGE_READWRITE);
    const struct {
        DWORD access;
        BOOL writes;
    } rows[] = {{FILE_MAP_READ, FALSE}, {FILE_MAP_WRITE, TRUE}, {FILE_MAP_COPY, TRUE}};
    for (const auto& row : rows) {
        void* const view = MapViewOfFile(mapping, row.access, 0, 0, 0);
        DWORD count = 0;
        // The system stores for the caller, and fails where the caller could not.
        EXPECT_EQ(ReadFile(source, view, 1, &count, nullptr), row.writes) << row.access;
        UnmapViewOfFile(view);
    }
    for (const HANDLE handle : {source, mapping}) CloseHandle(handle);
}

TEST_F(Mappings, OutliveTheHandleOfTheFileAndViewsOutliveThem) {
    const HANDLE mapping = map(both, PAGE_READWRITE, size_ + 5000);
    auto* const view = static_cast<char*>(MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, 0));
    ASSERT_NE(view, nullptr);
    CloseHandle(mapping);
    view[0] = 'z';
    EXPECT_TRUE(UnmapViewOfFile(view));
    EXPECT_FALSE(UnmapViewOfFile(view)) << "twice";
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_ADDRESS});
    EXPECT_EQ(read(file()).front(), 'z');
    EXPECT_EQ(Jw32FileSize(file().c_str()), static_cast<LONG>(size_ + 5000)) << "it has grown";
}

TEST_F(Mappings, KeepNobodyFromTheFileOnceItsHandleIsClosed) {
    const HANDLE alone = CreateFileA(file().c_str(), both, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    const HANDLE mapping = CreateFileMappingA(alone, nullptr, PAGE_READWRITE, 0, 0, nullptr);
    EXPECT_EQ(open(GENERIC_READ, file()), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SHARING_VIOLATION});
    CloseHandle(alone);
    const HANDLE another = open(GENERIC_READ, file());
    EXPECT_NE(another, INVALID_HANDLE_VALUE) << GetLastError();
    CloseHandle(another);
    CloseHandle(mapping);
}

// Named blocks.

class Blocks : public testing::Test {
  protected:
    static std::string name(const char* end = "block") {
        return "jw32-test-" + std::to_string(GetCurrentProcessId()) + "-" + end;
    }
    static HANDLE create(const std::string& name, DWORD size = 5000) {
        return CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, size,
                                  name.c_str());
    }
    static HANDLE open(const std::string& name) {
        return OpenFileMappingA(FILE_MAP_WRITE, FALSE, name.c_str());
    }
    static bool exists(const std::string& name) {
        const HANDLE handle = open(name);
        if (handle != nullptr) CloseHandle(handle);
        return handle != nullptr;
    }
};

TEST_F(Blocks, LiveAsLongAsAnyHandleWhateverViewsAreLeft) {
    EXPECT_FALSE(exists(name()));
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
    const HANDLE first = create(name());
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SUCCESS});
    const HANDLE second = create(name(), 100);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_ALREADY_EXISTS});
    auto* const one = static_cast<char*>(MapViewOfFile(first, FILE_MAP_WRITE, 0, 0, 0));
    auto* const other = static_cast<char*>(MapViewOfFile(second, FILE_MAP_WRITE, 0, 0, 0));
    ASSERT_TRUE(one != nullptr && other != nullptr && one != other);
    EXPECT_TRUE(isZero(one, 5000));
    CloseHandle(first);
    EXPECT_TRUE(exists(name())) << "a handle is open";
    CloseHandle(second);
    EXPECT_FALSE(exists(name())) << "no handle is open";
    one[4999] = 'x';
    EXPECT_EQ(other[4999], 'x') << "the views keep the bytes, of the block that stood";
    for (const char* const view : {one, other}) UnmapViewOfFile(view);
}

TEST_F(Blocks, GoByTheRulesOfNames) {
    const HANDLE plain = create(name()), global = create("Global\\" + name());
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SUCCESS}) << "the two name spaces are apart";
    EXPECT_TRUE(exists("Local\\" + name())) << "the session's names, written out";
    EXPECT_TRUE(exists("Global\\" + name()));
    for (const HANDLE handle : {plain, global}) CloseHandle(handle);

    const std::string odd[] = {name("a/b%.."), name("\xC3\xA4") + std::string(200, 'n')};
    for (const auto& special : odd) {
        const HANDLE handle = create(special);
        EXPECT_TRUE(exists(special)) << special;
        EXPECT_FALSE(exists(special + "x")) << special;
        CloseHandle(handle);
    }
    EXPECT_EQ(create("no\\such\\space"), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(create(std::string(300, 'n')), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILENAME_EXCED_RANGE});
    EXPECT_EQ(OpenFileMappingA(FILE_MAP_WRITE, FALSE, nullptr), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
}

TEST_F(Blocks, WithoutANameAreTheHoldersAlone) {
    const HANDLE first = create(""), second = create("");
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SUCCESS});
    EXPECT_FALSE(exists(""));
    for (const HANDLE handle : {first, second}) CloseHandle(handle);
}

}  // namespace
