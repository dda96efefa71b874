// Modules that the host's own loader has brought into the process.
#include "modules/announced_module.h"

#include <dlfcn.h>
#include <sys/auxv.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>

#include "names/paths.h"

namespace machine {

namespace {

std::u16string drivePath(const char* host) {
    const std::unique_ptr<char, void (*)(void*)> file(::realpath(host, nullptr), std::free);
    const auto path = file == nullptr ? Path{} : pathOfHost(file.get());
    return path.kind == Path::Kind::File ? path.text() : std::u16string();
}

}  // namespace

AnnouncedModule::AnnouncedModule(HMODULE handle, const PlatformModule& module)
    : handle_(handle),
      resources_({static_cast<const std::byte*>(module.resources), module.resourceSize}),
      entry_(module.entry) {}

std::u16string AnnouncedModule::file() const {
    if (handle_ == programHandle()) return programFile();
    Dl_info info{};
    return ::dladdr(handle_, &info) != 0 ? drivePath(info.dli_fname) : std::u16string();
}

void AnnouncedModule::notify(DWORD reason) const {
    if (entry_ != nullptr) entry_(handle_, reason, nullptr);
}

// The program's headers begin the page that its program headers lie in.
HMODULE programHandle() {
    const auto page = static_cast<unsigned long>(::sysconf(_SC_PAGESIZE));
    return reinterpret_cast<HMODULE>(::getauxval(AT_PHDR) & ~(page - 1));
}

std::u16string programFile() {
    return drivePath("/proc/self/exe");
}

}  // namespace machine
