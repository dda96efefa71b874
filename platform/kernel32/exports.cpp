// The entry points of kernel32.dll that callers look up by name.
#include "modules/exports.h"

#include "fileapi.h"
#include "sysinfoapi.h"

namespace {

const machine::Export entryPoints[] = {
    {"GetDiskFreeSpaceExA", &GetDiskFreeSpaceExA},
    {"GetFullPathNameW", &GetFullPathNameW},
    {"GetLongPathNameA", &GetLongPathNameA},
    {"GetVersionExA", &GetVersionExA},
};

const machine::SystemModule kernel32("kernel32.dll", entryPoints);

}  // namespace
