/// @file
/// Rules for a single file name. They work on text alone: nothing is asked of the file system, and
/// no rule takes another one into account. Characters go by the multibyte code page of the process;
/// the class of a character is that of its first byte, as PathGetCharType (`<shlwapi.h>`) tells it.
#pragma once

#include "jw32/export.h"

/// Tells whether every character of a name may stand in a long or a short file name, and at least
/// one of them is not a blank. Wildcards and separators may not; reserved device names may.
///
/// @param pszName the name, of any length; may be null
/// @return 1 valid; 0 not, as for a null or empty name
JW32_API int Jw32FilenameIsValid(const char* pszName);

/// Replaces, in place, every character whose class is not among the allowed ones.
///
/// Of a double-byte character only the first byte is replaced. The walk goes on from the byte as it
/// then stands: behind a single-byte replacement, the second byte counts as a character of its own.
/// Should that byte come last and count as the first half of a character, the walk ends there.
///
/// @param[in,out] pszName the name; may be null
/// @param cReplace the replacement, stored unexamined
/// @param uAllowed the allowed classes, a mask of GCT_LFNCHAR, GCT_SHORTCHAR, GCT_WILD and
///        GCT_SEPARATOR; 0 allows none
/// @return how many characters were replaced
JW32_API unsigned int Jw32ReplaceInvalidFilenameCharacters(char* pszName, char cReplace,
                                                           unsigned int uAllowed);

/// Tells whether a name is that of a device: AUX, CON, CLOCK$, PRN, NUL, EPT, COM and LPT, also
/// with a number from 1 to 4. The whole name counts, without regard to case: one with an extension
/// or a path is not reserved.
///
/// @param pszName the name; may be null
/// @return 1 reserved, 0 not
JW32_API int Jw32IsReservedDeviceName(const char* pszName);

/// Tells whether two paths end in the same file name. Drives, directories and case do not count,
/// and a name without an extension is the same as one that ends in a dot.
///
/// A name of fewer than 2 bytes is equal to nothing, and neither is one whose base name or
/// extension has more than 255 bytes.
///
/// @param pszName1, pszName2 the names, with or without a path; may be null
/// @return 1 the same name, 0 not
JW32_API int Jw32FilenameIsEqual(const char* pszName1, const char* pszName2);
