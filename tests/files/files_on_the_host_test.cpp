// Files when the host has no room, no descriptors, pipes, and copies of the process, many of them by
// the lines of files_on_the_host.txt.
#include <dlfcn.h>
#include <fcntl.h>
#include <jw32/files.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <utility>
#include <vector>

#include "contract/file_lines.h"

namespace {

using namespace file_lines;

bool diesWhileCopying = false;

}  // namespace

// The platform's calls come here first.
extern "C" __attribute__((visibility("default"))) ssize_t copy_file_range(int from, off64_t* fromAt,
                                                                          int to, off64_t* toAt,
                                                                          std::size_t size,
                                                                          unsigned options) {
    if (diesWhileCopying) raise(SIGKILL);
    static const auto next =
        reinterpret_cast<decltype(&copy_file_range)>(dlsym(RTLD_NEXT, "copy_file_range"));
    return next(from, fromAt, to, toAt, size, options);
}

namespace {

// A limit of the process, until it is set back.
class Limit {
  public:
    explicit Limit(__rlimit_resource resource) : resource_(resource) {
        getrlimit(resource, &former_);
    }
    ~Limit() { setBack(); }
    Limit(const Limit&) = delete;
    Limit& operator=(const Limit&) = delete;

    void set(rlim_t value) {
        const rlimit limit{value, former_.rlim_max};
        setrlimit(resource_, &limit);
    }
    void setBack() { setrlimit(resource_, &former_); }

  private:
    const __rlimit_resource resource_;
    rlimit former_{};
};

class FilesOnTheHost : public FileLines {
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

// The operations of the lines on the host itself.
class HostLines : public FilesOnTheHost {
  protected:
    // A mapping of an open file, or a block of the name; "null" has none.
    std::string map(const std::string& name, DWORD size) {
        const bool isBlock = name != "file";
        const HANDLE file = isBlock ? INVALID_HANDLE_VALUE : handle(name);
        const char* const block = name.starts_with("jw32") ? name.c_str() : nullptr;
        return outcome(CreateFileMappingA(file, nullptr, PAGE_READWRITE, 0, size, block) !=
                       nullptr);
    }
    static auto madeOnHost(int result) { return result == 0 ? "OK" : "not made"; }
    std::string exhaust() {
        descriptors_.set(64);
        for (int one; (one = ::open("/dev/null", O_RDONLY | O_CLOEXEC)) >= 0;)
            taken_.push_back(one);
        return "OK";
    }
    std::string endLimits() {
        for (const int one : std::exchange(taken_, {})) ::close(one);
        descriptors_.setBack();
        length_.setBack();
        return "OK";
    }

    Limit length_{RLIMIT_FSIZE}, descriptors_{RLIMIT_NOFILE};
    std::vector<int> taken_;
};

TEST_F(HostLines, TellWhatBecomesOfFiles) {
    const Operations own = {
        {"limit", [&](auto& w) { return length_.set(number(w.at(0))), "OK"; }},
        {"exhaust", [&](auto&) { return exhaust(); }},
        {"nolimit", [&](auto&) { return endLimits(); }},
        {"map", [&](auto& w) { return map(w.at(0), number(w.at(1))); }},
        {"pipe", [&](auto& w) { return madeOnHost(::mkfifo(host(c(w.at(0))).c_str(), 0600)); }},
        {"link",
         [&](auto& w) { return madeOnHost(::symlink("nowhere", host(c(w.at(0))).c_str())); }},
        {"Jw32FileWrite",
         [&](auto& w) {
             const auto size = static_cast<DWORD>(w.at(1).size());
             return given(Jw32FileWrite, handle(w.at(0)), w.at(1).data(), size);
         }},
        {"Jw32FileMove",
         [&](auto& w) { return given(Jw32FileMove, path(w.at(0)), path(w.at(1))); }},
    };
    alarm(60);  // ends the program if a call waits for the other end of a pipe
    holdVectors(own, false, true, operations());
    alarm(0);
}

TEST_F(FilesOnTheHost, ThatAreDevicesStayWhatTheyAre) {
    if (::mknod(host(c("null")).c_str(), S_IFCHR | 0600, makedev(1, 3)) != 0) {
        GTEST_SKIP() << "this user may make no device";
    }
    EXPECT_EQ(codeOf(CopyFileW(Wide(c("file")), Wide(c("null")), FALSE)),
              DWORD{ERROR_ACCESS_DENIED});
    CloseHandle(create("null", FILE_FLAG_DELETE_ON_CLOSE));
    EXPECT_TRUE(exists(c("null"))) << "not removed";
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
    const auto from = c("file"), to = c("folder\\copy");  // of this process
    const pid_t child = fork();
    if (child == 0) {
        diesWhileCopying = true;
        _exit(CopyFileW(Wide(from), Wide(to), FALSE));
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_TRUE(std::filesystem::is_empty(host(c("folder"))));
}

}  // namespace
