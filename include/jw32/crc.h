/// @file
/// CRC-32 of memory and of strings.
///
/// These functions cannot fail, keep no state and allocate nothing; any thread may call them.
#pragma once

#include <windows.h>

#include "jw32/export.h"

/// The CRC-32 of IEEE 802.3 (reflected, polynomial 0xEDB88320) of a block of memory.
/// @param pbData the block, readable for `nLength` bytes; it is only read, and not looked at when
///               the length is below 1
/// @param nLength bytes; below 1 the result is the seed
/// @param dwSeed 0 to start, or the CRC of the piece before this one
/// @return the CRC of everything up to the end of this block
JW32_API DWORD Jw32CrcMemory(unsigned char* pbData, int nLength, DWORD dwSeed);

/// Jw32CrcMemory() of a string's bytes, without the terminator.
/// @param pszText zero-terminated, not null; bytes after the first 2147483647 are left out
/// @param dwSeed 0 to start, or the CRC of the piece before this one
/// @return the CRC of everything up to the end of this string
JW32_API DWORD Jw32CrcString(const char* pszText, DWORD dwSeed);
