// A host that refuses what most grant, or changes in the middle of a call: the calls of the host
// below are those of the platform layer, and pass on unless a test has an answer for them.
#include <dlfcn.h>
#include <jw32/free_space.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/xattr.h>

#include <cerrno>
#include <functional>
#include <utility>

#include "support/last_error.h"
#include "support/scratch_drives.h"
#include "support/triple.h"
#include "support/wide.h"

namespace {

int attributeError = 0;
std::function<int(struct statvfs&)> volume;
std::function<void()> afterOpen;  // once, when the status of an open file is asked for

template <class Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

int refuse(int error) {
    errno = error;
    return -1;
}

}  // namespace

#pragma GCC visibility push(default)
extern "C" {
int setxattr(const char* path, const char* name, const void* value, std::size_t size,
             int flags) noexcept {
    if (attributeError != 0) return refuse(attributeError);
    return next<decltype(setxattr)>("setxattr")(path, name, value, size, flags);
}
int fstat(int file, struct stat* status) noexcept {
    if (const auto action = std::exchange(afterOpen, nullptr)) action();
    return next<decltype(fstat)>("fstat")(file, status);
}
ssize_t getxattr(const char* path, const char* name, void* value, std::size_t size) noexcept {
    if (attributeError == ENOTSUP) return refuse(ENOTSUP);
    return next<decltype(getxattr)>("getxattr")(path, name, value, size);
}
int statvfs(const char* path, struct statvfs* status) noexcept {
    return volume ? volume(*status) : next<decltype(statvfs)>("statvfs")(path, status);
}
}
#pragma GCC visibility pop

namespace {

class RefusingHost : public ScratchDrives {
  protected:
    RefusingHost() { write(file, ""); }
    ~RefusingHost() override {
        attributeError = 0;
        volume = nullptr;
        afterOpen = nullptr;
    }
    static DWORD set(const std::string& path, DWORD attributes) {
        return codeOf(SetFileAttributesA(path.c_str(), attributes) != 0);
    }

    const std::string file = c("file");
};

TEST_F(RefusingHost, WithoutExtendedAttributesKeepsThemForTheFileAlone) {
    attributeError = ENOTSUP;
    EXPECT_EQ(attributes(file), DWORD{FILE_ATTRIBUTE_ARCHIVE});
    for (const DWORD wanted : {FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY,
                               FILE_ATTRIBUTE_NORMAL, FILE_ATTRIBUTE_SYSTEM}) {
        EXPECT_EQ(set(file, wanted), 0u);
        EXPECT_EQ(attributes(file), wanted);
    }
    EXPECT_EQ(attributes(c()), DWORD{FILE_ATTRIBUTE_DIRECTORY});
    ASSERT_TRUE(DeleteFileW(Wide(file)));
    write(file, "new, perhaps in the old one's place on the disk");
    EXPECT_EQ(attributes(file), DWORD{FILE_ATTRIBUTE_ARCHIVE});
}

TEST_F(RefusingHost, LeavesTheAttributesAsTheyAreWhereTheyCannotBeSet) {
    const DWORD before = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE;
    ASSERT_EQ(set(file, before), 0u);
    const std::pair<int, DWORD> rows[] = {
        {ENOSPC, ERROR_DISK_FULL}, {EDQUOT, ERROR_DISK_FULL}, {EPERM, ERROR_ACCESS_DENIED}};
    for (const auto& [error, code] : rows) {
        attributeError = error;
        EXPECT_EQ(set(file, FILE_ATTRIBUTE_HIDDEN), code);
        EXPECT_EQ(attributes(file), before) << code;
    }
    attributeError = 0;
    EXPECT_EQ(set(file, FILE_ATTRIBUTE_NORMAL), 0u);
}

TEST_F(RefusingHost, EmptiesNoFileThatIsMovedWhileItIsOpened) {
    write(file, "finished");
    for (const DWORD disposition : {CREATE_ALWAYS, TRUNCATE_EXISTING}) {
        afterOpen = [this] { EXPECT_TRUE(MoveFileW(Wide(file), Wide(c("moved")))); };
        const HANDLE opened =
            CreateFileA(file.c_str(), GENERIC_WRITE, 0, nullptr, disposition, 0, nullptr);
        EXPECT_EQ(codeOf(opened != INVALID_HANDLE_VALUE), DWORD{ERROR_SHARING_VIOLATION});
        if (opened != INVALID_HANDLE_VALUE) CloseHandle(opened);
        EXPECT_EQ(read(c("moved")), "finished");
        EXPECT_TRUE(MoveFileW(Wide(c("moved")), Wide(file)));
    }
}

TEST_F(RefusingHost, ReportsItsFreeSpaceWithinTheNumbersThatHoldIt) {
    ULARGE_INTEGER bytes{};
    const auto ask = [&bytes] { return reported(Jw32FreeDiskSpace, "C:", &bytes); };
    volume = [](auto&) { return refuse(EIO); };
    EXPECT_EQ(ask(), Report(0, ERROR_IO_DEVICE));
    volume = [](struct statvfs& status) {
        status = {};
        status.f_bsize = 4096;
        status.f_blocks = status.f_bfree = status.f_bavail = 10;
        return 0;
    };
    EXPECT_EQ(ask(), Report(1));
    EXPECT_EQ(bytes.QuadPart, 40960u);
    volume = [](struct statvfs& status) {
        status = {};
        status.f_bsize = status.f_frsize = 4096;
        status.f_blocks = status.f_bfree = status.f_bavail = ~0UL;
        return 0;
    };
    EXPECT_EQ(ask(), Report(1));
    EXPECT_EQ(bytes.QuadPart, std::uint64_t{INT64_MAX});
    DWORD sectors = 0, size = 0, free = 0, total = 0;
    EXPECT_TRUE(GetDiskFreeSpaceA("C:\\", &sectors, &size, &free, &total));
    EXPECT_EQ(sectors * size, 1u << 31);
    EXPECT_EQ(free, ~0u);
    FreeLibrary(GetModuleHandleA("KERNEL32.DLL"));  // that the lookup of the call keeps
}

}  // namespace
