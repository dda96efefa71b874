// Who runs the process.
#include "host/user.h"

#include <pwd.h>
#include <unistd.h>

#include <array>

namespace machine {

namespace {

// What the host knows of the user.
class Entry {
  public:
    Entry() { ::getpwuid_r(::geteuid(), &entry_, room_.data(), room_.size(), &found_); }
    const passwd* found() const { return found_; }

  private:
    std::array<char, 4096> room_{};
    passwd entry_{};
    passwd* found_ = nullptr;
};

}  // namespace

std::string userName() {
    const Entry entry;
    return entry.found() != nullptr ? entry.found()->pw_name : std::to_string(::geteuid());
}

std::string userFolder() {
    const Entry entry;
    return entry.found() != nullptr ? entry.found()->pw_dir : "";
}

}  // namespace machine
