/// @file
/// File operations. They work on the caller's handles, which they never close, and report through
/// the error triple (see jw32.h). Positions and sizes have 32 bits. Names may have any length.
#pragma once

#include <windows.h>

#include "jw32/export.h"

/// Reads from a file's current position.
///
/// @param hFile the file, open for reading
/// @param[out] pData room for dwCount bytes; also filled by a short read, as far as it went
/// @param dwCount how many bytes to read
/// @param[out] pdwError, pszError, dwErrorSize the error triple
/// @return 1 when exactly dwCount bytes were read; 0 when the read failed, and with a clear triple
///         when the file ended before
JW32_API int Jw32FileRead(void* hFile, void* pData, DWORD dwCount, DWORD* pdwError = nullptr,
                          char* pszError = nullptr, DWORD dwErrorSize = 0);

/// Writes at a file's current position.
///
/// @param hFile the file, open for writing
/// @param pData the bytes
/// @param dwCount how many bytes to write
/// @param[out] pdwError, pszError, dwErrorSize the error triple
/// @return 1 when exactly dwCount bytes were written; 0 when the write failed, and with a clear
///         triple when it stopped short
JW32_API int Jw32FileWrite(void* hFile, const void* pData, DWORD dwCount, DWORD* pdwError = nullptr,
                           char* pszError = nullptr, DWORD dwErrorSize = 0);

/// Sets a file's position, which may lie behind its end.
///
/// @param hFile the file
/// @param lOffset the position in bytes from the beginning of the file
/// @param[out] pdwError, pszError, dwErrorSize the error triple
/// @return 1, or 0 on failure
JW32_API int Jw32FileSeek(void* hFile, LONG lOffset, DWORD* pdwError = nullptr,
                          char* pszError = nullptr, DWORD dwErrorSize = 0);

/// Sets a file's position to its end.
///
/// @param hFile the file
/// @param[out] pdwError, pszError, dwErrorSize the error triple
/// @return 1, or 0 on failure
JW32_API int Jw32FileSeekEnd(void* hFile, DWORD* pdwError = nullptr, char* pszError = nullptr,
                             DWORD dwErrorSize = 0);

/// Tells the size of an open file.
///
/// @param hFile the file
/// @param[out] pdwError, pszError, dwErrorSize the error triple
/// @return the low 32 bits of the size in bytes, or -1 on failure
JW32_API LONG Jw32FileSize(void* hFile, DWORD* pdwError = nullptr, char* pszError = nullptr,
                           DWORD dwErrorSize = 0);

/// Tells the size of a file by its name. The file is opened for reading, and shared with other
/// readers and writers meanwhile.
///
/// @param pszName the file's name
/// @param[out] pdwError, pszError, dwErrorSize the error triple
/// @return the low 32 bits of the size in bytes, or -1 on failure
JW32_API LONG Jw32FileSize(const char* pszName, DWORD* pdwError = nullptr, char* pszError = nullptr,
                           DWORD dwErrorSize = 0);

/// Creates or opens a file: the disposition alone decides which. Mind the order of the arguments,
/// which is not CreateFile's.
///
/// @param pszName the file's name; goes to the platform as it is, null too
/// @param dwAccess GENERIC_READ, GENERIC_WRITE and the other access rights
/// @param dwDisposition CREATE_ALWAYS, CREATE_NEW, OPEN_ALWAYS, OPEN_EXISTING or TRUNCATE_EXISTING
/// @param dwFlags file attributes and flags
/// @param dwShare FILE_SHARE_READ, FILE_SHARE_WRITE, FILE_SHARE_DELETE
/// @param[out] pdwError, pszError, dwErrorSize the error triple
/// @return the handle, which the caller ends with CloseHandle, or INVALID_HANDLE_VALUE on failure
JW32_API void* Jw32FileCreate(const char* pszName, DWORD dwAccess, DWORD dwDisposition,
                              DWORD dwFlags, DWORD dwShare, DWORD* pdwError = nullptr,
                              char* pszError = nullptr, DWORD dwErrorSize = 0);

/// The same as Jw32FileCreate, under the name that suits the existing file.
///
/// @copydetails Jw32FileCreate
JW32_API void* Jw32FileOpen(const char* pszName, DWORD dwAccess, DWORD dwDisposition, DWORD dwFlags,
                            DWORD dwShare, DWORD* pdwError = nullptr, char* pszError = nullptr,
                            DWORD dwErrorSize = 0);

/// Tells whether a file exists. Of a name with wildcards the first match decides.
///
/// @param pszName the file's name; a last backslash stays; may be null
/// @param[out] pdwError, pszError, dwErrorSize the error triple
/// @return 1 found; 0 not found, and with a clear triple when the name is null or empty or that of
///         a directory
JW32_API int Jw32FileFind(const char* pszName, DWORD* pdwError = nullptr, char* pszError = nullptr,
                          DWORD dwErrorSize = 0);

/// Hides a file. One that is hidden already is left alone; any other loses all its attributes but
/// the new one.
///
/// @param pszName the file's name; may be null
/// @param[out] pdwError, pszError, dwErrorSize the error triple
/// @return 1 the file is hidden; 0 on failure, with a clear triple when the name is null or empty
JW32_API int Jw32FileHide(const char* pszName, DWORD* pdwError = nullptr, char* pszError = nullptr,
                          DWORD dwErrorSize = 0);

/// Moves a file, no directory, and leaves its attributes as they are.
///
/// Between paths with the same root (see Jw32DriveIsEqual) the file is renamed, and a file that
/// stands at the target makes the move fail. Between others, relative paths among them, the file is
/// copied, which replaces a file that stands at the target, and the source is then deleted; where
/// that fails, as for a read-only file, both files stay.
///
/// @param pszFrom the file; may be null
/// @param pszTo its new name; may be null
/// @param[out] pdwError, pszError, dwErrorSize the error triple
/// @return 1 moved; 0 on failure, with a clear triple when a name is null or empty or the source is
///         a directory
JW32_API int Jw32FileMove(const char* pszFrom, const char* pszTo, DWORD* pdwError = nullptr,
                          char* pszError = nullptr, DWORD dwErrorSize = 0);
