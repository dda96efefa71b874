// Whether a file exists.
#include "files/first_match.h"
#include "frame/error_triple.h"
#include "jw32/files.h"

int Jw32FileFind(const char* pszName, DWORD* pdwError, char* pszError, DWORD dwErrorSize) {
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    if (pszName == nullptr || *pszName == '\0') return 0;
    const auto attributes = attributesOfFirstMatch(pszName);
    if (!attributes) return triple.fail(0);
    return (*attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? 0 : 1;
}
