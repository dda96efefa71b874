// The machine in force and the one that needs no set-up.
#include "core/machine.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cctype>

#include "host/host_folders.h"
#include "host/host_variables.h"
#include "host/user.h"
#include "text/case_mapping.h"
#include "text/utf16.h"

namespace machine {

namespace {

char upper(char letter) {
    return static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
}

// The variables of the host's temporary folder are not looked at: they may hold a path of a drive.
std::string homeFolder() {
    if (const auto home = hostVariable("HOME"); home && !home->empty()) return *home;
    const auto known = userFolder();
    return known.empty() ? "/tmp/jw32-" + std::to_string(::geteuid()) : known;
}

std::string systemDriveFolder() {
    if (const auto named = hostVariable("JW32_DRIVE_C"); named && !named->empty()) return *named;
    const auto data = hostVariable("XDG_DATA_HOME");
    return (data && !data->empty() ? *data : homeFolder() + "/.local/share") + "/jw32/drive_c";
}

// Makes the folders that a program may count on. A failure shows at the first use of the drive.
void prepareSystemDrive(const std::string& folder) {
    makeHostFolders(folder + "/Windows/System32");
    makeHostFolders(folder + "/Users");
}

// With folders that can be compared with paths of the host. A drive whose folder is nowhere has no
// medium.
Machine settled(Machine machine) {
    for (auto& drive : machine.drives) {
        drive.folder = canonicalHostPath(drive.folder);
        drive.ready = drive.ready && !drive.folder.empty();
    }
    for (auto& share : machine.shares) share.folder = canonicalHostPath(share.folder);
    std::erase_if(machine.shares, [](const Share& share) { return share.folder.empty(); });
    return machine;
}

const Machine& standardInForce() {
    static const Machine machine = [] {
        auto made = standard();
        prepareSystemDrive(made.drives.front().folder);
        return settled(std::move(made));
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

ScopedMachine::ScopedMachine(Machine machine)
    : mine_(std::make_unique<const Machine>(settled(std::move(machine)))),
      former_(installed.exchange(mine_.get(), std::memory_order_acq_rel)) {}

ScopedMachine::~ScopedMachine() {
    installed.store(former_, std::memory_order_release);
}

}  // namespace machine
