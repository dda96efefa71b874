// A double that compares by its bits, so that tests tell 0.0 from -0.0 and neighbours apart.
#pragma once

#include <bit>
#include <cstdint>
#include <iomanip>
#include <ostream>

struct Exact {
    double value;

    friend bool operator==(Exact left, Exact right) {
        return std::bit_cast<std::uint64_t>(left.value) ==
               std::bit_cast<std::uint64_t>(right.value);
    }
    friend std::ostream& operator<<(std::ostream& out, Exact exact) {
        return out << std::setprecision(17) << exact.value;
    }
};
