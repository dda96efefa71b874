// Which platform calls the objects of memory make, and what they settle for when calls fail.
#include <gtest/gtest.h>
#include <jw32/memory.h>
#include <jw32/mm_file.h>
#include <jw32/shared_memory.h>

#include "machine/machine.h"
#include "machine/testing.h"
#include "support/failure_sweep.h"
#include "support/scratch_drives.h"

namespace {

using Texts = std::vector<std::string>;

Texts textsOf(const machine::Script& script) {
    Texts result;
    for (const auto& call : script.calls()) result.push_back(call.text());
    return result;
}

TEST(MemoryCalls, GoByTheThreshold) {
    const Texts heap{"GlobalAlloc(64, 100)", "GlobalLock(pointer)", "GlobalUnlock(pointer)",
                     "GlobalFree(pointer)"};
    const Texts pages{"VirtualAlloc(null, 100, 4096, 4)", "VirtualFree(pointer, 0, 32768)"};
    const struct {
        unsigned int threshold;
        Texts calls;
    } rows[] = {{0, heap}, {100, heap}, {99, pages}};
    for (const auto& row : rows) {
        const machine::Script script;
        CJw32Memory memory;
        memory.Open(100, row.threshold);
        memory.Close();
        EXPECT_EQ(textsOf(script), row.calls) << row.threshold;
    }
    const machine::Script script;
    CJw32Memory().Open(0x80000);
    CJw32Memory().Open(0x80001);
    EXPECT_EQ(script.count("GlobalAlloc"), 1u);
    EXPECT_EQ(script.count("VirtualAlloc"), 1u);
}

TEST(MemoryCalls, TellTheErrorBehindTheReleaseOfABlockThatCannotBeLocked) {
    CJw32Memory memory;
    {
        machine::Script script;
        script.fail("GlobalLock", ERROR_NOT_ENOUGH_MEMORY);
        script.fail("GlobalFree", ERROR_INVALID_HANDLE);
        DWORD code = 0;
        EXPECT_EQ(memory.Open(10, 0, &code), nullptr);
        EXPECT_EQ(code, DWORD{ERROR_INVALID_HANDLE});
    }
    EXPECT_EQ(memory.Address(), nullptr);
    EXPECT_NE(memory.Open(10), nullptr) << "the object is closed";
    memory.Close();
    machine::reclaimAll();
}

class MmFileCalls : public ScratchDrives {
  protected:
    MmFileCalls() { write(file(), std::string(1000, 'x')); }
    std::string file() const { return c("data"); }
    // Makes the file so many bytes long, nearly all of them a hole.
    void grow(std::uint64_t size) const {
        void* const handle =
            Jw32FileOpen(file().c_str(), GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING, 0, 0);
        auto high = static_cast<LONG>(size >> 32);
        SetFilePointer(handle, static_cast<LONG>(size), &high, FILE_BEGIN);
        EXPECT_TRUE(SetEndOfFile(handle));
        CloseHandle(handle);
    }
    // The lengths of the views that were asked for.
    static Texts lengths(const machine::Script& script) {
        Texts result;
        for (const auto& call : script.calls()) {
            if (call.name == "MapViewOfFile") result.push_back(call.arguments.back());
        }
        return result;
    }
};

TEST_F(MmFileCalls, GoByTheModeAndEndInOrder) {
    const struct {
        CJw32MmFile::eOpenmode mode;
        const char *open, *protection, *view, *length;
    } rows[] = {{CJw32MmFile::eRead, "2147483648, 1, null, 3, 128, null", "2", "4", "0"},
                {CJw32MmFile::eReadWrite, "3221225472, 0, null, 3, 128, null", "4", "2", "1000"}};
    for (const auto& row : rows) {
        machine::Script script;
        CJw32MmFile mapped;
        mapped.Open(row.mode, file().c_str());
        DWORD offset = 0, length = 5;
        mapped.ReMap(offset, length);
        mapped.Close();
        const auto view = "MapViewOfFile(pointer, " + std::string(row.view) + ", 0, 0, ";
        const Texts expected{
            "CreateFileA(\"" + file() + "\", " + row.open + ")",
            "GetFileSize(pointer, pointer)",
            "CreateFileMappingA(pointer, null, " + std::string(row.protection) + ", 0, 0, null)",
            view + row.length + ")",
            "_strdup(\"" + file() + "\")",
            "UnmapViewOfFile(pointer)",
            "GetSystemInfo(pointer)",
            view + "5)",
            "UnmapViewOfFile(pointer)",
            "CloseHandle(pointer)",
            "CloseHandle(pointer)"};
        EXPECT_EQ(textsOf(script), expected);
    }
}

TEST_F(MmFileCalls, EndTheMappingBeforeTheFile) {
    CJw32MmFile mapped, another;
    ASSERT_NE(mapped.Open(CJw32MmFile::eReadWrite, file().c_str()), nullptr);
    machine::Script script;
    script.fail("CloseHandle", ERROR_INVALID_HANDLE, 1);
    mapped.Close();
    EXPECT_NE(another.Open(CJw32MmFile::eReadWrite, file().c_str()), nullptr)
        << "the first handle was the file's";
    another.Close();
    machine::reclaimAll();
}

TEST_F(MmFileCalls, SettleForTheLargestHalfThatCanBeMapped) {
    for (const auto mode : {CJw32MmFile::eRead, CJw32MmFile::eReadWrite}) {
        machine::Script script;
        script.fail("MapViewOfFile", ERROR_NOT_ENOUGH_MEMORY, 1);
        script.fail("MapViewOfFile", ERROR_NOT_ENOUGH_MEMORY, 2);
        CJw32MmFile mapped;
        DWORD size = 0, code = 0;
        ASSERT_NE(mapped.Open(mode, file().c_str(), size, &code), nullptr);
        EXPECT_EQ(code, 0u);
        EXPECT_EQ(size, 250u);
        const char* const whole = mode == CJw32MmFile::eRead ? "0" : "1000";
        EXPECT_EQ(lengths(script), (Texts{whole, "500", "250"}));
    }
}

TEST_F(MmFileCalls, EndWithNothingWhenNoViewCanBeHad) {
    machine::Script script;
    script.fail("MapViewOfFile", ERROR_NOT_ENOUGH_MEMORY, 0);
    CJw32MmFile mapped;
    DWORD size = 9;
    Triple triple;
    EXPECT_EQ(mapped.Open(CJw32MmFile::eRead, file().c_str(), size, &triple.code, triple.text,
                          triple.size),
              nullptr);
    EXPECT_TRUE(triple.tells(ERROR_NOT_ENOUGH_MEMORY)) << triple;
    EXPECT_EQ(size, 0u);
    EXPECT_EQ(lengths(script),
              (Texts{"0", "500", "250", "125", "62", "31", "15", "7", "3", "1", "0"}));
    EXPECT_EQ(mapped.Size(), 1000u) << "the size was known";
    EXPECT_EQ(mapped.Open(CJw32MmFile::eRead, file().c_str()), nullptr);
    EXPECT_EQ(lengths(script).size(), 12u) << "without the size, the whole file or nothing";
}

TEST_F(MmFileCalls, LeaveAnOpenObjectWithoutAViewWhenAMoveFindsNone) {
    CJw32MmFile mapped;
    ASSERT_NE(mapped.Open(CJw32MmFile::eRead, file().c_str()), nullptr);
    CJw32MmFile copy(mapped);
    DWORD offset = 3, length = 9;
    {
        machine::Script script;
        script.fail("MapViewOfFile", ERROR_NOT_ENOUGH_MEMORY, 0);
        Triple triple;
        EXPECT_EQ(mapped.ReMap(offset, length, &triple.code, triple.text, triple.size), nullptr);
        EXPECT_TRUE(triple.tells(ERROR_NOT_ENOUGH_MEMORY)) << triple;
        EXPECT_EQ(lengths(script), (Texts{"9", "4", "2", "1", "0"}));
    }
    EXPECT_EQ(offset, 0u);
    EXPECT_EQ(length, 0u);
    EXPECT_EQ(machine::inUse().views, 0u);
    EXPECT_EQ(mapped.ReMap(offset, length), nullptr) << "no way back";
    EXPECT_EQ(copy.ReMap(offset, length), nullptr) << "nor for a copy";
    EXPECT_EQ(mapped.Open(CJw32MmFile::eRead, file().c_str()), nullptr) << "still open";
    mapped.Close();
    EXPECT_NE(mapped.Open(CJw32MmFile::eRead, file().c_str()), nullptr);
}

TEST_F(MmFileCalls, ReachTheFirst4GiBOfALargerFile) {
    constexpr std::uint64_t size = (std::uint64_t{1} << 32) + 100;
    grow(size);
    CJw32MmFile mapped;
    DWORD covered = 0, sizeHigh = 0;
    ASSERT_NE(mapped.Open(CJw32MmFile::eReadWrite, file().c_str(), covered), nullptr);
    EXPECT_EQ(covered, 0xFFFFFFFFu) << "no more than the view covers";
    EXPECT_EQ(mapped.Size(&sizeHigh), 100u);
    EXPECT_EQ(sizeHigh, 1u);
    const DWORD last = 0xFFFF0000;
    DWORD offset = last + 9, length = 0xFFFFFFFF;
    ASSERT_NE(mapped.ReMap(offset, length), nullptr);
    EXPECT_EQ(offset, last);
    EXPECT_EQ(length, static_cast<DWORD>(size - last)) << "up to the end";
    mapped.Close();

    machine::Script script;
    script.fail("MapViewOfFile", ERROR_NOT_ENOUGH_MEMORY, 1);
    ASSERT_NE(mapped.Open(CJw32MmFile::eReadWrite, file().c_str(), covered), nullptr);
    EXPECT_EQ(covered, 0x7FFFFFFFu);
    EXPECT_EQ(lengths(script), (Texts{"0", "2147483647"}));
}

TEST_F(MmFileCalls, TakeNoSizeForAnEmptyFileOrAFailure) {
    CJw32MmFile mapped;
    grow(0xFFFFFFFF);
    ASSERT_NE(mapped.Open(CJw32MmFile::eRead, file().c_str()), nullptr);
    mapped.Close();
    grow(std::uint64_t{1} << 32);
    ASSERT_NE(mapped.Open(CJw32MmFile::eReadWrite, file().c_str()), nullptr);
    DWORD offset = 0xFFFFFFFF, length = 0xFFFFFFFF;
    ASSERT_NE(mapped.ReMap(offset, length), nullptr) << "the last byte";
    EXPECT_EQ(length, 0x10000u);
}

TEST(SharedMemoryCalls, AskForWriteAccessAndEndInOrder) {
    machine::Script script;
    CJw32SharedMemory maker;
    ASSERT_NE(maker.Create("jw32-calls", 300), nullptr);
    CJw32SharedMemory().Open("jw32-calls");
    const char* const view = "MapViewOfFile(pointer, 2, 0, 0, 0)";
    const Texts expected{"OpenFileMappingA(2, 0, \"jw32-calls\")",
                         "CreateFileMappingA(pointer, null, 4, 0, 300, \"jw32-calls\")",
                         "GetLastError()",
                         view,
                         "OpenFileMappingA(2, 0, \"jw32-calls\")",
                         view,
                         "UnmapViewOfFile(pointer)",
                         "CloseHandle(pointer)"};
    EXPECT_EQ(textsOf(script), expected);
}

TEST(SharedMemoryCalls, FillTheBlockWithZeros) {
    CJw32SharedMemory used, memory;
    auto* const bytes = static_cast<unsigned char*>(used.Create("jw32-used", 3));
    ASSERT_NE(bytes, nullptr);
    std::fill(bytes, bytes + 3, static_cast<unsigned char>(7));
    const HANDLE mapping = OpenFileMappingA(FILE_MAP_WRITE, FALSE, "jw32-used");
    machine::Script script;
    script.answer("CreateFileMappingA", reinterpret_cast<std::uintptr_t>(mapping));
    EXPECT_NE(memory.Create("jw32-zeros", 2), nullptr);
    EXPECT_EQ(std::string(bytes, bytes + 3), std::string("\0\0\7", 3)) << "the size asked for";
}

TEST(SharedMemoryCalls, TakeABlockThatCameBetweenForOneThatStood) {
    CJw32SharedMemory faster, slower;
    auto* const bytes = static_cast<unsigned char*>(faster.Create("jw32-race", 10));
    ASSERT_NE(bytes, nullptr);
    bytes[0] = 7;
    machine::Script script;
    script.answer("OpenFileMappingA", 0, 1);
    Triple triple;
    EXPECT_EQ(slower.Create("jw32-race", 1 << 20, &triple.code, triple.text, triple.size), nullptr);
    EXPECT_TRUE(triple.isClear()) << triple;
    EXPECT_EQ(slower.Size(), 0u);
    EXPECT_EQ(bytes[0], 7);
}

TEST_F(MmFileCalls, FailOneByOneAndLeaveNothing) {
    const auto moving = [this] {
        auto mapped = std::make_shared<CJw32MmFile>();
        mapped->Open(CJw32MmFile::eRead, file().c_str());
        return [mapped](Triple& t) {
            DWORD offset = 0, length = 100;
            return Outcome{mapped->ReMap(offset, length, &t.code, t.text, t.size) == nullptr};
        };
    };
    const auto joining = [] {
        auto maker = std::make_shared<CJw32SharedMemory>();
        maker->Create("jw32-sweep", 10);
        return [maker](Triple& t) {
            auto memory = std::make_shared<CJw32SharedMemory>();
            const bool failed = memory->Open("jw32-sweep", &t.code, t.text, t.size) == nullptr;
            return Outcome{failed, memory};
        };
    };
    const Swept swept[] = {
        openingOf<CJw32Memory>(
            "CJw32Memory::Open on the heap",
            [](auto& memory, Triple& t) { return memory.Open(9, 0, &t.code, t.text, t.size); }),
        openingOf<CJw32Memory>(
            "CJw32Memory::Open of pages",
            [](auto& memory, Triple& t) { return memory.Open(9, 1, &t.code, t.text, t.size); }),
        openingOf<CJw32MmFile>("CJw32MmFile::Open",
                               [this](auto& mapped, Triple& t) {
                                   return mapped.Open(CJw32MmFile::eRead, file().c_str(), &t.code,
                                                      t.text, t.size);
                               },
                               {"_strdup"}),
        openingOf<CJw32MmFile>("CJw32MmFile::Open with the size",
                               [this](auto& mapped, Triple& t) {
                                   DWORD size = 0;
                                   return mapped.Open(CJw32MmFile::eReadWrite, file().c_str(), size,
                                                      &t.code, t.text, t.size);
                               },
                               {"_strdup", "MapViewOfFile"}),
        {"CJw32MmFile::ReMap", moving, {"UnmapViewOfFile", "MapViewOfFile"}},
        openingOf<CJw32SharedMemory>("CJw32SharedMemory::Create",
                                     [](auto& memory, Triple& t) {
                                         return memory.Create("jw32-sweep", 10, &t.code, t.text,
                                                              t.size);
                                     },
                                     {"OpenFileMappingA"}),
        {"CJw32SharedMemory::Open", joining},
    };
    for (const auto& operation : swept) sweepFailures(operation);
}

}  // namespace
