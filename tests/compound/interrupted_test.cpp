// What is left when the device fails, the power is cut or the process is killed.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "churn.h"
#include "memory_device.h"

namespace {

using namespace compound;
using namespace compound_test;

class Interrupted : public testing::TestWithParam<int> {
  protected:
    const Options options{.version = GetParam()};
};

// A device that fails for good at each n-th call, in the middle of a write where that is possible.
TEST_P(Interrupted, FailingDeviceLeavesTheOldOrTheNewState) {
    for (int limit = 0; limit < 1200; limit += 1 + limit / 100) {
        const auto disk = std::make_shared<Disk>();
        disk->failure = limit % 2 == 0 ? Error::full : Error::io;
        disk->cutBeforeFailure = limit % 3;
        auto file = *File::create(deviceOf(disk), options);
        Churn churn(static_cast<unsigned>(limit) + 1, 20000);
        for (int i = 0; i < 40; ++i) churn.step(*file);
        disk->callsToFailure = disk->calls + limit;
        auto error = Error::none;
        for (int i = 0; i < 400 && error == Error::none; ++i) {
            error = churn.step(*file);
            if (error == Error::exists || error == Error::invalidArgument) error = Error::none;
        }
        ASSERT_TRUE(error == Error::none || error == disk->failure) << int(error);
        const auto [fault, contents] = check(disk->bytes, After::kill);
        ASSERT_EQ(fault, "") << "call " << limit;
        ASSERT_TRUE(churn.allows(contents)) << "call " << limit;

        // The same object goes on when the device does, and what it leaves is sound.
        disk->callsToFailure = -1;
        churn.model = contentsOf(*file);
        ASSERT_TRUE(churn.model == contents) << "memory and device differ after call " << limit;
        for (int i = 0; i < 20; ++i) churn.step(*file);
        ASSERT_EQ(file->close(), Error::none);
        const auto closed = check(disk->bytes, After::kill);
        ASSERT_EQ(closed.fault, "") << "closed after call " << limit;
        ASSERT_TRUE(closed.contents == churn.model) << limit;

        // Whoever opens the file next for writing takes back what was lost.
        file = *File::open(deviceOf(disk), options);
        ASSERT_TRUE(file->createStream(File::root, u"the last one"));
        ASSERT_EQ(check(disk->bytes, After::call).fault, "") << limit;
    }
}

// Writes that take several calls are done all the same.
TEST_P(Interrupted, ShortWritesAreContinued) {
    const auto disk = std::make_shared<Disk>();
    disk->longestWrite = 7;
    auto file = *File::create(deviceOf(disk), options);
    Churn churn(3);
    for (int i = 0; i < 100; ++i) churn.step(*file);
    const auto [fault, contents] = check(disk->bytes, After::call);
    EXPECT_EQ(fault, "");
    EXPECT_TRUE(contents == churn.model);
}

// Part of what was written since the last sync, and all before it.
std::string afterPowerCut(const std::vector<Disk::Write>& log, std::size_t end,
                          std::minstd_rand& random) {
    std::size_t synced = end;
    while (synced > 0 && !log[synced - 1].synced) --synced;
    Disk disk;
    for (std::size_t i = 0; i < end; ++i) {
        if (i < synced) {
            disk.apply(log[i]);
            continue;
        }
        for (std::size_t at = 0;
             at < log[i].bytes.size();) {  // blocks of 512 bytes come and go alone
            const auto size =
                std::min<std::size_t>(log[i].bytes.size() - at, 512 - (log[i].offset + at) % 512);
            if (random() % 2 == 0) disk.apply({log[i].offset + at, log[i].bytes.substr(at, size)});
            at += size;
        }
    }
    return disk.bytes;
}

// The image has whole sectors at its end, as a file system leaves them.
std::string padded(std::string bytes, int version) {
    const std::size_t sector = version == 3 ? 512 : 4096;
    bytes.resize((bytes.size() + sector - 1) / sector * sector);
    return bytes;
}

TEST_P(Interrupted, PowerCutsAreSurvivedWhenEveryChangeIsSynced) {
    const auto disk = std::make_shared<Disk>();
    auto safe = options;
    safe.durability = Durability::always;
    disk->logging = true;
    auto file = *File::create(deviceOf(disk), safe);
    ASSERT_EQ(file->commit(), Error::none);
    Churn churn(GetParam() == 3 ? 7u : 8u, 20000);
    std::minstd_rand random(1);
    for (int step = 0; step < 300; ++step) {
        const auto begin = disk->log.size();
        churn.step(*file);
        for (auto end = begin; end <= disk->log.size(); ++end) {
            const auto image = padded(afterPowerCut(disk->log, end, random), GetParam());
            const auto [fault, contents] = check(image, After::kill);
            ASSERT_EQ(fault, "") << "step " << step << " write " << end - begin;
            ASSERT_TRUE(churn.allows(contents)) << "step " << step << " write " << end - begin;
        }
    }
}

// Without that, the state at the last commit or close is there until the next change begins.
TEST_P(Interrupted, PowerCutsLeaveWhatWasCommitted) {
    const auto disk = std::make_shared<Disk>();
    disk->logging = true;
    std::minstd_rand random(1);
    Churn churn(5);
    auto file = *File::create(deviceOf(disk), options);
    for (int round = 0; round < 20; ++round) {
        for (int i = 0; i < 20; ++i) churn.step(*file);
        ASSERT_EQ(round % 2 == 0 ? file->commit() : file->close(), Error::none);
        const auto image = afterPowerCut(disk->log, disk->log.size(), random);
        ASSERT_TRUE(image == disk->bytes);
        const auto [fault, contents] = check(image, After::call);
        ASSERT_EQ(fault, "");
        ASSERT_TRUE(contents == churn.model);
        if (round % 2 != 0) file = *File::open(deviceOf(disk), options);
    }
}

INSTANTIATE_TEST_SUITE_P(Versions, Interrupted, testing::Values(3, 4));

std::string bytesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The child tells each step that has returned by a byte.
[[noreturn]] void churnUntilKilled(const std::filesystem::path& path, unsigned seed, int progress) {
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC, 0600);
    auto file = *File::create(fileDevice(descriptor, true), {.durability = Durability::never});
    Churn churn(seed, 30000);
    for (;;) {
        churn.step(*file);
        if (::write(progress, "x", 1) != 1) ::_exit(1);
    }
}

