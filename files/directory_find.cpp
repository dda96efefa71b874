// Finding of directories.
#include <shlwapi.h>

#include <cstring>

#include "frame/error_triple.h"
#include "frame/multibyte.h"
#include "frame/name_conversion.h"
#include "frame/owner.h"
#include "jw32/directories.h"

namespace {

void fill(WIN32_FIND_DATAA& record, const WIN32_FIND_DATAW& match) {
    record.dwFileAttributes = match.dwFileAttributes;
    record.ftCreationTime = match.ftCreationTime;
    record.ftLastAccessTime = match.ftLastAccessTime;
    record.ftLastWriteTime = match.ftLastWriteTime;
    record.nFileSizeHigh = match.nFileSizeHigh;
    record.nFileSizeLow = match.nFileSizeLow;
    multibyte::copy(record.cFileName, Jw32AnsiName(match.cFileName), _TRUNCATE);
    multibyte::copy(record.cAlternateFileName, Jw32AnsiName(match.cAlternateFileName), _TRUNCATE);
}

}  // namespace

void* Jw32DirectoryFind(const char* pszPath, WIN32_FIND_DATAA* pRecord, DWORD* pdwError,
                        char* pszError, DWORD dwErrorSize) {
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    if (pszPath == nullptr || *pszPath == '\0' || pRecord == nullptr) return INVALID_HANDLE_VALUE;
    const UniqueText path(_strdup(pszPath));
    if (!path) return triple.fail(INVALID_HANDLE_VALUE, ERROR_NOT_ENOUGH_MEMORY);
    PathRemoveBackslashA(path.get());
    WIN32_FIND_DATAW match;
    UniqueSearch search(FindFirstFileW(Jw32WideName(path.get()), &match));
    if (!search) return triple.fail(INVALID_HANDLE_VALUE);
    fill(*pRecord, match);
    const bool isDirectory = (match.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return isDirectory ? search.release() : INVALID_HANDLE_VALUE;
}

int Jw32DirectoryExist(const char* pszPath, DWORD* pdwError, char* pszError, DWORD dwErrorSize) {
    WIN32_FIND_DATAA record;
    const UniqueSearch search(Jw32DirectoryFind(pszPath, &record, pdwError, pszError, dwErrorSize));
    return search ? 1 : 0;
}
