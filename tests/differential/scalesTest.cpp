#include <support/samples.h>
#include "unitRules.h"

#include <rfUtils/units/calculateUnit.h>

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

namespace {

using namespace rfu::test;

const Range kLevels = {-200.0, 150.0, {0.0, 13.0103, -46.9897, 30.0}};
const Range kScaleFrequencies = {0.0, 30000.0, {1.0, 100.0, 1000.0}};
const Range kScaleGains = {-20.0, 60.0, {0.0}};

double correction(double frequency, double gain) {
    return static_cast<float>(20.0 * std::log10(frequency) + (-29.8 - gain));
}

double toScale(double p, double frequency, int scale, double gain) {
    const char* const units[] = {"dBm",     "dBV",    "dBmV",  "dBuV",  "V",     "W",
                                 "dBuV/m",  "dBmV/m", "dBV/m", "V/m",   "W/m^2", "dBm/m^2",
                                 "dBW/m^2", "A/m",    "dBA/m", "W/cm^2"};
    const bool isKnown = scale >= 0 && scale < static_cast<int>(std::size(units));
    return isKnown ? numberIn(units[scale], p, correction(frequency, gain)) : 0.0;
}

double fromScale(double v, double frequency, int scale, double gain, double before) {
    const double k = correction(frequency, gain);
    switch (scale) {
        case 0:
            return v;
        case 1:
            return v + 13.0103;
        case 2:
            return v - 46.9897;
        case 3:
            return v - 106.9897;
        case 4:
        case 5:
            return 20.0 * std::log10(v * 1000.0) - 46.9897;
        case 6:
            return v - 107.0 - k;
        case 7:
            return v - 47.0 - k;
        case 8:
            return v + 13.0 - k;
        case 9:
            return before;
        case 10:
            return 10.0 * std::log10(v * 376.99111843077515) + 13.0 - k;
        case 11:
            return v + 8.763311187417589 - k;
        case 12:
            return v + 38.75999999999999 - k;
        case 13:
            return 20.0 * std::log10(v * 377000000.0) - 107.0 - k;
        case 14:
            return v + 64.53 - k;
        case 15:
            return 10.0 * std::log10(v * 3769911.1843077512) + 13.0 - k;
        default:
            return 0.0;
    }
}

struct Arguments {
    explicit Arguments(Samples& samples)
        : value(samples.number(kLevels)),
          frequency(samples.number(kScaleFrequencies)),
          scale(samples.below(20) == 0 ? samples.anyInteger()
                                       : static_cast<int>(samples.below(19)) - 1),
          gain(samples.number(kScaleGains)),
          before(samples.anyPattern()) {}

    double value;
    double frequency;
    int scale;
    double gain;
    double before;
};

std::ostream& operator<<(std::ostream& out, const Arguments& a) {
    return out << std::hexfloat << a.value << ' ' << a.frequency << ' ' << a.scale << ' ' << a.gain;
}

TEST(DifferentialScales, actdBm2OtherScale) {
    Samples samples(20240902);
    calculateUnit calculate;
    for (int i = caseCount(); i > 0; --i) {
        const Arguments a(samples);
        double got = a.before;
        ASSERT_TRUE(calculate.actdBm2OtherScale(a.value, a.frequency, a.scale, a.gain, got));
        const double expected = toScale(a.value, a.frequency, a.scale, a.gain);
        ASSERT_TRUE(same(got, expected)) << a << ": " << got << " instead of " << expected;
    }
}

TEST(DifferentialScales, actOtherScale2dBm) {
    Samples samples(20240903);
    for (int i = caseCount(); i > 0; --i) {
        const Arguments a(samples);
        double got = a.before;
        ASSERT_TRUE(actOtherScale2dBm(a.value, a.frequency, a.scale, a.gain, got));
        const double expected = fromScale(a.value, a.frequency, a.scale, a.gain, a.before);
        ASSERT_TRUE(same(got, expected)) << a << ": " << got << " instead of " << expected;
    }
}

}  // namespace
