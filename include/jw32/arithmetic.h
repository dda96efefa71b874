/// @file
/// CRC-32, greatest common divisor and least common multiple, and temperatures.
///
/// None of these functions can fail, keeps state or allocates; they may be called on any thread.
#pragma once

#include <windows.h>

#include "jw32/export.h"

/// The CRC-32 of IEEE 802.3 (reflected, polynomial 0xEDB88320) of a block of memory.
/// @param pbData the block, readable for `nLength` bytes; it is only read, and not looked at when
///               the length is below 1
/// @param nLength bytes; below 1 the result is the seed
/// @param dwSeed 0 to start, or the CRC of the piece in front of this one
/// @return the CRC of everything up to the end of this block
JW32_API DWORD Jw32CrcMemory(unsigned char* pbData, int nLength, DWORD dwSeed);

/// Jw32CrcMemory() of a string's bytes, without the terminator.
/// @param pszText zero-terminated, not null; bytes behind the first 2147483647 are left out
/// @param dwSeed 0 to start, or the CRC of the piece in front of this one
/// @return the CRC of everything up to the end of this string
JW32_API DWORD Jw32CrcString(const char* pszText, DWORD dwSeed);

/// Greatest common divisor by the Euclidean algorithm on the signed values. Its sign follows from
/// the remainders, which have the sign of the dividend: (12, -18) gives -6. The remainder of a
/// division by -1 is 0, for the lowest value too.
/// @param nFirst, nSecond the values
/// @return the divisor; the first value if the second is 0
JW32_API int __Jw32Gcdi(int nFirst, int nSecond);

/// __Jw32Gcdi() for `LONG`.
/// @param lFirst, lSecond the values
/// @return the divisor; the first value if the second is 0
JW32_API LONG __Jw32Gcdl(LONG lFirst, LONG lSecond);

/// Greatest common divisor of doubles: the Euclidean algorithm with `fmod`, which ends when the
/// second value is 2 to the power of -52 or less, and so at once for a negative one.
/// @param dFirst, dSecond the values
/// @return the divisor; the first value if the second is not above that limit
JW32_API double __Jw32Gcdd(double dFirst, double dSecond);

/// Least common multiple: the product divided by the greatest common divisor, signs included. The
/// product is taken modulo 2 to the power of 32: values whose product does not fit 32 bits give a
/// defined but meaningless result.
/// @param nFirst, nSecond the values
/// @return the multiple; 0 if one of the values is 0
JW32_API int __Jw32Lcmi(int nFirst, int nSecond);

/// __Jw32Lcmi() for `LONG`.
/// @param lFirst, lSecond the values
/// @return the multiple; 0 if one of the values is 0
JW32_API LONG __Jw32Lcml(LONG lFirst, LONG lSecond);

/// Least common multiple of doubles: the product divided by the divisor as __Jw32Gcdd() finds it.
/// @param dFirst, dSecond the values
/// @return the multiple; 0.0 if the divisor is 0.0
JW32_API double __Jw32Lcmd(double dFirst, double dSecond);

/// Degrees Celsius to kelvin.
/// @param dCelsius degrees Celsius
/// @return kelvin
JW32_API double Jw32C2K(double dCelsius);

/// Kelvin to degrees Celsius.
/// @param dKelvin kelvin
/// @return degrees Celsius
JW32_API double Jw32K2C(double dKelvin);
