// Names without regard to case while other processes and threads change the folder.
#include <fcntl.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <new>
#include <thread>
#include <utility>

#include "contract_files.h"
#include "core/machine.h"

namespace {

namespace fs = std::filesystem;

// A process of its own that runs the action.
class Elsewhere {
  public:
    explicit Elsewhere(const std::function<bool()>& action) : child_(::fork()) {
        if (child_ == 0) ::_exit(action() ? 0 : 1);
    }
    // Whether the action has given true, at its end.
    bool succeeds() const {
        int status = -1;
        return ::waitpid(child_, &status, 0) == child_ && status == 0;
    }

  private:
    const pid_t child_;
};

bool elsewhere(const std::function<bool()>& action) {
    return Elsewhere(action).succeeds();
}

std::size_t longestQueue() {
    std::size_t events = 0;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> events;
    return events;
}

class NamesInAnyCase : public ContractFiles {
  protected:
    std::string host(const std::string& name = "") const { return folder_ + name; }
    bool make(const std::string& name) const { return std::ofstream(host(name)).good(); }
    bool swap(const std::string& from, const std::string& to, unsigned flags = 0) const {
        const auto left = host(from), right = host(to);
        return ::renameat2(AT_FDCWD, left.c_str(), AT_FDCWD, right.c_str(), flags) == 0;
    }
    bool remove(const std::string& name) const { return fs::remove(host(name)); }

  private:
    // For a forked child too, whose c() is another.
    const std::string folder_ =
        machine::current().drives.front().folder + "/" + c().substr(3) + "/";
};

}  // namespace

TEST_F(NamesInAnyCase, AreKnownAtOnceAfterEachChangeOfAnotherProcess) {
    const struct {
        const char* change;
        std::function<bool()> make;
        const char *there, *gone;
    } steps[] = {
        {"created", [&] { return make("Made.txt"); }, "MADE.TXT", "OTHER.TXT"},
        {"renamed", [&] { return swap("Made.txt", "Other.txt"); }, "OTHER.TXT", "MADE.TXT"},
        {"moved twice", [&] { return swap("Other.txt", "A1") && swap("A1", "A2"); }, "a2", "a1"},
        {"a second one", [&] { return make("B2"); }, "b2", "a1"},
        {"exchanged", [&] { return swap("A2", "B2", RENAME_EXCHANGE); }, "b2", "a1"},
        {"and both there", [] { return true; }, "a2", "a1"},
        {"deleted", [&] { return remove("A2"); }, "b2", "a2"},
        {"a folder", [&] { return fs::create_directory(host("Sub")) && make("Sub/In.txt"); },
         "SUB\\IN.TXT", "SUB\\NEW.TXT"},
        {"another in its place",
         [&] {
             return swap("Sub", "Away") && fs::create_directory(host("Sub")) && make("Sub/New.txt");
         },
         "sub\\NEW.TXT", "sub\\IN.TXT"},
        {"the first one moved", [] { return true; }, "AWAY\\IN.TXT", "AWAY\\NEW.TXT"},
        {"changes there", [&] { return make("Away/Late.txt"); }, "AWAY\\LATE.TXT", "SUB\\LATE.TXT"},
        {"not UTF-8", [&] { return make("Odd\xFFName"); }, "FOLDER", "ODDNAME"},
        {"more than the queue holds",
         [&] {
             make("Turn");
             for (std::size_t i = 0; i < longestQueue(); i += 2) {
                 if (!swap("Turn", "Back") || !swap("Back", "Turn")) return false;
             }
             return swap("Turn", "End");
         },
         "END", "TURN"},
    };
    for (const auto& step : steps) {
        EXPECT_FALSE(exists(c("NOTHING"))) << "the folder is known now";
        ASSERT_TRUE(elsewhere(step.make)) << step.change;
        EXPECT_TRUE(exists(c(step.there))) << step.change;
        EXPECT_FALSE(exists(c(step.gone))) << step.change;
    }
}

TEST_F(NamesInAnyCase, AreKnownByTheirShortFormsToo) {
    char before[MAX_PATH], after[MAX_PATH];
    make("A long name.text");
    ASSERT_NE(GetShortPathNameA(c("A long name.text").c_str(), before, MAX_PATH), 0U);
    EXPECT_TRUE(exists(before));
    ASSERT_TRUE(elsewhere([&] { return swap("A long name.text", "Another name.text"); }));
    EXPECT_FALSE(exists(before));
    ASSERT_NE(GetShortPathNameA(c("ANOTHER NAME.text").c_str(), after, MAX_PATH), 0U);
    EXPECT_TRUE(exists(after));
}

