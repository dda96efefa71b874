// Files when the host has no room, no descriptors, pipes, and copies of the process.
#include <dlfcn.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <jw32/files.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <vector>

#include "support/last_error.h"
#include "support/scratch_drives.h"

namespace {

bool diesWhileCopying = false;

}  // namespace

// The platform's calls come here first.
extern "C" __attribute__((visibility("default"))) ssize_t copy_file_range(int from, off64_t* fromAt,
                                                                          int to, off64_t* toAt,
                                                                          std::size_t length,
                                                                          unsigned flags) {
    if (diesWhileCopying) raise(SIGKILL);
    static const auto next =
        reinterpret_cast<decltype(&copy_file_range)>(dlsym(RTLD_NEXT, "copy_file_range"));
    return next(from, fromAt, to, toAt, length, flags);
}

namespace {

// A limit of the process for as long as it lives.
class Limit {
  public:
    Limit(__rlimit_resource resource, rlim_t value) : resource_(resource) {
        getrlimit(resource, &former_);
        const rlimit limit{value, former_.rlim_max};
        setrlimit(resource, &limit);
    }
    ~Limit() { setrlimit(resource_, &former_); }
    Limit(const Limit&) = delete;
    Limit& operator=(const Limit&) = delete;

  private:
    __rlimit_resource resource_;
    rlimit former_{};
};

class FilesOnTheHost : public ScratchDrives {
  protected:
    HANDLE create(const char* name, DWORD flags = 0, DWORD share = FILE_SHARE_DELETE) const {
        return CreateFileA(c(name).c_str(), GENERIC_READ | GENERIC_WRITE, share, nullptr,
                           CREATE_ALWAYS, flags, nullptr);
    }
    // The host's current directory is the root of C:.
    static std::string host(const std::string& path) {
        auto name = path.substr(3);
        for (char& character : name) character = character == '\\' ? '/' : character;
        return name;
    }
    static DWORD openCode(const std::string& path, DWORD disposition = OPEN_EXISTING,
                          DWORD access = GENERIC_READ) {
        const HANDLE file =
            CreateFileA(path.c_str(), access, FILE_SHARE_READ, nullptr, disposition, 0, nullptr);
        const DWORD code = codeOf(file != INVALID_HANDLE_VALUE);
        if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
        return code;
    }
};

TEST_F(FilesOnTheHost, AreWrittenWholeOrReportAFullDisk) {
    const HANDLE file = create("file");
    const std::string content(3000, 'x');
    DWORD moved = 7, code = 7;
    {
        const Limit limit(RLIMIT_FSIZE, 4000);
        EXPECT_TRUE(WriteFile(file, content.data(), 3000, &moved, nullptr));
        EXPECT_EQ(codeOf(WriteFile(file, content.data(), 3000, &moved, nullptr)),
                  DWORD{ERROR_DISK_FULL});
        EXPECT_EQ(moved, 0u);
        EXPECT_EQ(Jw32FileWrite(file, content.data(), 3000, &code), 0);
        EXPECT_EQ(code, DWORD{ERROR_DISK_FULL});
        EXPECT_EQ(codeOf(CreateFileMappingA(file, nullptr, PAGE_READWRITE, 0, 9000, nullptr)),
                  DWORD{ERROR_DISK_FULL});
    }
    EXPECT_EQ(SetFilePointer(file, 0, nullptr, FILE_CURRENT), 3000u) << "the position stays";
    EXPECT_LE(GetFileSize(file, nullptr), 4000u) << "it has not grown";
    CloseHandle(file);
}

TEST_F(FilesOnTheHost, EndWithTheirHandleUnderWhateverNameTheyHave) {
    const HANDLE file = create("first", FILE_FLAG_DELETE_ON_CLOSE);
    const pid_t child = fork();
    if (child == 0) _exit(CloseHandle(file) ? 0 : 1);
    waitpid(child, nullptr, 0);
    EXPECT_TRUE(exists(c("first"))) << "a copy of the process closed its handle";
    ASSERT_TRUE(MoveFileW(Wide(c("first")), Wide(c("second"))));
    write(c("first"), "another");
    CloseHandle(file);
    EXPECT_FALSE(exists(c("second")));
    EXPECT_EQ(read(c("first")), "another");
}

TEST_F(FilesOnTheHost, AreFreeAfterTheCloseThoughACopyOfTheProcessHasThemOpen) {
    const HANDLE file = create("file", 0, 0);
    int pipe[2];
    ASSERT_EQ(::pipe(pipe), 0);
    const pid_t child = fork();
    if (child == 0) {
        char end = 0;
        ::close(pipe[1]);
        _exit(static_cast<int>(::read(pipe[0], &end, 1)));
    }
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(openCode(c("file")), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1))
        << "who has the file open is not waited for";
    CloseHandle(file);
    EXPECT_EQ(openCode(c("file")), 0u);
    for (const int end : pipe) ::close(end);
    waitpid(child, nullptr, 0);
}

