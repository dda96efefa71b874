// The table of the entry points that are looked up by name, module by module.
#include "modules/entry_points.h"

#include "fileapi.h"
#include "shlobj.h"
#include "sysinfoapi.h"
#include "text/case_mapping.h"
#include "text/utf16.h"

namespace machine {

namespace {

struct EntryPoint {
    std::string_view module, name;
    FARPROC function;
};

template <class Function>
FARPROC address(Function* function) {
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(function));
}

const EntryPoint entryPoints[] = {
    {"kernel32.dll", "GetDiskFreeSpaceExA", address(GetDiskFreeSpaceExA)},
    {"kernel32.dll", "GetFullPathNameW", address(GetFullPathNameW)},
    {"kernel32.dll", "GetLongPathNameA", address(GetLongPathNameA)},
    {"kernel32.dll", "GetVersionExA", address(GetVersionExA)},
    {"shell32.dll", "SHGetFolderPathA", address(SHGetFolderPathA)},
    {"shfolder.dll", "SHGetFolderPathA", address(SHGetFolderPathA)},
};

bool sameModule(std::string_view left, std::string_view right) {
    return equalIgnoringCase(fromUtf8(left), fromUtf8(right));
}

}  // namespace

bool isSystemModule(std::string_view name) {
    for (const auto& entry : entryPoints) {
        if (sameModule(entry.module, name)) return true;
    }
    return false;
}

FARPROC systemEntryPoint(std::string_view module, std::string_view name) {
    for (const auto& entry : entryPoints) {
        if (entry.name == name && sameModule(entry.module, module)) return entry.function;
    }
    return nullptr;
}

}  // namespace machine
