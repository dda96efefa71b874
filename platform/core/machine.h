// The computer that the system modules show: drives, version, code page.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform_export.h"

namespace machine {

// The values of GetDriveTypeA.
enum class DriveKind : std::uint32_t {
    Removable = 2,
    Fixed = 3,
    Remote = 4,
    CdRom = 5,
    RamDisk = 6
};

struct Drive {
    char letter;  // 'A' to 'Z'
    // On the host; when the machine comes into force, it is brought to the one path without links.
    std::string folder;
    DriveKind kind = DriveKind::Fixed;
    std::string label = {};           // UTF-8
    std::string fileSystem = "NTFS";  // as GetVolumeInformationW tells
    // Case kept, Unicode names, persistent lists, reparse points.
    std::uint32_t fileSystemFlags = 0x0000008F;
    std::uint32_t serial = 0x4A573332;
    bool ready = true;  // false: no medium, every access fails with ERROR_NOT_READY
    std::optional<std::uint64_t> capacity = std::nullopt;  // bytes; unset: as the host tells
};

struct Share {
    std::string server, name;  // \\server\name
    std::string folder;        // on the host
};

struct Version {
    std::uint32_t platform = 2, major = 6, minor = 1, build = 7601;
    std::string servicePack = "Service Pack 1";
    std::uint16_t servicePackMajor = 1, servicePackMinor = 0, suiteMask = 0;
    std::uint8_t productType = 1;
    bool knowsExtendedRecord = true;  // false: GetVersionExA takes the smaller record only
};

// A module of message texts and strings that no file stands for, such as a message library.
struct DataModule {
    std::string name;  // "netmsg.dll"; found without regard to case
    std::vector<std::pair<std::uint32_t, std::string>> messages;
    std::vector<std::pair<std::uint32_t, std::string>> strings;
};

struct Machine {
    std::vector<Drive> drives = {};
    std::vector<Share> shares = {};
    Version version = {};
    std::uint32_t codePage = 65001;  // 65001 (UTF-8), 1252 or 932
    // UTF-8, on a drive; the system directory is System32 below it.
    std::string windowsDirectory = "C:\\Windows";
    std::vector<DataModule> dataModules = {};

    const Drive* drive(char letter) const;  // without regard to case; null: no such drive
    const Share* share(std::string_view server, std::string_view name) const;
};

// The machine that needs no set-up: C: lies in the user's data directory or where JW32_DRIVE_C
// says, and Z: is the host's root.
PLATFORM_API Machine standard();

// The machine in force. The reference holds until another one is installed.
PLATFORM_API const Machine& current();

// Puts another machine in force for as long as it lives. For tests: no other thread may be inside
// a platform operation while it comes or goes.
class PLATFORM_API ScopedMachine {
  public:
    explicit ScopedMachine(Machine machine);
    ~ScopedMachine();
    ScopedMachine(const ScopedMachine&) = delete;
    ScopedMachine& operator=(const ScopedMachine&) = delete;

  private:
    std::unique_ptr<const Machine> mine_;
    const Machine* former_;
};

}  // namespace machine
