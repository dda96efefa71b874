// The module's entry.
#include <windows.h>

#include "jw32/resource_handle.h"

// Stores the module's handle at every notification, those of threads included, and never refuses.
extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD /*reason*/, LPVOID /*reserved*/) {
    Jw32SetResourceHandle(module);
    return TRUE;
}