TEST(Killed, ProcessLeavesTheOldOrTheNewState) {
    const auto* const wanted = std::getenv("JW32_COMPOUND_KILLS");
    const int kills = wanted == nullptr ? 100 : std::atoi(wanted);
    const auto path =
        std::filesystem::temp_directory_path() / ("compound-kill-" + std::to_string(::getpid()));
    std::minstd_rand random(1);
    for (int kill = 0; kill < kills; ++kill) {
        const auto seed = static_cast<unsigned>(kill) + 1;
        int pipe[2];
        ASSERT_EQ(::pipe(pipe), 0);
        const auto child = ::fork();
        if (child == 0) churnUntilKilled(path, seed, pipe[1]);
        ::close(pipe[1]);
        const std::size_t stepsToLet = 1 + random() % 300;
        std::string steps(stepsToLet, 0);
        std::size_t told = 0;
        while (told < stepsToLet) {
            const auto got = ::read(pipe[0], &steps[told], stepsToLet - told);
            ASSERT_GT(got, 0) << "the child has ended by itself";
            told += static_cast<std::size_t>(got);
        }
        ::usleep(static_cast<unsigned>(random() % 300));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        for (char byte; ::read(pipe[0], &byte, 1) == 1;) ++told;
        ::close(pipe[0]);

        // The model goes as far as the child has told, and then one step further.
        const auto shadow = std::make_shared<Disk>();
        auto file = *File::create(deviceOf(shadow), {});
        Churn churn(seed, 30000);
        for (std::size_t i = 0; i <= told; ++i) churn.step(*file);
        const auto [fault, contents] = check(bytesOf(path), After::kill);
        ASSERT_EQ(fault, "") << "kill " << kill;
        ASSERT_TRUE(churn.allows(contents)) << "kill " << kill << " after step " << told;
    }
    std::filesystem::remove(path);
}

}  // namespace
