#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

namespace rfu {

inline double milliwattsOf(double dBm) {
    return std::pow(10.0, dBm / 10.0);
}

inline double dBmOf(double milliwatts) {
    return 10.0 * std::log10(milliwatts);
}

/// milliwattsOf() for many levels. Receivers write whole hundredths of a dB, so each of those is computed
/// only once.
class MilliwattTable {
public:
    double of(double dBm) {
        const double hundredths = dBm * 100.0;
        if (std::abs(hundredths) < kLargest) {
            const int rounded = static_cast<int>(hundredths + (hundredths < 0.0 ? -0.5 : 0.5));
            if (rounded / 100.0 == dBm) {
                double& power =
                    powers_[static_cast<std::size_t>(std::ptrdiff_t{rounded} + kLargest)];
                if (power == 0.0) {
                    power = milliwattsOf(dBm);
                }
                return power;
            }
        }
        return milliwattsOf(dBm);
    }

private:
    static constexpr int kLargest = 32767;  // hundredths of a dB

    std::vector<double> powers_ =
        std::vector<double>(2 * kLargest + 1);  // 0 where not computed yet
};

}  // namespace rfu
