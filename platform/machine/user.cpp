// Who runs the process.
#include "machine/user.h"

#include <pwd.h>
#include <unistd.h>

#include <array>

namespace machine {

std::string userName() {
    std::array<char, 4096> room{};
    passwd entry{};
    passwd* found = nullptr;
    const auto user = ::geteuid();
    ::getpwuid_r(user, &entry, room.data(), room.size(), &found);
    return found != nullptr ? found->pw_name : std::to_string(user);
}

}  // namespace machine
