// A host that refuses what most grant, or changes in the middle of a call: the calls of the host
// below are those of the platform layer, and pass on unless a test has an answer for them.
#include <dlfcn.h>
#include <fcntl.h>
#include <jw32/free_space.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <functional>
#include <map>
#include <string>
#include <utility>

#include "support/last_error.h"
#include "support/scratch_drives.h"
#include "support/triple.h"
#include "support/wide.h"

namespace {

struct Fault {
    int error;
    int times = 1 << 20;
};
std::map<std::string, Fault> faults;  // of the calls of the host that fail, by their name
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

// Whether the call fails here; the error is then set.
bool isRefused(const char* call) {
    const auto fault = faults.find(call);
    if (fault == faults.end() || fault->second.times-- <= 0) return false;
    errno = fault->second.error;
    return true;
}

}  // namespace

#pragma GCC visibility push(default)
extern "C" {
int open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const auto mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : mode_t{0};
    va_end(rest);
    if ((flags & O_TMPFILE) == O_TMPFILE && isRefused("O_TMPFILE")) return -1;
    return next<decltype(open)>("open")(path, flags, mode);
}
int setxattr(const char* path, const char* name, const void* value, std::size_t size,
             int flags) noexcept {
    if (isRefused("setxattr")) return -1;
    return next<decltype(setxattr)>("setxattr")(path, name, value, size, flags);
}
int fsetxattr(int file, const char* name, const void* value, std::size_t size, int flags) noexcept {
    if (isRefused("setxattr")) return -1;
    return next<decltype(fsetxattr)>("fsetxattr")(file, name, value, size, flags);
}
ssize_t getxattr(const char* path, const char* name, void* value, std::size_t size) noexcept {
    if (isRefused("getxattr")) return -1;
    return next<decltype(getxattr)>("getxattr")(path, name, value, size);
}
ssize_t fgetxattr(int file, const char* name, void* value, std::size_t size) noexcept {
    if (isRefused("getxattr")) return -1;
    return next<decltype(fgetxattr)>("fgetxattr")(file, name, value, size);
}
int fstat(int file, struct stat* status) noexcept {
    if (const auto action = std::exchange(afterOpen, nullptr)) action();
    return next<decltype(fstat)>("fstat")(file, status);
}
int renameat2(int fromBase, const char* from, int toBase, const char* to, unsigned flags) noexcept {
    if (flags == RENAME_NOREPLACE && isRefused("renameat2")) return -1;
    return next<decltype(renameat2)>("renameat2")(fromBase, from, toBase, to, flags);
}
int link(const char* from, const char* to) noexcept {
    return isRefused("link") ? -1 : next<decltype(link)>("link")(from, to);
}
int linkat(int fromBase, const char* from, int toBase, const char* to, int flags) noexcept {
    if (isRefused("linkat")) return -1;
    return next<decltype(linkat)>("linkat")(fromBase, from, toBase, to, flags);
}
int unlink(const char* path) noexcept {
    return isRefused("unlink") ? -1 : next<decltype(unlink)>("unlink")(path);
}
ssize_t copy_file_range(int from, off64_t* fromAt, int to, off64_t* toAt, std::size_t size,
                        unsigned flags) {
    if (isRefused("copy_file_range")) return -1;
    return next<decltype(copy_file_range)>("copy_file_range")(from, fromAt, to, toAt, size, flags);
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
        faults.clear();
        volume = nullptr;
        afterOpen = nullptr;
    }
    static DWORD set(const std::string& path, DWORD attributes) {
        return codeOf(SetFileAttributesA(path.c_str(), attributes) != 0);
    }

    const std::string file = c("file");
};

TEST_F(RefusingHost, WithoutExtendedAttributesKeepsThemForTheFileAlone) {
    faults = {{"setxattr", {ENOTSUP}}, {"getxattr", {ENOTSUP}}};
    EXPECT_EQ(attributes(file), DWORD{FILE_ATTRIBUTE_ARCHIVE});
    for (const DWORD wanted : {FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY,
                               FILE_ATTRIBUTE_NORMAL, FILE_ATTRIBUTE_SYSTEM}) {
        EXPECT_EQ(set(file, wanted), 0u);
        EXPECT_EQ(attributes(file), wanted);
    }
    EXPECT_EQ(attributes(c()), DWORD{FILE_ATTRIBUTE_DIRECTORY});
    ASSERT_TRUE(CopyFileW(Wide(file), Wide(d("copy")), TRUE));
    EXPECT_EQ(attributes(d("copy")), DWORD{FILE_ATTRIBUTE_SYSTEM});
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
        faults = {{"setxattr", {error}}};
        EXPECT_EQ(set(file, FILE_ATTRIBUTE_HIDDEN), code);
        EXPECT_EQ(attributes(file), before) << code;
    }
    faults.clear();
    EXPECT_EQ(set(file, FILE_ATTRIBUTE_NORMAL), 0u);
}

// Each row takes away one more of the ways in which a file gets to its new name.
TEST_F(RefusingHost, MovesAndCopiesInTheWaysThatAreLeft) {
    const std::map<std::string, Fault> rows[] = {
        {},
        {{"renameat2", {EINVAL}}},
        {{"renameat2", {EINVAL}}, {"link", {EPERM}}},
        {{"renameat2", {EXDEV}}},
        {{"renameat2", {EXDEV}}, {"copy_file_range", {EXDEV}}},
        {{"renameat2", {EXDEV, 1}}, {"copy_file_range", {ENOSYS}}, {"O_TMPFILE", {EOPNOTSUPP}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        write(file, "content");
        faults = row;
        EXPECT_EQ(codeOf(CopyFileW(Wide(file), Wide(c("copy")), FALSE) != 0), 0u);
        faults = row;
        EXPECT_EQ(codeOf(MoveFileW(Wide(file), Wide(c("moved"))) != 0), 0u);
        faults.clear();
        EXPECT_FALSE(exists(file));
        EXPECT_EQ(read(c("moved")) + read(c("copy")), "contentcontent");
        EXPECT_TRUE(DeleteFileW(Wide(c("moved"))) && DeleteFileW(Wide(c("copy"))));
    }
    CreateDirectoryW(Wide(c("folder")), nullptr);
    faults = {{"renameat2", {EINVAL}}};
    EXPECT_EQ(codeOf(MoveFileW(Wide(c("folder")), Wide(c("other"))) != 0), 0u);
    faults = {{"renameat2", {EXDEV}}};
    EXPECT_EQ(codeOf(MoveFileW(Wide(c("other")), Wide(c("folder"))) != 0),
              DWORD{ERROR_NOT_SAME_DEVICE});
    EXPECT_TRUE(exists(c("other")));
}

TEST_F(RefusingHost, LeavesOneFileWhereAMoveEndsHalfWay) {
    write(file, "content");
    const std::pair<std::map<std::string, Fault>, DWORD> rows[] = {
        {{{"renameat2", {EXDEV}}, {"unlink", {EACCES, 1}}}, ERROR_ACCESS_DENIED},
        {{{"renameat2", {EXDEV}}, {"linkat", {EIO}}}, ERROR_IO_DEVICE},
        {{{"renameat2", {EIO}}}, ERROR_IO_DEVICE},
    };
    for (const auto& [row, code] : rows) {
        faults = row;
        EXPECT_EQ(codeOf(MoveFileW(Wide(file), Wide(c("moved"))) != 0), code);
        faults.clear();
        EXPECT_FALSE(exists(c("moved"))) << code;
        EXPECT_EQ(read(file), "content");
    }
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
