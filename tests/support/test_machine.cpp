// The machine of the test programs in the Linux build: drives C: and D: in a folder that goes away
// at the end, when nothing may be open any more, and the host's root as Z:. The current directory
// is the root of C:.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

#include "core/machine.h"
#include "core/testing.h"

namespace {

namespace fs = std::filesystem;

fs::path makeTemporaryFolder() {
    auto name = (fs::temp_directory_path() / "jw32-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    return name;
}

machine::Machine testDrives(const fs::path& folder) {
    machine::Machine machine = machine::standard();
    machine.drives.clear();
    for (const char letter : {'C', 'D'}) {
        const auto drive = folder / std::string(1, letter);
        fs::create_directories(drive);
        machine.drives.push_back({.letter = letter, .folder = drive.string()});
    }
    machine.drives.push_back({.letter = 'Z', .folder = "/"});
    fs::create_directories(folder / "C/Windows/System32");
    return machine;
}

// But for the host's notifications, which the platform asks for once and keeps.
std::ptrdiff_t openDescriptors() {
    return std::ranges::count_if(fs::directory_iterator("/proc/self/fd"), [](const auto& entry) {
        std::error_code gone;
        return fs::read_symlink(entry.path(), gone) != "anon_inode:inotify";
    });
}

class TestMachine : public testing::Environment {
  public:
    void SetUp() override {
        machine::listenForIdleRules(
            [](const std::string& rule) { ADD_FAILURE() << "a rule never fired: " << rule; });
        descriptors_ = openDescriptors();
        folder_ = makeTemporaryFolder();
        installed_.emplace(testDrives(folder_));
        former_ = fs::current_path();
        fs::current_path(folder_ / "C");
    }
    void TearDown() override {
        EXPECT_EQ(machine::inUse(), machine::InUse{}) << "the tests left something open";
        EXPECT_EQ(openDescriptors(), descriptors_) << "the platform left descriptors open";
        installed_.reset();
        fs::current_path(former_);
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

  private:
    std::ptrdiff_t descriptors_ = 0;
    fs::path folder_, former_;
    std::optional<machine::ScopedMachine> installed_;
};

const auto* const environment = testing::AddGlobalTestEnvironment(new TestMachine);

}  // namespace
