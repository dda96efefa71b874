/// @file
/// Finding directories and creating whole paths of them. Failures are reported through the error
/// triple (see jw32.h); where there is no memory for a copy of the path, the code is
/// ERROR_NOT_ENOUGH_MEMORY.
#pragma once

#include <windows.h>

#include "jw32/export.h"

/// Finds a directory and leaves the search open.
///
/// Of a path with wildcards the first match decides. Where the match is a file, the result is
/// INVALID_HANDLE_VALUE with a clear triple, and the record describes the file.
///
/// @param pszPath the directory, with or without a last backslash; may be null
/// @param[out] pRecord receives the match, names longer than its fields cut; dwReserved0 and
///        dwReserved1 are not written; may be null; holds nothing usable when nothing matched
/// @param[out] pdwError, pszError, dwErrorSize the error triple
/// @return the search, which the caller ends with FindClose; INVALID_HANDLE_VALUE when there is no
///         such directory, with a clear triple when the path is null or empty or the record null
JW32_API void* Jw32DirectoryFind(const char* pszPath, WIN32_FIND_DATAA* pRecord,
                                 DWORD* pdwError = nullptr, char* pszError = nullptr,
                                 DWORD dwErrorSize = 0);

/// Tells whether a directory exists.
///
/// @param pszPath the directory, with or without a last backslash; may be null
/// @param[out] pdwError, pszError, dwErrorSize the error triple
/// @return 1 it does; 0 it does not, with a clear triple when the path is null or empty or that of
///         a file
JW32_API int Jw32DirectoryExist(const char* pszPath, DWORD* pdwError = nullptr,
                                char* pszError = nullptr, DWORD dwErrorSize = 0);

/// Creates a directory and those above it that are missing, and sets attributes on every one that
/// it makes. Those that stood already keep theirs.
///
/// Only the backslash separates, and the text in front of the first one is taken for granted: it is
/// a drive, or an existing directory of a relative path. What stands at the last level counts as
/// created, even a file. Levels that were made before a failure stay. That attributes could not be
/// set is not reported.
///
/// @param pszPath the path; a bare drive or drive root ("C:", "C:\") gives 1 and nothing is done;
///        may be null
/// @param dwAdd the attributes to add
/// @param dwRemove the attributes to take away; those in dwAdd too are added
/// @param[out] pdwError, pszError, dwErrorSize the error triple
/// @return 1 done; 0 when the last level could not be made, and with a clear triple when the path
///         is null, has fewer than 2 bytes or no backslash
JW32_API int Jw32DirectoryCreateAttr(const char* pszPath, DWORD dwAdd, DWORD dwRemove,
                                     DWORD* pdwError = nullptr, char* pszError = nullptr,
                                     DWORD dwErrorSize = 0);

/// Creates a directory and those above it that are missing: Jw32DirectoryCreateAttr without
/// attributes.
///
/// @param pszPath the path; may be null
/// @param[out] pdwError, pszError, dwErrorSize the error triple
/// @return as Jw32DirectoryCreateAttr
JW32_API int Jw32DirectoryCreate(const char* pszPath, DWORD* pdwError = nullptr,
                                 char* pszError = nullptr, DWORD dwErrorSize = 0);
