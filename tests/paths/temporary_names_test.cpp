// Temporary names that many ask for at the same time.
#include <gtest/gtest.h>
#include <jw32/files.h>
#include <jw32/temporary_files.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "support/temporary_variables.h"

namespace {

using Names = std::vector<std::array<char, MAX_PATH>>;

// Eight threads get a part of the names each.
void fill(Names& names) {
    std::vector<std::jthread> threads;
    for (std::size_t thread = 0; thread < 8; ++thread) {
        threads.emplace_back([&names, thread] {
            for (auto i = thread; i < names.size(); i += 8) {
                Jw32TempFilename(names[i].data(), MAX_PATH, "C:\\", "jwt");
            }
        });
    }
}

TEST(TemporaryNames, OfTwoProcessesWithEightThreadsEachNeverMeet) {
    const TemporaryVariables kept;
    kept.set("", "");
    Names own(2000), others(2000);
    const std::size_t size = own.size() * MAX_PATH;
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    if (::fork() == 0) {
        fill(others);
        std::_Exit(::write(ends[1], others.data(), size) < 0);
    }
    ::close(ends[1]);
    fill(own);
    FILE* const pipe = ::fdopen(ends[0], "r");
    ASSERT_EQ(std::fread(others.data(), 1, size, pipe), size);
    std::fclose(pipe);
    std::set<std::string> different;
    for (const auto& names : {own, others}) {
        for (const auto& name : names) different.insert(name.data());
    }
    EXPECT_EQ(different.size(), own.size() + others.size());
}

TEST(TemporaryNames, TellNothingOfTheNextAndBelongToTheUserAlone) {
    const TemporaryVariables kept;
    kept.set("", "");
    Names names(2);
    fill(names);
    const std::string first = names[0].data(), next = names[1].data();
    const auto differ = std::mismatch(first.begin(), first.end(), next.begin(), next.end()).first;
    EXPECT_LT(differ - first.begin(), 14) << first << " and " << next;  // "C:\\jwt" and 64 bits
    const auto mode = [](const std::string& name) {
        CloseHandle(Jw32FileCreate(name.c_str(), GENERIC_WRITE, CREATE_NEW, 0, 0));
        struct stat status {};
        EXPECT_EQ(::stat(name.substr(3).c_str(), &status), 0) << name;
        EXPECT_EQ(::unlink(name.substr(3).c_str()), 0);
        return status.st_mode & 0777;
    };
    const auto mask = ::umask(0);
    EXPECT_EQ(mode(first), 0600u);
    EXPECT_EQ(mode("C:\\other"), 0666u);
    ::umask(mask);
}

}  // namespace
