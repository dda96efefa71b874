// Greatest common divisor and least common multiple.
#include <cmath>
#include <cstdint>

#include "angles/constants.h"
#include "jw32/divisors.h"

namespace {

// The processor refuses the lowest value divided by -1, remainder included.
template <typename Integer>
Integer remainderOf(Integer a, Integer b) {
    return b == -1 ? 0 : a % b;
}

template <typename Integer>
Integer greatestDivisor(Integer a, Integer b) {
    while (b != 0) {
        const Integer rest = remainderOf(a, b);
        a = b;
        b = rest;
    }
    return a;
}

// Product and negation wrap around at 32 bits.
template <typename Integer>
Integer leastMultiple(Integer a, Integer b) {
    static_assert(sizeof(Integer) == sizeof(std::uint32_t));
    const Integer divisor = b != 0 ? greatestDivisor(b, remainderOf(a, b)) : a;
    if (divisor == 0) return 0;
    const auto product = static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b);
    if (divisor == -1) return static_cast<Integer>(0U - product);
    return static_cast<Integer>(product) / divisor;
}

}  // namespace

int __Jw32Gcdi(int nFirst, int nSecond) {
    return greatestDivisor(nFirst, nSecond);
}

LONG __Jw32Gcdl(LONG lFirst, LONG lSecond) {
    return greatestDivisor(lFirst, lSecond);
}

double __Jw32Gcdd(double dFirst, double dSecond) {
    while (dSecond > jw32::angles::kEpsilon) {
        const double rest = std::fmod(dFirst, dSecond);
        dFirst = dSecond;
        dSecond = rest;
    }
    return dFirst;
}

int __Jw32Lcmi(int nFirst, int nSecond) {
    return leastMultiple(nFirst, nSecond);
}

LONG __Jw32Lcml(LONG lFirst, LONG lSecond) {
    return leastMultiple(lFirst, lSecond);
}

double __Jw32Lcmd(double dFirst, double dSecond) {
    const double divisor =
        dSecond > jw32::angles::kEpsilon ? __Jw32Gcdd(dSecond, std::fmod(dFirst, dSecond)) : dFirst;
    if (divisor == 0.0) return 0.0;
    return (dSecond * dFirst) / divisor;
}
