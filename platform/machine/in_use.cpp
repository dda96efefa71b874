// What callers hold of the machine at the moment.
#include "machine/handles.h"
#include "machine/modules.h"
#include "machine/testing.h"

namespace machine {

InUse inUse() {
    return {handleCount(), loadedModuleReferences()};
}

}  // namespace machine
