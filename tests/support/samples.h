// Random arguments for comparisons, from fixed seeds, so that every run uses the same ones.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace rfu::test {

/// Whether an environment variable is 1.
inline bool isWished(const char* variable) {
    const char* const wish = std::getenv(variable);
    return wish != nullptr && std::strcmp(wish, "1") == 0;
}

inline bool isLongRun() {
    return isWished("RFUTILS_LONG_TESTS");
}

/// How many cases an operation is tried with: a million in a long run, and few where
/// RFUTILS_SHORT_TESTS is 1, for processors that are only emulated.
inline int caseCount() {
    if (isWished("RFUTILS_SHORT_TESTS")) {
        return 2000;
    }
    return isLongRun() ? 1000000 : 100000;
}

/// The same bits; any two NaN are the same, their sign and payload are left to the processor.
inline bool same(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

inline bool same(float a, float b) {
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

/// A text in which a NaN has no sign.
inline std::string unsignedNan(std::string text) {
    for (std::size_t at = 0; (at = text.find("-nan", at)) != std::string::npos;) {
        text.erase(at, 1);
    }
    return text;
}

/// Where the numbers of an operation come from besides the whole range of doubles.
struct Range {
    double low;
    double high;
    std::vector<double> thresholds;  ///< values at which its answer changes its form
};

class Samples {
public:
    explicit Samples(std::uint64_t seed) : random_(seed) {}

    std::uint64_t below(std::uint64_t bound) { return random_() % bound; }

    bool coin() { return below(2) == 0; }

    template <typename Container>
    const auto& oneOf(const Container& values) {
        return values[below(std::size(values))];
    }

    /// From low to high, each 53-bit fraction between them equally often.
    double between(double low, double high) {
        return low + (high - low) * (static_cast<double>(random_() >> 11) * 0x1p-53);
    }

    std::int32_t anyInteger() { return static_cast<std::int32_t>(random_()); }

    /// Any bit pattern: all exponents, denormals, infinities and NaN.
    double anyPattern() {
        const std::uint64_t bits = random_();
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    float anySinglePattern() {
        const auto bits = static_cast<std::uint32_t>(random_());
        float value = 0.0F;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    double special() {
        using Limits = std::numeric_limits<double>;
        static constexpr double kSpecial[] = {0.0,
                                              1.0,
                                              0.5,
                                              Limits::infinity(),
                                              Limits::quiet_NaN(),
                                              Limits::denorm_min(),
                                              Limits::min(),
                                              Limits::max(),
                                              Limits::epsilon(),
                                              2147483646.5,
                                              2147483647.0,
                                              2147483648.0,
                                              4294967296.0,
                                              0x1p53,
                                              3.4028234663852886e38,
                                              3.5e38,
                                              1.4012984643248171e-45};
        return signedAtRandom(oneOf(kSpecial));
    }

    /// Some steps of nextafter beside a value.
    double beside(double value) {
        const double target = coin() ? std::numeric_limits<double>::infinity()
                                     : -std::numeric_limits<double>::infinity();
        for (std::uint64_t steps = below(4); steps > 0; --steps) {
            value = std::nextafter(value, target);
        }
        return value;
    }

    /// The whole range of doubles, the range in use and the neighbourhood of its thresholds.
    double number(const Range& range) {
        switch (below(10)) {
            case 0:
                return anyPattern();
            case 1:
                return special();
            case 2:
                return signedAtRandom(std::pow(10.0, between(-40.0, 40.0)));
            case 3:
            case 4:
                return range.thresholds.empty() ? special() : beside(oneOf(range.thresholds));
            case 5:  // few binary digits: among them exact ties of any number of decimals
                return std::nearbyint(between(range.low, range.high) * 64.0) / 64.0;
            case 6:  // few decimals, as people write them
                return std::nearbyint(between(range.low, range.high) * 1000.0) / 1000.0;
            case 7:
                return beside(std::nearbyint(between(range.low, range.high)));
            default:
                return between(range.low, range.high);
        }
    }

    /// Characters of an alphabet, at most `longest` of them.
    std::string text(const std::string& alphabet, std::size_t longest) {
        std::string result(below(longest + 1), '\0');
        for (char& c : result) {
            c = oneOf(alphabet);
        }
        return result;
    }

    double signedAtRandom(double value) { return coin() ? value : -value; }

private:
    std::mt19937_64 random_;
};

}  // namespace rfu::test
