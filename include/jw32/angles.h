/// @file
/// Conversions of angles between radians, decimal degrees and gons, their parts, and packed
/// numbers.
///
/// Notations
/// - Radians, degrees, gons: one `double`; the full circle is 2π, 360, 400.
/// - DMS parts: sign, degrees, minutes (60 to the degree), seconds (60 to the minute).
/// - GCCC parts: sign, gons, centesimal minutes (100 to the gon), centesimal seconds (100 to the
///   minute).
/// - Packed DMS: one `double` DDD.MMSSsss: degrees in front of the point, two decimals of minutes,
///   two of whole seconds, then decimals of the seconds. The number's sign is the angle's.
/// - Packed GCCC: GGG.CCcccc in the same layout, which is the angle in gons.
///
/// Parts. As a result, the sign is -1 or 1 and the other parts are not negative; the sign of a
/// negative zero is 1. As an argument, a sign below 0 means a negative angle, everything else a
/// positive one; the sign of the degrees or gons is dropped; minutes count with their sign, and
/// negative seconds count as 0.
///
/// `nDecimals` is the number of decimals that the caller will show: of the seconds where the result
/// is in parts, of the packed number where the result is packed (so that 4 means whole seconds).
/// With 0 or more, seconds that would be shown as a full minute become 0 and carry into the minutes
/// and from there into the degrees or gons; packed results are rounded besides, parts are not. Any
/// negative value switches carry and rounding off.
///
/// `bWrap`: non-zero takes full circles off until the result lies within one; 0 leaves it alone.
/// The sign is not changed by this.
///
/// Limits. The arithmetic is plain IEEE double precision, one rounding for each operation, and
/// gives the same bits in every build. A part that does not fit a 32-bit `int` becomes the nearest
/// value that does (NaN becomes 0), and the parts behind it then mean nothing. A packed value so
/// large that a full circle no longer changes it (2 to the power of 56 or more) is folded to its
/// exact remainder; an infinite one to NaN.
///
/// None of these functions can fail, keeps state or allocates; they may be called on any thread.
#pragma once

#include "jw32/export.h"

/// DMS parts to degrees.
/// @param nSign below 0 for a negative angle
/// @param nDegrees degrees; their sign is dropped
/// @param nMinutes minutes, taken with their sign
/// @param dSeconds seconds; below 0 they count as 0
/// @return degrees
JW32_API double Jw32DMS2Deg(int nSign, int nDegrees, int nMinutes, double dSeconds);

/// DMS parts to radians.
/// @param nSign, nDegrees, nMinutes, dSeconds the parts, as in Jw32DMS2Deg()
/// @return radians
JW32_API double Jw32DMS2Rad(int nSign, int nDegrees, int nMinutes, double dSeconds);

/// Packed DMS to radians.
/// @param dPacked packed DMS
/// @return radians
JW32_API double Jw32DMS2Rad(double dPacked);

/// GCCC parts to gons.
/// @param nSign below 0 for a negative angle
/// @param nGons gons; their sign is dropped
/// @param nMinutes centesimal minutes, taken with their sign
/// @param dSeconds centesimal seconds; below 0 they count as 0
/// @return gons
JW32_API double Jw32GCCC2Grad(int nSign, int nGons, int nMinutes, double dSeconds);

/// GCCC parts to radians.
/// @param nSign, nGons, nMinutes, dSeconds the parts, as in Jw32GCCC2Grad()
/// @return radians
JW32_API double Jw32GCCC2Rad(int nSign, int nGons, int nMinutes, double dSeconds);

/// Packed GCCC, that is gons, to radians.
/// @param dPacked packed GCCC
/// @return radians
JW32_API double Jw32GCCC2Rad(double dPacked);

/// Degrees to DMS parts. The seconds are not rounded.
/// @param dDegrees degrees
/// @param[out] nSign -1 below 0, else 1
/// @param[out] nDegrees whole degrees
/// @param[out] nMinutes 0 to 59
/// @param[out] dSeconds 0 to below 60
/// @param nDecimals decimals of the seconds that will be shown; negative for no carry
/// @param bWrap non-zero folds the degrees to 0 to 359
JW32_API void Jw32Deg2DMS(double dDegrees, int& nSign, int& nDegrees, int& nMinutes,
                          double& dSeconds, int nDecimals, int bWrap);

/// Gons to GCCC parts. The seconds are not rounded.
/// @param dGons gons
/// @param[out] nSign -1 below 0, else 1
/// @param[out] nGons whole gons
/// @param[out] nMinutes 0 to 99
/// @param[out] dSeconds 0 to below 100
/// @param nDecimals decimals of the seconds that will be shown; negative for no carry
/// @param bWrap non-zero folds the gons to 0 to 399
JW32_API void Jw32Grad2GCCC(double dGons, int& nSign, int& nGons, int& nMinutes, double& dSeconds,
                            int nDecimals, int bWrap);

