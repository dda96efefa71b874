// Hiding of a file.
#include "frame/error_triple.h"
#include "frame/name_conversion.h"
#include "jw32/files.h"

int Jw32FileHide(const char* pszName, DWORD* pdwError, char* pszError, DWORD dwErrorSize) {
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    if (pszName == nullptr || *pszName == '\0') return 0;
    const DWORD attributes = GetFileAttributesW(Jw32WideName(pszName));
    if (attributes == INVALID_FILE_ATTRIBUTES) return triple.fail(0);
    if ((attributes & FILE_ATTRIBUTE_HIDDEN) != 0) return 1;
    // The other attributes are given up.
    if (!SetFileAttributesW(Jw32WideName(pszName), FILE_ATTRIBUTE_HIDDEN)) return triple.fail(0);
    return 1;
}
