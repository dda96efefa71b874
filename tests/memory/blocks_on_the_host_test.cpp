// Named blocks when the process forks, and when their file is removed behind their back.
#include <gtest/gtest.h>
#include <jw32/shared_memory.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <string>
#include <thread>

namespace {

const std::string name = "jw32-host-" + std::to_string(getpid());

TEST(BlocksOnTheHost, StayWithTheParentWhenAForkedChildClosesItsCopy) {
    CJw32SharedMemory memory;
    ASSERT_NE(memory.Create(name.c_str(), 10), nullptr);
    const pid_t child = fork();
    if (child == 0) {
        memory.Close();
        _exit(0);
    }
    waitpid(child, nullptr, 0);
    EXPECT_EQ(memory.Exist(name.c_str()), 1);
    memory.Close();
    EXPECT_EQ(memory.Exist(name.c_str()), 0);
}

TEST(BlocksOnTheHost, AreNotHeldUpByAChildForkedInTheMidstOfACreation) {
    std::atomic<bool> stops{false};
    std::thread busy([&stops] {
        while (!stops) CJw32SharedMemory().Create(name.c_str(), 10);
    });
    std::array<pid_t, 100> children{};
    for (pid_t& child : children) {
        child = fork();
        if (child == 0) {
            sleep(5);
            _exit(0);
        }
        usleep(500);  // the thread goes on
    }
    const auto start = std::chrono::steady_clock::now();
    stops = true;
    busy.join();
    EXPECT_NE(CJw32SharedMemory().Create(name.c_str(), 10), nullptr);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
    for (const pid_t child : children) kill(child, SIGKILL);
    for (const pid_t child : children) waitpid(child, nullptr, 0);
}

TEST(BlocksOnTheHost, LeaveTheNameToAnotherBlockWhenTheirFileWasRemoved) {
    const auto file = "/dev/shm/jw32-" + std::to_string(geteuid()) + "/l-" + name;
    CJw32SharedMemory former, next;
    ASSERT_NE(former.Create(name.c_str(), 10), nullptr);
    ASSERT_EQ(unlink(file.c_str()), 0);
    ASSERT_NE(next.Create(name.c_str(), 10), nullptr);
    former.Close();
    EXPECT_EQ(next.Exist(name.c_str()), 1);
}

}  // namespace
