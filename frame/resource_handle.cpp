// The module in which the library looks for its resources.
#include "jw32/resource_handle.h"

namespace {
HINSTANCE resourceHandle = nullptr;
}

void Jw32SetResourceHandle(HINSTANCE hModule) {
    resourceHandle = hModule;
}

HINSTANCE Jw32GetResourceHandle() {
    return resourceHandle;
}
