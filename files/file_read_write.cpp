// Reading and writing, which count as done only when the whole count went through.
#include "frame/error_triple.h"
#include "jw32/files.h"

int Jw32FileRead(void* hFile, void* pData, DWORD dwCount, DWORD* pdwError, char* pszError,
                 DWORD dwErrorSize) {
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    DWORD done = 0;
    if (!ReadFile(hFile, pData, dwCount, &done, nullptr)) return triple.fail(0);
    return done == dwCount ? 1 : 0;
}

int Jw32FileWrite(void* hFile, const void* pData, DWORD dwCount, DWORD* pdwError, char* pszError,
                  DWORD dwErrorSize) {
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    DWORD done = 0;
    if (!WriteFile(hFile, pData, dwCount, &done, nullptr)) return triple.fail(0);
    return done == dwCount ? 1 : 0;
}
