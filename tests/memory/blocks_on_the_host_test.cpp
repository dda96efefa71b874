// Named blocks when the process forks, and when their file is removed behind their back.
#include <gtest/gtest.h>
#include <jw32/shared_memory.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <string>
#include <thread>

namespace {

const std::string name = "jw32-host-" + std::to_string(getpid());

std::string blockFolder() {
    const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
    const auto shared = "/dev/shm/jw32-" + std::to_string(geteuid());
    return runtime != nullptr ? runtime + std::string("/jw32") : shared;
}

TEST(BlocksOnTheHost, EndForNobodyElseWhenACopyOrABlockWithoutAFileIsClosed) {
    CJw32SharedMemory former, next;
    ASSERT_NE(former.Create(name.c_str(), 10), nullptr);
    const pid_t child = fork();
    if (child == 0) {
        former.Close();
        _exit(0);
    }
    waitpid(child, nullptr, 0);
    EXPECT_EQ(former.Exist(name.c_str()), 1) << "the child has closed its copy alone";
    ASSERT_EQ(unlink((blockFolder() + "/l-" + name).c_str()), 0);
    ASSERT_NE(next.Create(name.c_str(), 10), nullptr);
    former.Close();
    EXPECT_EQ(next.Exist(name.c_str()), 1) << "the name is another block's now";
}

TEST(BlocksOnTheHost, AreNotHeldUpByAChildForkedInTheMidstOfACreation) {
    std::jthread busy([](const std::stop_token& stop) {
        while (!stop.stop_requested()) CJw32SharedMemory().Create(name.c_str(), 10);
    });
    pid_t children[100];
    for (pid_t& child : children) {
        child = fork();
        if (child == 0) _exit(static_cast<int>(sleep(5)));
        usleep(500);  // the thread goes on
    }
    const auto start = std::chrono::steady_clock::now();
    busy.request_stop();
    busy.join();
    EXPECT_NE(CJw32SharedMemory().Create(name.c_str(), 10), nullptr);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
    for (const pid_t child : children) kill(child, SIGKILL);
    for (const pid_t child : children) waitpid(child, nullptr, 0);
}

}  // namespace
