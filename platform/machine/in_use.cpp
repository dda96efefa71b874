// What callers hold of the machine at the moment, and how tests take it back.
#include "machine/handles.h"
#include "machine/modules.h"
#include "machine/testing.h"

namespace machine {

InUse inUse() {
    return {handleCount(), loadedModuleReferences()};
}

void reclaimAll() {
    closeAllObjects();
    releaseAllModules();
}

}  // namespace machine
