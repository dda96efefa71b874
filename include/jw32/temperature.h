/// @file
/// Temperatures in degrees Celsius and in kelvin.
///
/// These functions cannot fail, keep no state and allocate nothing; any thread may call them.
#pragma once

#include "jw32/export.h"

/// Degrees Celsius to kelvin.
/// @param dCelsius degrees Celsius
/// @return kelvin
JW32_API double Jw32C2K(double dCelsius);

/// Kelvin to degrees Celsius.
/// @param dKelvin kelvin
/// @return degrees Celsius
JW32_API double Jw32K2C(double dKelvin);
