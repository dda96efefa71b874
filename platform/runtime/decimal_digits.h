// Decimal forms of doubles, with exact ties rounded away from zero.
#pragma once

#include <cstddef>

// Room for the integer digits of the largest double, a point and decimals.
inline constexpr std::size_t decimalRoom = 1536;
inline constexpr int mostDecimals = 1100;  // no double has more

// Writes the magnitude with that many decimals, as "12.50" or "12", or "inf" or "nan", without a
// terminator. The point is a point whatever the locale. Returns the length.
std::size_t writeDecimal(char (&text)[decimalRoom], double magnitude, int decimals);
