/// @file
/// Free space of drives, in bytes and in megabytes, with the error triple (see jw32.h) and
/// without.
///
/// Only the drive letter of a path is looked at, so the rest of it need not exist; a path without a
/// drive letter, such as a relative one or that of a share, is refused. Where the system has
/// GetDiskFreeSpaceExA, the result is what the calling user may still fill, quotas considered;
/// where it lacks it, the drive's free clusters times their size.
///
/// Which of the two it is, is found out at the first call and holds for the life of the process,
/// once for the two operations with a triple and once for the two without. The module that was
/// looked into stays loaded. All operations may be called from any thread: threads that come first
/// together find out the same.
#pragma once

#include <windows.h>

#include "jw32/export.h"

/// Tells the free space of a path's drive in bytes.
///
/// @param pszPath the path; may be null
/// @param[out] pFree receives the number of bytes; may be null; after a failure it holds what the
///        platform left in it
/// @param[out] pdwError, pszError, dwErrorSize the error triple
/// @return 1, or 0 on failure, with a clear triple when the path is null or empty or without a
///         drive letter or pFree is null
JW32_API int Jw32FreeDiskSpace(const char* pszPath, ULARGE_INTEGER* pFree,
                               DWORD* pdwError = nullptr, char* pszError = nullptr,
                               DWORD dwErrorSize = 0);

/// Tells the free space of a path's drive in megabytes of 1,048,576 bytes, rounded down.
///
/// @param pszPath the path; may be null
/// @param[out] pdwFree receives the number of megabytes, its low 32 bits, and 0 on failure; may be
///        null
/// @param[out] pdwError, pszError, dwErrorSize the error triple
/// @return 1, also when the number is 0; 0 on failure, with a clear triple when pdwFree is null. A
///         path that is refused without the platform's word brings the last error that the thread
///         had before
JW32_API int Jw32FreeDiskSpaceMB(const char* pszPath, DWORD* pdwFree, DWORD* pdwError = nullptr,
                                 char* pszError = nullptr, DWORD dwErrorSize = 0);

extern "C" {

/// The same as Jw32FreeDiskSpace without a triple, exported under its plain name.
///
/// @param pszPath the path; may be null
/// @param[out] pFree receives the number of bytes; may be null; after a failure it holds what the
///        platform left in it
/// @return 1, or 0 on failure
JW32_API int Jw32FreeDiskSpaceC(const char* pszPath, ULARGE_INTEGER* pFree);

/// The same as Jw32FreeDiskSpaceMB without a triple, exported under its plain name.
///
/// @param pszPath the path; may be null
/// @param[out] pdwFree receives the number of megabytes, its low 32 bits, and 0 on failure; may be
///        null
/// @return 1, also when the number is 0; 0 on failure
JW32_API int Jw32FreeDiskSpaceMBC(const char* pszPath, DWORD* pdwFree);
}
