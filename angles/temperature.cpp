// Temperatures in degrees Celsius and kelvin.
#include "jw32/temperature.h"

namespace {

constexpr double kCelsiusOffset = 273.15;

}  // namespace

double Jw32C2K(double dCelsius) {
    return dCelsius + kCelsiusOffset;
}

double Jw32K2C(double dKelvin) {
    return dKelvin - kCelsiusOffset;
}