TEST_F(FilesOnTheHost, ThatArePipesHoldNobodyUp) {
    ASSERT_EQ(::mkfifo(host(c("pipe")).c_str(), 0600), 0);
    alarm(20);  // ends the program if a call waits for the other end
    EXPECT_EQ(openCode(c("pipe"), OPEN_ALWAYS), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(codeOf(CopyFileW(Wide(c("pipe")), Wide(c("copy")), TRUE)),
              DWORD{ERROR_ACCESS_DENIED});
    write(c("file"), "content");
    EXPECT_TRUE(CopyFileW(Wide(c("file")), Wide(c("pipe")), FALSE)) << "replaces it";
    alarm(0);
    EXPECT_EQ(read(c("pipe")), "content");
}

TEST_F(FilesOnTheHost, AreNotTakenFromOthersForWantOfDescriptors) {
    const HANDLE file = create("file", 0, 0);
    write(c("other"), "");
    exists(c("missing"));  // what is opened once is open now
    std::vector<int> taken;
    {
        const Limit limit(RLIMIT_NOFILE, 64);
        for (int one; (one = ::open("/dev/null", O_RDONLY | O_CLOEXEC)) >= 0;) taken.push_back(one);
        EXPECT_EQ(codeOf(DeleteFileW(Wide(c("file")))), DWORD{ERROR_TOO_MANY_OPEN_FILES});
        EXPECT_EQ(codeOf(MoveFileW(Wide(c("file")), Wide(c("file2")))),
                  DWORD{ERROR_TOO_MANY_OPEN_FILES});
        EXPECT_EQ(codeOf(CopyFileW(Wide(c("other")), Wide(c("file")), FALSE)),
                  DWORD{ERROR_TOO_MANY_OPEN_FILES});
        EXPECT_EQ(openCode("NUL"), DWORD{ERROR_TOO_MANY_OPEN_FILES});
        for (const int one : taken) ::close(one);
    }
    EXPECT_TRUE(exists(c("file")));
    CloseHandle(file);
}

TEST_F(FilesOnTheHost, BehindABrokenLinkAreMissingWhateverIsAsked) {
    ASSERT_EQ(::symlink("nowhere", host(c("link")).c_str()), 0);
    for (const DWORD disposition : {CREATE_NEW, CREATE_ALWAYS, OPEN_EXISTING, OPEN_ALWAYS}) {
        EXPECT_EQ(openCode(c("link"), disposition), DWORD{ERROR_FILE_NOT_FOUND}) << disposition;
    }
}

TEST_F(FilesOnTheHost, ThatArePipesOrDevicesStayWhatTheyAre) {
    ASSERT_EQ(::mkfifo(host(c("pipe")).c_str(), 0600), 0);
    alarm(20);
    for (const std::string& name : {c("pipe"), std::string("Z:\\dev\\null")}) {
        EXPECT_EQ(openCode(name, CREATE_ALWAYS, GENERIC_WRITE), DWORD{ERROR_SUCCESS}) << name;
    }
    EXPECT_EQ(Jw32FileMove(c("pipe").substr(3).c_str(), "copy"), 0) << "by copying";
    alarm(0);
    if (::mknod(host(c("null")).c_str(), S_IFCHR | 0600, makedev(1, 3)) != 0) return;
    write(c("file"), "content");
    EXPECT_EQ(codeOf(CopyFileW(Wide(c("file")), Wide(c("null")), FALSE)),
              DWORD{ERROR_ACCESS_DENIED});
    CloseHandle(create("null", FILE_FLAG_DELETE_ON_CLOSE));
    EXPECT_TRUE(exists(c("null"))) << "not removed";
}

TEST_F(FilesOnTheHost, AreNoLongerThanTheLimitLetsThemBe) {
    const HANDLE file = create("file");
    SetFilePointer(file, 5000, nullptr, FILE_BEGIN);
    write(c("long"), std::string(3000, 'x'));
    {
        const Limit limit(RLIMIT_FSIZE, 2000);
        EXPECT_EQ(codeOf(SetEndOfFile(file)), DWORD{ERROR_DISK_FULL});
        EXPECT_EQ(codeOf(CopyFileW(Wide(c("long")), Wide(c("copy")), FALSE)),
                  DWORD{ERROR_DISK_FULL});
        for (const char* const name : {static_cast<const char*>(nullptr), "jw32-limited"}) {
            const HANDLE block =
                CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 9000, name);
            EXPECT_EQ(codeOf(block != nullptr), DWORD{ERROR_COMMITMENT_LIMIT});
        }
    }
    EXPECT_FALSE(exists(c("copy")));
    CloseHandle(file);
}