/// Radians to DMS parts.
/// @param dRadians radians
/// @param[out] nSign, nDegrees, nMinutes, dSeconds the parts, as in Jw32Deg2DMS()
/// @param nDecimals decimals of the seconds that will be shown; negative for no carry
/// @param bWrap non-zero folds the degrees to 0 to 359
JW32_API void Jw32Rad2DMS(double dRadians, int& nSign, int& nDegrees, int& nMinutes,
                          double& dSeconds, int nDecimals, int bWrap);

/// Radians to GCCC parts.
/// @param dRadians radians
/// @param[out] nSign, nGons, nMinutes, dSeconds the parts, as in Jw32Grad2GCCC()
/// @param nDecimals decimals of the seconds that will be shown; negative for no carry
/// @param bWrap non-zero folds the gons to 0 to 399
JW32_API void Jw32Rad2GCCC(double dRadians, int& nSign, int& nGons, int& nMinutes, double& dSeconds,
                           int nDecimals, int bWrap);

/// Splits packed DMS into its parts. What stands in the number is given as it stands: minutes of 60
/// to 99 stay, and so do seconds of 60 to 99 as long as `nDecimals` is negative; with 0 or more
/// such seconds become 0 and carry one minute.
/// @param dPacked packed DMS
/// @param[out] nSign -1 below 0, else 1
/// @param[out] nDegrees whole degrees
/// @param[out] nMinutes 0 to 99
/// @param[out] dSeconds 0 to below 100, not rounded
/// @param nDecimals decimals of the seconds that will be shown; negative for no carry
/// @param bWrap non-zero folds the degrees to 0 to 359
JW32_API void Jw32DMS2DMS(double dPacked, int& nSign, int& nDegrees, int& nMinutes,
                          double& dSeconds, int nDecimals, int bWrap);

/// Splits packed GCCC into its parts. A fraction within 5e-09 below 1 gives 100 minutes.
/// @param dPacked packed GCCC
/// @param[out] nSign -1 below 0, else 1
/// @param[out] nGons whole gons
/// @param[out] nMinutes 0 to 100
/// @param[out] dSeconds 0 to below 100, not rounded
/// @param nDecimals decimals of the seconds that will be shown; negative for no carry
/// @param bWrap non-zero folds the gons to 0 to 399
JW32_API void Jw32GCCC2GCCC(double dPacked, int& nSign, int& nGons, int& nMinutes, double& dSeconds,
                            int nDecimals, int bWrap);

/// Packs DMS parts into one number. Seconds and minutes of 60 or more carry first. With fewer than
/// 4 decimals the digits that the rounding drops decide over a carry of one minute: 55 seconds or
/// more for 3 decimals, 50 seconds for 2, 55 minutes for 1, 50 minutes for 0.
/// @param nSign below 0 for a negative angle
/// @param nDegrees degrees; their sign is dropped, before anything is carried into them
/// @param nMinutes minutes, taken with their sign
/// @param dSeconds seconds; below 0 they count as 0
/// @param nDecimals decimals of the packed number to round to; negative for neither carry nor
///                  rounding
/// @param bWrap non-zero folds the result into one circle; a few units of the last place below 360
///              count as 360 there
/// @return packed DMS; -0.0 for a negative angle that comes to 0
JW32_API double Jw32DMS2DMS(int nSign, int nDegrees, int nMinutes, double dSeconds, int nDecimals,
                            int bWrap);

/// Packs GCCC parts into one number, which is the angle in gons.
/// @param nSign below 0 for a negative angle
/// @param nGons gons; their sign is dropped
/// @param nMinutes centesimal minutes, taken with their sign; 100 or more are welcome
/// @param dSeconds centesimal seconds; below 0 they count as 0, 100 or more are welcome
/// @param nDecimals decimals of the packed number to round to; negative for no rounding
/// @param bWrap non-zero folds the result into one circle; a few units of the last place below 400
///              count as 400 there
/// @return packed GCCC; -0.0 for a negative angle that comes to 0
JW32_API double Jw32GCCC2GCCC(int nSign, int nGons, int nMinutes, double dSeconds, int nDecimals,
                              int bWrap);

/// Radians to packed DMS: Jw32Deg2DMS() and then the packing Jw32DMS2DMS(), both with the same
/// `nDecimals` and `bWrap`, so that `nDecimals` counts decimals of the seconds for the carry of the
/// first and decimals of the packed number in the second.
/// @param dRadians radians
/// @param nDecimals decimals of the packed number to round to; negative for neither carry nor
///                  rounding
/// @param bWrap non-zero folds the result into one circle
/// @return packed DMS
JW32_API double Jw32Rad2DMS(double dRadians, int nDecimals, int bWrap);

/// Radians to packed GCCC, by Jw32Grad2GCCC() and the packing Jw32GCCC2GCCC() in the same way.
/// @param dRadians radians
/// @param nDecimals decimals of the packed number to round to; negative for neither carry nor
///                  rounding
/// @param bWrap non-zero folds the result into one circle
/// @return packed GCCC
JW32_API double Jw32Rad2GCCC(double dRadians, int nDecimals, int bWrap);
