// Every allocation of the platform fails once: what the standard library throws goes no further.
#include <gtest/gtest.h>
#include <jw32/directories.h>
#include <jw32/files.h>
#include <jw32/folders.h>
#include <jw32/paths.h>
#include <jw32/shared_memory.h>
#include <jw32/temporary_files.h>

#include <cstdlib>
#include <new>

#include "core/testing.h"
#include "support/scratch_drives.h"
#include "support/wide.h"

namespace {

// How many allocations of this thread succeed before one fails; below 0: all do.
thread_local long allocationsLeft = -1;

}  // namespace

void* operator new(std::size_t size) {
    if (allocationsLeft >= 0 && allocationsLeft-- == 0) throw std::bad_alloc();
    if (void* const block = std::malloc(size)) return block;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

namespace {

class NoMemory : public ScratchDrives {
  protected:
    // Runs the operation with its first allocation failing, its second, and so on to its last.
    template <class Operation>
    static void sweep(const char* name, Operation operation) {
        SCOPED_TRACE(name);
        operation();
        const auto before = machine::inUse();
        long failing = 0;
        for (bool failed = true; failed; ++failing) {
            bool thrown = false;
            allocationsLeft = failing;
            try {
                operation();
            } catch (const std::exception&) {
                thrown = true;
            }
            failed = allocationsLeft < 0;
            allocationsLeft = -1;
            EXPECT_FALSE(thrown) << "at allocation " << failing;
            EXPECT_EQ(machine::inUse(), before) << "leaks at allocation " << failing;
        }
        EXPECT_GT(failing, 1) << "allocates nothing";
    }
};

TEST_F(NoMemory, IsReportedAndNeverThrown) {
    const auto file = c("a file of some length"), other = d("another file of some length");
    const auto folder = c("a folder of some length\\and another"), pattern = c("*");
    const Wide wideFile(file), wideFolder(folder), wideOther(other), widePattern(pattern);
    const auto fileA = file.c_str(), otherA = other.c_str(), folderA = folder.c_str();
    const WideText japanese(40, 0x3042);
    const std::string blockName(100, 'b'), latin(100, '\xE4');
    char text[MAX_PATH];
    ULARGE_INTEGER bytes;
    wchar_t wideText[MAX_PATH];
    sweep("CreateFile",
          [&] { CloseHandle(CreateFileA(fileA, GENERIC_ALL, 7, nullptr, 2, 0, {})); });
    sweep("CopyFile", [&] { CopyFileW(wideFile, wideOther, FALSE); });
    sweep("MoveFile", [&] { MoveFileW(wideFile, wideOther), MoveFileW(wideOther, wideFile); });
    sweep("Jw32FileMove", [&] { Jw32FileMove(fileA, otherA), Jw32FileMove(otherA, fileA); });
    sweep("SetFileAttributes", [&] { SetFileAttributesA(fileA, GetFileAttributesA(fileA)); });
    sweep("FindFirstFile", [&] {
        WIN32_FIND_DATAW record;
        const HANDLE search = FindFirstFileW(widePattern, &record);
        while (FindNextFileW(search, &record)) continue;
        FindClose(search);
    });
    sweep("DeleteFile", [&] { DeleteFileW(wideFile), DeleteFileW(wideOther); });
    sweep("Jw32DirectoryCreate", [&] { Jw32DirectoryCreate(folderA); });
    sweep("SetCurrentDirectory",
          [&] { SetCurrentDirectoryA(folderA), SetCurrentDirectoryA("C:\\"); });
    sweep("GetCurrentDirectory", [&] { GetCurrentDirectoryA(MAX_PATH, text); });
    sweep("GetFullPathName", [&] { GetFullPathNameA("a\\..\\b", MAX_PATH, text, nullptr); });
    sweep("GetFullPathNameW", [&] { GetFullPathNameW(wideFile, MAX_PATH, wideText, nullptr); });
    sweep("GetShortPathName", [&] { GetShortPathNameA(folderA, text, MAX_PATH); });
    sweep("GetLongPathName", [&] { GetLongPathNameA(folderA, text, MAX_PATH); });
    sweep("Jw32PathIsEqual", [&] { Jw32PathIsEqual(folderA, fileA); });
    sweep("RemoveDirectory", [&] { RemoveDirectoryW(wideFolder); });
    sweep("GetDiskFreeSpace", [&] { GetDiskFreeSpaceExA("C:\\", &bytes, nullptr, nullptr); });
    sweep("Jw32DeviceIsReady", [&] { Jw32DeviceIsReady("C:\\"); });
    sweep("Jw32TempFilename", [&] { Jw32TempFilename(text, MAX_PATH, "C:\\", "prefix"); });
    sweep("Jw32TempDirectory", [&] { Jw32TempDirectory(text, MAX_PATH); });
    sweep("Jw32GetFolderPath", [&] { Jw32GetFolderPath(5, text, MAX_PATH); });
    sweep("Jw32GetModulePath", [&] { Jw32GetModulePath(nullptr, text, MAX_PATH); });
    sweep("GetSystemDirectory", [&] { GetSystemDirectoryA(text, MAX_PATH); });
    sweep("LoadLibrary", [&] { FreeLibrary(LoadLibraryA("kernel32")); });
    sweep("FormatMessage", [&] { FormatMessageA(0x1000, nullptr, 2, 0, text, MAX_PATH, nullptr); });
    sweep("CompareString", [&] { CompareStringA(0, 1, latin.c_str(), -1, fileA, -1); });
    sweep("GlobalAlloc", [&] { GlobalFree(GlobalAlloc(0, 100)); });
    sweep("VirtualAlloc",
          [&] { VirtualFree(VirtualAlloc(nullptr, 9, MEM_COMMIT, 4), 0, MEM_RELEASE); });
    sweep("_putenv", [&] { _putenv("A_VARIABLE_OF_SOME_LENGTH=with a value of some length"); });
    sweep("CJw32SharedMemory", [&] { CJw32SharedMemory().Create(blockName.c_str(), 10); });
    sweep("CJw32SharedMemory::Exist", [&] { CJw32SharedMemory().Exist(blockName.c_str()); });
    sweep("MultiByteToWideChar",
          [&] { MultiByteToWideChar(0, 0, latin.c_str(), -1, wideText, 200); });
    sweep("WideCharToMultiByte", [&] {
        WideCharToMultiByte(0, 0, japanese.data(), 40, text, MAX_PATH, nullptr, nullptr);
    });
}

}  // namespace
