// The entry points of user32.dll that callers look up by name.
#include "modules/exports.h"

#include "winuser.h"

namespace {

const machine::Export entryPoints[] = {
    {"LoadStringA", &LoadStringA},
};

const machine::SystemModule user32("user32.dll", entryPoints);

}  // namespace
