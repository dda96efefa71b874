// The folder of a loaded module.
#include <cstring>

#include "frame/multibyte.h"
#include "jw32/folders.h"

int Jw32GetModulePath(HINSTANCE hModule, char* pszBuffer, unsigned int uSize) {
    if (hModule == static_cast<void*>(INVALID_HANDLE_VALUE)) return 0;
    if (pszBuffer == nullptr || uSize == 0) return 0;
    *pszBuffer = '\0';
    char path[MAX_PATH + 1] = "";
    GetModuleFileNameA(hModule, path, MAX_PATH);
    char* const lastBackslash = multibyte::findLast(path, '\\');
    if (lastBackslash == nullptr) return 0;
    *lastBackslash = '\0';
    // A cut name would be that of another folder.
    if (std::strlen(path) >= uSize) return 0;
    strcpy_s(pszBuffer, uSize, path);
    return 1;
}