TEST_F(FilesOnTheHost, HaveRoomForAllThatAViewMayWrite) {
    const HANDLE file = create("file");
    const auto roomAfterMapping = [&](DWORD length) {
        CloseHandle(CreateFileMappingA(file, nullptr, PAGE_READWRITE, 0, length, nullptr));
        struct stat status {};
        ::stat(host(c("file")).c_str(), &status);
        return status.st_blocks * 512;
    };
    EXPECT_GE(roomAfterMapping(200000), 200000) << "grown with the mapping";
    SetFilePointer(file, 500000, nullptr, FILE_BEGIN);
    EXPECT_TRUE(SetEndOfFile(file));
    EXPECT_GE(roomAfterMapping(0), 500000) << "a hole";
    CloseHandle(file);
}

TEST_F(FilesOnTheHost, ThatAreDirectoriesEndWithTheirHandleToo) {
    Jw32DirectoryCreate(c("folder").c_str());
    const DWORD flags = FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_DELETE_ON_CLOSE;
    CloseHandle(CreateFileW(Wide(c("folder")), DELETE, FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                            flags, nullptr));
    EXPECT_FALSE(exists(c("folder")));
}

// Writers are refused by the holder; readers suit it, and are never refused because of a writer.
TEST_F(FilesOnTheHost, AreOpenForThoseWhoSuitEachOtherHoweverManyOthersTry) {
    const auto name = c("file");  // of this process
    write(name, "content");
    const HANDLE holder =
        CreateFileW(Wide(name), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(1500);
    const auto misses = [&](DWORD access, DWORD expected) {
        int count = 0;
        while (std::chrono::steady_clock::now() < end) {
            count += openCode(name, OPEN_EXISTING, access) != expected;
        }
        return count;
    };
    std::vector<pid_t> children;
    for (int i = 0; i < 8; ++i) {
        children.push_back(fork());
        if (children.back() != 0) continue;
        const int count = i % 2 == 0 ? misses(GENERIC_READ, ERROR_SUCCESS)
                                     : misses(GENERIC_WRITE, ERROR_SHARING_VIOLATION);
        _exit(count > 0 ? 1 : 0);
    }
    for (const pid_t child : children) {
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0) << "of child " << child - children.front();
    }
    CloseHandle(holder);
}

TEST_F(FilesOnTheHost, LeaveNothingOfACopyThatIsKilled) {
    const auto from = c("file"), to = c("copy");  // of this process
    write(from, "content");
    const pid_t child = fork();
    if (child == 0) {
        diesWhileCopying = true;
        _exit(CopyFileW(Wide(from), Wide(to), FALSE));
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    namespace fs = std::filesystem;
    EXPECT_EQ(std::distance(fs::directory_iterator(host(c())), fs::directory_iterator()), 1);
}

}  // namespace
