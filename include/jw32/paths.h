/// @file
/// Questions about a path that are answered without opening it. They give no reason for a no.
#pragma once

#include "jw32/export.h"

/// Tells whether the device behind a root answers, without a dialog about a missing medium.
///
/// The error mode of the process is SEM_FAILCRITICALERRORS during the call and is then set back,
/// also when an exception leaves. Two calls at the same time on different threads can set back each
/// other's mode.
///
/// @param pszRoot the root, as `A:\` or `\\server\share\`; null: the root of the current directory
/// @return not 0 when the device is ready
JW32_API int Jw32DeviceIsReady(const char* pszRoot);

/// Tells whether two paths have the same root: the drive, or the server and share. Case does not
/// count. Which volume lies behind a root is not asked, so two letters for one volume differ, and
/// relative paths have no drive in common.
///
/// A path of fewer than 2 bytes is on no drive. Of a path only the first 259 bytes count.
///
/// @param pszPath1, pszPath2 the paths; may be null
/// @return not 0 when the roots are the same
JW32_API int Jw32DriveIsEqual(const char* pszPath1, const char* pszPath2);

/// Tells whether two paths on the same drive name the same thing.
///
/// Their short forms are compared where the things exist, else the texts, without regard to case.
/// "." and ".." count as they stand, and so does a last separator; a name without an extension is
/// the same as one that ends in a dot.
///
/// A path that does not fit the comparison is equal to nothing: one without a short form of more
/// than 259 bytes, and one whose directory, base name or extension has more than 255 bytes.
///
/// @param pszPath1, pszPath2 the paths; may be null
/// @return 1 the same, 0 not
JW32_API int Jw32PathIsEqual(const char* pszPath1, const char* pszPath2);

/// Tells whether a path is well formed and on a drive that the caller accepts. Nothing but the
/// drive need exist, and of a UNC path not even that.
///
/// Refused are wildcards, double backslashes behind the beginning, paths relative to a drive's
/// current directory, colons behind the drive letter, paths of blanks only, and paths whose
/// canonical form has more than 260 bytes.
///
/// @param pszPath the path; may be null
/// @param bRemovable not 0: a removable drive is accepted
/// @param[out] pbIsRemovable receives 1 when the path was found to lie on a removable drive,
///        accepted or not, else 0; may be null
/// @return 1 valid; 0 not, or there was no memory for the question
JW32_API int Jw32PathIsValid(const char* pszPath, int bRemovable, int* pbIsRemovable);
