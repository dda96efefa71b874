// The entry points of shell32.dll that callers look up by name, and of shfolder.dll, which offers
// one of them to systems whose shell lacks it.
#include "modules/exports.h"

#include "shlobj.h"

namespace {

const machine::Export entryPoints[] = {
    {"SHGetFolderPathA", &SHGetFolderPathA},
};

const machine::SystemModule shell32("shell32.dll", entryPoints);
const machine::SystemModule shfolder("shfolder.dll", entryPoints);

}  // namespace
