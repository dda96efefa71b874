// Named blocks when the process forks, and when their file is removed behind their back.
#include <gtest/gtest.h>
#include <jw32/shared_memory.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <thread>

namespace {

const std::string text = "jw32-host-" + std::to_string(getpid());
const char* const name = text.c_str();

TEST(BlocksOnTheHost, StayWithTheParentWhenAForkedChildClosesItsCopy) {
    CJw32SharedMemory memory;
    ASSERT_NE(memory.Create(name, 10), nullptr);
    const pid_t child = fork();
    if (child == 0) {
        memory.Close();
        _exit(0);
    }
    waitpid(child, nullptr, 0);
    EXPECT_EQ(memory.Exist(name), 1);
}

TEST(BlocksOnTheHost, AreNotHeldUpByAChildForkedInTheMidstOfACreation) {
    std::jthread busy([](const std::stop_token& stop) {
        while (!stop.stop_requested()) CJw32SharedMemory().Create(name, 10);
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
    EXPECT_NE(CJw32SharedMemory().Create(name, 10), nullptr);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
    for (const pid_t child : children) kill(child, SIGKILL);
    for (const pid_t child : children) waitpid(child, nullptr, 0);
}

TEST(BlocksOnTheHost, LeaveTheNameToAnotherBlockWhenTheirFileWasRemoved) {
    const auto file = "/dev/shm/jw32-" + std::to_string(geteuid()) + "/l-" + text;
    CJw32SharedMemory former, next;
    ASSERT_NE(former.Create(name, 10), nullptr);
    ASSERT_EQ(unlink(file.c_str()), 0);
    ASSERT_NE(next.Create(name, 10), nullptr);
    former.Close();
    EXPECT_EQ(next.Exist(name), 1);
}

}  // namespace
