/// @file
/// Where a program stands, and the well-known folders of the shell. A failure gives 0 and no
/// reason.
#pragma once

#include <windows.h>

#include "jw32/export.h"

/// Tells the folder of a loaded module, without a last backslash: that of a module in the root of a
/// drive is the bare drive, as `C:`.
///
/// Of a module's path the first 259 bytes are looked at. A folder that does not fit in the buffer
/// is not cut, since it would be another one: the result is 0 and the buffer is empty.
///
/// @param hModule the module; null: the program of the process
/// @param[out] pszBuffer receives the folder; untouched when the module is INVALID_HANDLE_VALUE,
///        else empty on failure; may be null
/// @param uSize the buffer's capacity in bytes, terminator included
/// @return 1; 0 when the module is not known or has no folder, or the buffer is null or too small
JW32_API int Jw32GetModulePath(HINSTANCE hModule, char* pszBuffer, unsigned int uSize);

/// Tells a well-known folder, with a last backslash, and makes it when it does not exist.
///
/// The current place of the folder is asked for first, and its default place where that cannot be
/// had. SHGetFolderPathA is looked up for each call, in Shell32.dll and, where that lacks it, in
/// SHFolder.dll.
///
/// @param nFolder a CSIDL value, as CSIDL_PERSONAL
/// @param[out] pszBuffer receives the folder; not examined, so a null pointer reaches the platform;
///        untouched when the size is too small or no module offers the call, and after another
///        failure it holds what the platform left in it
/// @param uSize the buffer's capacity in bytes: at least 260, whatever the folder's length
/// @return 1, or 0 on failure
JW32_API int Jw32GetFolderPath(int nFolder, char* pszBuffer, unsigned int uSize);
