// The machine in force and the one that needs no set-up.
#include "machine/machine.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cctype>
#include <cstdlib>
#include <filesystem>

#include "machine/text.h"

namespace machine {

namespace {

namespace fs = std::filesystem;

char upper(char letter) {
    return static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
}

std::string environmentOr(const char* name, const std::string& fallback) {
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0' ? value : fallback;
}

std::string systemDriveFolder() {
    const auto home = environmentOr("HOME", fs::temp_directory_path().string());
    const auto data = environmentOr("XDG_DATA_HOME", home + "/.local/share");
    return fs::absolute(environmentOr("JW32_DRIVE_C", data + "/jw32/drive_c")).string();
}

// Makes the folders that a program may count on. A failure shows at the first use of the drive.
void prepareSystemDrive(const std::string& folder) {
    std::error_code ignored;
    fs::create_directories(folder + "/Windows/System32", ignored);
    fs::create_directories(folder + "/Users", ignored);
}

const Machine& standardInForce() {
    static const Machine machine = [] {
        auto made = standard();
        prepareSystemDrive(made.drives.front().folder);
        return made;
    }();
    return machine;
}

std::atomic<const Machine*> installed{nullptr};

}  // namespace

const Drive* Machine::drive(char letter) const {
    const auto found = std::find_if(drives.begin(), drives.end(), [&](const Drive& drive) {
        return upper(drive.letter) == upper(letter);
    });
    return found == drives.end() ? nullptr : &*found;
}

const Share* Machine::share(std::string_view server, std::string_view name) const {
    const auto found = std::find_if(shares.begin(), shares.end(), [&](const Share& share) {
        return equalIgnoringCase(fromUtf8(share.server), fromUtf8(server)) &&
               equalIgnoringCase(fromUtf8(share.name), fromUtf8(name));
    });
    return found == shares.end() ? nullptr : &*found;
}

Machine standard() {
    Machine machine;
    machine.drives.push_back({.letter = 'C', .folder = systemDriveFolder(), .label = "System"});
    machine.drives.push_back({.letter = 'Z', .folder = "/", .label = "Host"});
    return machine;
}

const Machine& current() {
    const Machine* const machine = installed.load(std::memory_order_acquire);
    return machine != nullptr ? *machine : standardInForce();
}

Installed::Installed(Machine machine)
    : mine_(std::make_unique<const Machine>(std::move(machine))),
      former_(installed.exchange(mine_.get(), std::memory_order_acq_rel)) {}

Installed::~Installed() {
    installed.store(former_, std::memory_order_release);
}

}  // namespace machine
