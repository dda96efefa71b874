// The entry points of shlwapi.dll that callers look up by name.
#include "modules/exports.h"

#include "shlwapi.h"

namespace {

const machine::Export entryPoints[] = {
    {"PathAddBackslashA", &PathAddBackslashA},       {"PathCanonicalizeA", &PathCanonicalizeA},
    {"PathIsSameRootW", &PathIsSameRootW},           {"PathIsUNCW", &PathIsUNCW},
    {"PathRemoveBackslashA", &PathRemoveBackslashA}, {"PathStripToRootA", &PathStripToRootA},
};

const machine::SystemModule shlwapi("shlwapi.dll", entryPoints);

}  // namespace
