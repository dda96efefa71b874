// Temporary names and files.
#include "jw32/temporary_files.h"

#include <cstdio>
#include <cstring>

#include "frame/multibyte.h"
#include "frame/owner.h"
#include "jw32/files.h"
#include "paths/text_result.h"

DWORD Jw32TempFilename(char* pszBuffer, DWORD dwSize, const char* pszDirectory,
                       const char* pszPrefix) {
    if (pszBuffer == nullptr || dwSize == 0) return 0;
    std::memset(pszBuffer, 0, dwSize);
    char directory[MAX_PATH + 1] = "";
    if (pszDirectory != nullptr) {
        multibyte::copy(directory, pszDirectory, MAX_PATH);
    } else {
        Jw32TempDirectory(directory, MAX_PATH);
    }
    const UniqueText name(_tempnam(directory, pszPrefix));
    return name ? storeText(name.get(), pszBuffer, dwSize) : 0;
}

void* Jw32CreateTempFile(const char* pszDirectory, const char* pszPrefix, DWORD dwAccess,
                         DWORD dwDisposition, DWORD dwFlags, DWORD dwShare, DWORD* pdwError,
                         char* pszError, DWORD dwErrorSize) {
    char name[MAX_PATH];
    if (Jw32TempFilename(name, MAX_PATH, pszDirectory, pszPrefix) >= MAX_PATH) {
        return INVALID_HANDLE_VALUE;
    }
    return Jw32FileCreate(name, dwAccess, dwDisposition, dwFlags, dwShare, pdwError, pszError,
                          dwErrorSize);
}
