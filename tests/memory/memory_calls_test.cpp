// Which platform calls the objects of memory make, and what they settle for when calls fail.
#include <jw32/memory.h>
#include <jw32/shared_memory.h>

#include <filesystem>

#include "memory/mapped_file.h"
#include "support/calls.h"
#include "support/failure_sweep.h"

namespace {

TEST(MemoryCalls, GoByTheThreshold) {
    for (const auto& [size, threshold, calls] :
         {std::tuple(100, 99, "VirtualAlloc(null, 100, 4096, 4) VirtualFree(pointer, 0, 32768) "),
          {0x80001, 0, "VirtualAlloc(null, 524289, 4096, 4) VirtualFree(pointer, 0, 32768) "},
          {0x80000, 0,
           "GlobalAlloc(64, 524288) GlobalLock(pointer) GlobalUnlock(pointer) "
           "GlobalFree(pointer) "}}) {
        const machine::Script script;
        CJw32Memory().Open(size, threshold);
        EXPECT_EQ(callsOf(script), calls) << "by the threshold " << threshold;
    }
}

TEST(MemoryCalls, TellTheErrorBehindTheReleaseOfABlockThatCannotBeLocked) {
    machine::Script script;
    script.fail("GlobalLock", ERROR_NOT_ENOUGH_MEMORY);
    script.fail("GlobalFree", ERROR_INVALID_HANDLE);
    CJw32Memory memory;
    const auto open = [&](auto... t) { return memory.Open(10, 0, t...) != nullptr; };
    EXPECT_EQ(reported(open), Report(false, ERROR_INVALID_HANDLE));
    EXPECT_EQ(reported(open), Report(true)) << "the object is closed";
    memory.Close();
}

class MmFileCalls : public MappedFile {
  protected:
    MmFileCalls() { write(name, std::string(1000, 'x')); }
    // Makes the file longer by a hole. The root of C: is the current directory.
    void grow(std::uint64_t size) { std::filesystem::resize_file(c().substr(3) + "/data", size); }
    // The access and the length of the views that were asked for.
    static std::string views(const machine::Script& script) {
        std::string result;
        for (const auto& call : script.calls()) {
            if (call.name == "MapViewOfFile")
                result += call.arguments[1] + ":" + call.arguments[4] + " ";
        }
        return result;
    }
    const std::string name = c("data");
};

TEST_F(MmFileCalls, GoByTheModeAndEndInOrder) {
    for (const auto& [mode, access, protection, map, length] :
         {std::tuple(reading, "2147483648, 1", "2", "MapViewOfFile(pointer, 4, 0, 0, ", "0"),
          {writing, "3221225472, 0", "4", "MapViewOfFile(pointer, 2, 0, 0, ", "1000"}}) {
        const machine::Script script;
        open(mode, name);
        move({0, 5});
        file.Close();
        EXPECT_EQ(callsOf(script),
                  "CreateFileA(\"" + name + "\", " + access + ", null, 3, 128, null) " +
                      "GetFileSize(pointer, pointer) CreateFileMappingA(pointer, null, " +
                      protection + ", 0, 0, null) " + map + length + ") _strdup(\"" + name +
                      "\") UnmapViewOfFile(pointer) GetSystemInfo(pointer) " + map +
                      "5) UnmapViewOfFile(pointer) CloseHandle(pointer) CloseHandle(pointer) ");
    }
}

TEST_F(MmFileCalls, EndTheMappingBeforeTheFile) {
    open(writing, name);
    machine::Script script;
    const auto closeMapping = [](HANDLE handle) {
        EXPECT_EQ(GetFileSize(handle, nullptr), INVALID_FILE_SIZE) << "it is the file's";
        return CloseHandle(handle);
    };
    script.instead<&CloseHandle>(closeMapping, 1);
    script.fail("CloseHandle", ERROR_INVALID_HANDLE, 2);  // for the mapping
    file.Close();
    EXPECT_EQ(open(writing, name), Report(true)) << "the file's handle is open still";
}

TEST_F(MmFileCalls, SettleForTheLargestHalfThatCanBeMapped) {
    for (const auto& [mode, asked] :
         {std::pair(reading, "4:0 4:500 4:250 "), {writing, "2:1000 2:500 2:250 "}}) {
        machine::Script script;
        for (const unsigned n : {1, 2}) script.fail("MapViewOfFile", ERROR_NOT_ENOUGH_MEMORY, n);
        EXPECT_EQ(openPart(mode, name), Report(true));
        EXPECT_EQ(part, 250u);
        EXPECT_EQ(views(script), asked);
        file.Close();
    }
}

TEST_F(MmFileCalls, EndWithNothingWhenNoViewCanBeHad) {
    machine::Script script;
    script.fail("MapViewOfFile", ERROR_NOT_ENOUGH_MEMORY, machine::everyCall);
    EXPECT_EQ(open(reading, name), Report(false, ERROR_NOT_ENOUGH_MEMORY));
    EXPECT_EQ(views(script), "4:0 ") << "the whole file or nothing";
    EXPECT_EQ(openPart(reading, name), Report(false, ERROR_NOT_ENOUGH_MEMORY));
    EXPECT_EQ(part, 0u);
    EXPECT_EQ(file.Size(), 1000u) << "the size was known";
}

TEST_F(MmFileCalls, LeaveAnOpenObjectWithoutAViewWhenAMoveFindsNone) {
    open(reading, name);
    CJw32MmFile copy(file);
    machine::Script script;
    for (const unsigned n : {1, 2, 3, 4, 5}) script.fail("MapViewOfFile", ERROR_GEN_FAILURE, n);
    EXPECT_EQ(move({3, 9}), Report(false, ERROR_GEN_FAILURE));
    EXPECT_EQ(views(script), "4:9 4:4 4:2 4:1 4:0 ");
    EXPECT_EQ(place, Place(0, 0));
    EXPECT_EQ(move({0, 9}), Report(false)) << "no way back";
    EXPECT_EQ(copy.ReMap(place.first, place.second), nullptr) << "nor for a copy";
    EXPECT_EQ(open(reading, name), Report(false)) << "still open";
    file.Close();
    EXPECT_EQ(open(reading, name), Report(true));
}

TEST_F(MmFileCalls, ReachTheFirst4GiBOfALargerFile) {
    for (const std::uint64_t size : {0xFFFFFFFFull, 0x100000000ull, 0x100000064ull}) {
        file.Close();
        grow(size);
        EXPECT_EQ(open(reading, name), Report(true)) << size;
    }
    machine::Script script;
    script.fail("MapViewOfFile", ERROR_NOT_ENOUGH_MEMORY, 2);
    for (const DWORD covered : {0xFFFFFFFFu, 0x7FFFFFFFu}) {
        file.Close();
        ASSERT_EQ(openPart(writing, name), Report(true));
        EXPECT_EQ(part, covered) << "no more than the view covers";
    }
    EXPECT_EQ(views(script), "2:0 2:0 2:2147483647 ");
    DWORD high = 0;
    EXPECT_EQ(file.Size(&high), 100u);
    EXPECT_EQ(high, 1u);
    EXPECT_EQ(move({0xFFFF0009, 0xFFFFFFFF}), Report(true));
    EXPECT_EQ(place, Place(0xFFFF0000, 0x10064)) << "up to the end";
}

class SharedMemoryCalls : public testing::Test {
  protected:
    CJw32SharedMemory maker, other;
    unsigned char* const bytes = static_cast<unsigned char*>(maker.Create("jw32-made", 3));
    machine::Script script;
};

TEST_F(SharedMemoryCalls, AskForWriteAccessAndEndInOrder) {
    CJw32SharedMemory().Create("jw32-new", 300);
    CJw32SharedMemory().Open("jw32-made");
    const std::string use =
        "MapViewOfFile(pointer, 2, 0, 0, 0) UnmapViewOfFile(pointer) CloseHandle(pointer) ";
    EXPECT_EQ(callsOf(script),
              R"(OpenFileMappingA(2, 0, "jw32-new") CreateFileMappingA(pointer, null, 4, 0, 300, )"
              R"("jw32-new") GetLastError() )" +
                  use + R"(OpenFileMappingA(2, 0, "jw32-made") )" + use);
}

TEST_F(SharedMemoryCalls, FillTheBlockWithZeros) {
    std::fill(bytes, bytes + 3, static_cast<unsigned char>(7));
    const HANDLE mapping = OpenFileMappingA(FILE_MAP_WRITE, FALSE, "jw32-made");
    script.answer<&CreateFileMappingA>(mapping);
    EXPECT_NE(other.Create("jw32-new", 2), nullptr);
    EXPECT_EQ(std::string(bytes, bytes + 3), std::string("\0\0\7", 3)) << "the size asked for";
}

TEST_F(SharedMemoryCalls, TakeABlockThatCameBetweenForOneThatStood) {
    script.answer<&OpenFileMappingA>(nullptr, 1);
    const auto create = [this](auto... t) { return other.Create("jw32-made", 1 << 20, t...); };
    EXPECT_EQ(reported(create), Report(nullptr));
    EXPECT_EQ(other.Size(), 0u);
}

TEST_F(MmFileCalls, FailOneByOneAndLeaveNothing) {
    CJw32SharedMemory maker;
    maker.Create("jw32-made", 9);
    const char *const path = name.c_str(), *const block = "jw32-new";
    const auto heap = [](auto& o, auto& t) { return o.Open(9, 0, &t.code, t.text, t.size); };
    const auto pages = [](auto& o, auto& t) { return o.Open(9, 1, &t.code, t.text, t.size); };
    const auto make = [&](auto& o, auto& t) { return o.Create(block, 9, &t.code, t.text, t.size); };
    const auto join = [](auto& o, auto& t) { return o.Open("jw32-made", &t.code, t.text, t.size); };
    const auto size = [&](auto& o, auto& t) {
        return o.Open(writing, path, part, &t.code, t.text, t.size);
    };
    const auto remap = [&](auto& o, auto& t) {
        place = {0, 100};
        const bool opened = o.Open(reading, path, &t.code, t.text, t.size) != nullptr;
        return opened ? o.ReMap(place.first, place.second, &t.code, t.text, t.size) : nullptr;
    };
    const std::vector<std::string> moves{"_strdup", "UnmapViewOfFile", "MapViewOfFile#2"};
    sweepFailures(openingOf<CJw32Memory>("memory of the heap", heap));
    sweepFailures(openingOf<CJw32Memory>("memory of pages", pages));
    sweepFailures(openingOf<CJw32SharedMemory>("making a block", make, {"OpenFileMappingA"}));
    sweepFailures(openingOf<CJw32SharedMemory>("joining a block", join));
    sweepFailures(
        openingOf<CJw32MmFile>("a file and its size", size, {"_strdup", "MapViewOfFile"}));
    sweepFailures(openingOf<CJw32MmFile>("a file and a move of its view", remap, moves));
}

}  // namespace
