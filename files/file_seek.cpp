// Setting of a file's position.
#include "frame/error_triple.h"
#include "jw32/files.h"

int Jw32FileSeek(void* hFile, LONG lOffset, DWORD* pdwError, char* pszError, DWORD dwErrorSize) {
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    const DWORD position = SetFilePointer(hFile, lOffset, nullptr, FILE_BEGIN);
    return position != INVALID_SET_FILE_POINTER ? 1 : triple.fail(0);
}

int Jw32FileSeekEnd(void* hFile, DWORD* pdwError, char* pszError, DWORD dwErrorSize) {
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    const DWORD position = SetFilePointer(hFile, 0, nullptr, FILE_END);
    return position != INVALID_SET_FILE_POINTER ? 1 : triple.fail(0);
}
