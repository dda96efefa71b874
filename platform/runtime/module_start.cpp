// Linked into a shared object or a program, makes it a module: its entry hears of its load and
// unload, and its resources are found.
#include "platform_module.h"

#define JW32_OWN extern "C" __attribute__((visibility("hidden"), weak))

// The linker gives these two for the section of the resources, where there is one.
JW32_OWN const char __start_jw32_resources[];
JW32_OWN const char __stop_jw32_resources[];
JW32_OWN const char __ehdr_start[];
JW32_OWN BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID reserved);

namespace {

HINSTANCE ownHandle() {
    return reinterpret_cast<HINSTANCE>(const_cast<char*>(__ehdr_start));
}

__attribute__((constructor)) void attach() {
    const auto size = __stop_jw32_resources - __start_jw32_resources;
    const PlatformModule module{__start_jw32_resources, static_cast<std::size_t>(size), &DllMain};
    platformAttachModule(ownHandle(), &module);
}

__attribute__((destructor)) void detach() {
    platformDetachModule(ownHandle());
}

}  // namespace
