// Linked into a shared object, makes it a module: its entry hears of its load and unload.
#include "platform_module.h"

extern "C" __attribute__((visibility("hidden"))) const char __ehdr_start;

namespace {

HINSTANCE ownHandle() {
    return reinterpret_cast<HINSTANCE>(const_cast<char*>(&__ehdr_start));
}

__attribute__((constructor)) void attach() {
    platformAttachModule(ownHandle(), &platformModuleStrings, &DllMain);
}

__attribute__((destructor)) void detach() {
    platformDetachModule(ownHandle());
}

}  // namespace
