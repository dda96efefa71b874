/// @file
/// Directories that stand for other directories.
#pragma once

#include "jw32/export.h"

/// Makes a directory stand for another one, by a mount point (a reparse point of NTFS). Names that
/// cannot be converted to wide text raise CAtlException (see jw32.h).
///
/// The directory is made when it does not exist; one that does must be empty, as the platform asks.
/// The target need not exist and is not looked at. A directory that already is a link is left
/// alone, with the result 0. After a failure a directory that the call made is gone again, except
/// where it could not be opened or its attributes could not be read; one that stood before is as it
/// was.
///
/// The link's volume is asked for by the text up to its first backslash, so a relative path with a
/// backslash is refused, and for a UNC path the volume of the current drive is asked. Paths of
/// which the full form does not fit are refused before anything is made: the link's of more than
/// 259 characters, the target's of more than 255, and a link whose first backslash stands behind
/// the 259th byte.
///
/// @param pszLink the directory that is to become the link; may be null
/// @param pszTarget the directory that it is to stand for, with or without a last backslash; may be
///        null
/// @param bDryRun not 0: everything is done but the setting of the mount point, and a directory
///        that the call made is removed again, so that the result tells whether a link could be
///        made there
/// @return 1, or 0 on failure, for whatever reason
JW32_API int Jw32MakeDirectoryLink(const char* pszLink, const char* pszTarget, int bDryRun);