TEST_F(NamesInAnyCase, AreFoundByAForkAndItsParentAlike) {
    const auto before = c("BEFORE.TXT"), made = host("Child.txt");
    EXPECT_FALSE(exists(before));
    make("Before.txt");
    EXPECT_TRUE(elsewhere([&] { return exists(before) && std::ofstream(made).good(); }));
    EXPECT_TRUE(exists(before));
    EXPECT_TRUE(exists(c("CHILD.TXT")));
}

TEST_F(NamesInAnyCase, AreNotMadeOnceMoreWhereNoDescriptorIsLeft) {
    struct rlimit former {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &former), 0);
    const struct rlimit none { 0, former.rlim_max };
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    const DWORD made = codeOf(CreateDirectoryW(Wide(c("FOLDER")), nullptr));
    const DWORD moved = codeOf(MoveFileW(Wide(c("file")), Wide(c("FOLDER"))));
    EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &former), 0);
    EXPECT_EQ(made, DWORD{ERROR_TOO_MANY_OPEN_FILES});
    EXPECT_EQ(moved, DWORD{ERROR_TOO_MANY_OPEN_FILES});
}

namespace {

constexpr std::size_t namesInRace = 100, racers = 4;

// What two processes of two threads each share.
struct Race {
    std::array<std::atomic<std::size_t>, namesInRace> arrived{}, won{};

    // Each name is tried by all at the same moment, each in its own case; without one of them, the
    // race ends.
    void run(std::size_t racer, const std::function<bool(const std::string&)>& attempt) {
        constexpr std::array<const char*, racers> forms = {"race", "RACE", "Race", "rAcE"};
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        for (std::size_t i = 0; i < namesInRace; ++i) {
            for (++arrived[i]; arrived[i] < racers;) {
                if (std::chrono::steady_clock::now() > end) return;
                ::sched_yield();
            }
            if (attempt(forms[racer] + std::to_string(i))) ++won[i];
        }
    }
};

bool createNew(const std::string& name, DWORD disposition) {
    void* const file = Jw32FileCreate(name.c_str(), GENERIC_WRITE, disposition, 0, 7);
    const bool made = file != INVALID_HANDLE_VALUE && GetLastError() != ERROR_ALREADY_EXISTS;
    CloseHandle(file);
    return made;
}

bool moveNew(const std::string& own, const std::string& name) {
    createNew(own, OPEN_ALWAYS);
    return MoveFileW(Wide(own), Wide(name)) != FALSE;
}

}  // namespace

TEST_F(NamesInAnyCase, AreMadeOnceByAllWhoMakeThemAtTheSameMoment) {
    using Attempt = std::function<bool(const std::string& own, const std::string& name)>;
    const std::pair<const char*, Attempt> attempts[] = {
        {"CREATE_NEW", [](auto&, auto& name) { return createNew(name, CREATE_NEW); }},
        {"CREATE_ALWAYS", [](auto&, auto& name) { return createNew(name, CREATE_ALWAYS); }},
        {"OPEN_ALWAYS", [](auto&, auto& name) { return createNew(name, OPEN_ALWAYS); }},
        {"a directory",
         [](auto&, auto& name) { return CreateDirectoryW(Wide(name), nullptr) != FALSE; }},
        {"a move", moveNew},
        {"a copy",
         [](auto& own, auto& name) { return CopyFileW(Wide(own), Wide(name), TRUE) != FALSE; }},
    };
    for (const auto& [what, attemptOf] : attempts) {
        const auto& attempt = attemptOf;  // lambdas cannot capture a structured binding
        void* const shared = ::mmap(nullptr, sizeof(Race), PROT_READ | PROT_WRITE,
                                    MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        auto& race = *new (shared) Race;
        const auto place = c(what), source = c("own");
        CreateDirectoryW(Wide(place), nullptr);
        const auto runAs = [&](std::size_t racer) {
            const auto own = source + std::to_string(racer);
            createNew(own, OPEN_ALWAYS);
            race.run(racer, [&](const auto& name) { return attempt(own, place + "\\" + name); });
        };
        const auto runTwo = [&](std::size_t first) {
            std::thread other(runAs, first + 1);
            runAs(first);
            other.join();
            return true;
        };
        // It begins before this process has more than one thread.
        const Elsewhere otherProcess([&] { return runTwo(2); });
        runTwo(0);
        EXPECT_TRUE(otherProcess.succeeds());
        for (std::size_t i = 0; i < namesInRace; ++i) EXPECT_EQ(race.won[i], 1U) << what << i;
        const fs::directory_iterator made(host(what));
        EXPECT_EQ(std::distance(begin(made), end(made)), ptrdiff_t{namesInRace}) << what;
        ::munmap(shared, sizeof(Race));
    }
}
