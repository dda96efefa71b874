// What callers hold of the machine at the moment, and how tests take it back.
#include "core/handles.h"
#include "core/testing.h"
#include "memory/address_space.h"
#include "modules/modules.h"

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
