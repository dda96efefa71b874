/// @file
/// Greatest common divisors and least common multiples.
///
/// These functions cannot fail, keep no state and allocate nothing; any thread may call them.
#pragma once

#include <windows.h>

#include "jw32/export.h"

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
