// Creating and opening of files.
#include "frame/error_triple.h"
#include "frame/name_conversion.h"
#include "jw32/files.h"

void* Jw32FileCreate(const char* pszName, DWORD dwAccess, DWORD dwDisposition, DWORD dwFlags,
                     DWORD dwShare, DWORD* pdwError, char* pszError, DWORD dwErrorSize) {
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    const HANDLE file = CreateFileW(Jw32WideName(pszName), dwAccess, dwShare, nullptr,
                                    dwDisposition, dwFlags, nullptr);
    return file != INVALID_HANDLE_VALUE ? file : triple.fail(file);
}

void* Jw32FileOpen(const char* pszName, DWORD dwAccess, DWORD dwDisposition, DWORD dwFlags,
                   DWORD dwShare, DWORD* pdwError, char* pszError, DWORD dwErrorSize) {
    return Jw32FileCreate(pszName, dwAccess, dwDisposition, dwFlags, dwShare, pdwError, pszError,
                          dwErrorSize);
}
