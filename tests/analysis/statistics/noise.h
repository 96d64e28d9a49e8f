// Levels of noise with a known distribution, the same with every standard library.
#pragma once

#include <cmath>
#include <cstdint>
#include <random>

namespace rfu::test {

/// Noise whose power is gamma distributed with a whole shape k: the sum of k exponential numbers, each
/// of which is the negative logarithm of a number evenly spread over (0, 1].
class Noise {
public:
    Noise(int shape, std::uint64_t seed) : shape_(shape), random_(seed) {}

    /// A level beside the median of the noise, to the hundredth of a dB as receivers write it.
    /// @param median dBm
    double level(double median) {
        double product =
            1.0;  // at least 2^-53 to the power of the shape, in practice exp(-2 shape)
        for (int i = 0; i < shape_; ++i) {
            product *= static_cast<double>((random_() >> 11) + 1) * 0x1p-53;
        }
        const double power = -std::log(product) / medianPower();
        return std::round((median + 10.0 * std::log10(power)) * 100.0) / 100.0;
    }

private:
    /// The point below which half of the gamma distribution lies.
    double medianPower() const {
        switch (shape_) {
            case 1:
                return 0.6931471805599453;
            case 10:
                return 9.668714614714131;
            default:  // 1 - 1/(9k) cubed, times k, within 1e-4 from 100 on
                return shape_ * std::pow(1.0 - 1.0 / (9.0 * shape_), 3);
        }
    }

    int shape_;
    std::mt19937_64 random_;
};

}  // namespace rfu::test
