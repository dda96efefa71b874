/// @file
/// The temporary directory, temporary names and temporary files.
///
/// The texts come with their whole length in bytes, terminator not counted, also where the buffer
/// holds only the beginning of them: a result equal to or above the buffer's size means a cut.
#pragma once

#include <windows.h>

#include "jw32/export.h"

/// Tells the temporary directory: the long form of what the environment variable TMP names, else
/// TEMP. No backslash is added, and whether the directory exists is not asked.
///
/// The call completes the environment of the process. Where only TEMP is set, TMP gets its value.
/// Where neither is, a directory "~Temp" below the system directory is made, and both are set to
/// it, even if it could not be made. A value for which there is no long form, or none of fewer than
/// 520 bytes, is given as it stands, its first 520 bytes at most; a value of TEMP of more than 516
/// bytes does not become that of TMP.
///
/// The environment belongs to the process and is changed without a lock: while a call completes it,
/// no other thread should read or change it, through these operations or otherwise.
///
/// @param[out] pszBuffer receives the directory, cut to what fits; the rest of the buffer is
///        cleared; may be null
/// @param dwSize the buffer's capacity in bytes, terminator included
/// @return the length of the whole text; 0 when the buffer is null or its size 0, when the long
///         form could not be asked for, or when there is no system directory, or one of more than
///         254 bytes
JW32_API DWORD Jw32TempDirectory(char* pszBuffer, DWORD dwSize);

/// Makes up the name of a file that does not exist at this moment. The file is not made.
///
/// The name comes from the C runtime (_tempnam), which puts it into the directory of the
/// environment variable TMP where that exists, whatever directory is asked for.
///
/// @param[out] pszBuffer receives the name with its directory, cut to what fits; the rest of the
///        buffer is cleared; may be null
/// @param dwSize the buffer's capacity in bytes, terminator included
/// @param pszDirectory the directory, of which the first 260 bytes count; null: the temporary one
///        (see Jw32TempDirectory)
/// @param pszPrefix what the file's name shall begin with; null: nothing particular
/// @return the length of the whole name; 0 when the buffer is null or its size 0 or no name can be
///         had
JW32_API DWORD Jw32TempFilename(char* pszBuffer, DWORD dwSize, const char* pszDirectory,
                                const char* pszPrefix);

/// Creates or opens a file of a made-up name (see Jw32TempFilename), which is not told: with
/// FILE_FLAG_DELETE_ON_CLOSE among the flags the file goes with its handle. With CREATE_NEW, the
/// file of a name that another program took meanwhile is not touched.
///
/// @param pszDirectory, pszPrefix as in Jw32TempFilename
/// @param dwAccess, dwDisposition, dwFlags, dwShare as in Jw32FileCreate
/// @param[out] pdwError, pszError, dwErrorSize the error triple (see jw32.h); left as the caller
///        gave it when the name has 260 bytes or more. That no name could be had shows as the
///        failure of the platform on an empty name
/// @return the handle, which the caller ends with CloseHandle, or INVALID_HANDLE_VALUE on failure
JW32_API void* Jw32CreateTempFile(const char* pszDirectory, const char* pszPrefix, DWORD dwAccess,
                                  DWORD dwDisposition, DWORD dwFlags, DWORD dwShare,
                                  DWORD* pdwError = nullptr, char* pszError = nullptr,
                                  DWORD dwErrorSize = 0);
