// What callers hold of the machine at the moment, and how tests take it back.
#include "machine/address_space.h"
#include "machine/handles.h"
#include "machine/modules.h"
#include "machine/testing.h"

namespace machine {

InUse inUse() {
    return {handleCount(), loadedModuleReferences(), heapBlocks().count() + virtualBlocks().count(),
            views().count()};
}

void reclaimAll() {
    views().releaseAll();
    closeAllObjects();
    releaseAllModules();
    heapBlocks().releaseAll();
    virtualBlocks().releaseAll();
}

}  // namespace machine
