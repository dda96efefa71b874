// The size of a file, open or by name.
#include "frame/error_triple.h"
#include "frame/name_conversion.h"
#include "frame/owner.h"
#include "jw32/files.h"

LONG Jw32FileSize(void* hFile, DWORD* pdwError, char* pszError, DWORD dwErrorSize) {
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    const DWORD size = GetFileSize(hFile, nullptr);
    return size != INVALID_FILE_SIZE ? static_cast<LONG>(size) : triple.fail(LONG{-1});
}

LONG Jw32FileSize(const char* pszName, DWORD* pdwError, char* pszError, DWORD dwErrorSize) {
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    const UniqueFile file(CreateFileW(Jw32WideName(pszName), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                      nullptr));
    if (!file) return triple.fail(LONG{-1});
    return Jw32FileSize(file.get(), pdwError, pszError, dwErrorSize);
}
