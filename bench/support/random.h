// Numbers that are the same in every run.
#pragma once

#include <cstdint>
#include <random>

namespace rfu::bench {

/// The standard's distributions differ between libraries, this does not.
class Random {
public:
    explicit Random(std::uint64_t seed) : engine_(seed) {}

    /// A whole number from 0 to count - 1.
    std::uint64_t below(std::uint64_t count) { return engine_() % count; }

    /// A number from low to high.
    double between(double low, double high) {
        constexpr double kStep = 1.0 / 9007199254740992.0;  // 2^-53
        return low + (high - low) * kStep * static_cast<double>(engine_() >> 11);
    }

private:
    std::mt19937_64 engine_;
};

}  // namespace rfu::bench
