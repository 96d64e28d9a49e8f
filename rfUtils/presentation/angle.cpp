#include <rfUtils/presentation/rfUtils.h>

#include <rfUtils/detail/saturate.h>

#include <cmath>

namespace {

// Factors: a division by the reciprocal would change the last digit of some results.
constexpr double kDegreesPerMinute = 0.016666666666666666;
constexpr double kDegreesPerSecond = 0.0002777777777777778;

double wholePart(double value) {
    return rfu::detail::toInt32(value);
}

}  // namespace

bool rfUtils::convertDdFromDms(const short& sign, const double& degrees, const double& minutes,
                               const double& seconds, double& decimalDegrees) {
    double magnitude = std::fma(minutes, kDegreesPerMinute, degrees);
    magnitude = std::fma(seconds, kDegreesPerSecond, magnitude);
    decimalDegrees = static_cast<double>(sign) * magnitude;
    return true;
}

bool rfUtils::convertDmsFromDd(const double& decimalDegrees, short& sign, double& degrees,
                               double& minutes, double& seconds) {
    // The outputs are written last: one of them may be the input.
    const bool positive = decimalDegrees >= 0.0;
    const double magnitude = positive ? decimalDegrees : -decimalDegrees;
    const double wholeDegrees = wholePart(magnitude);
    const double fraction = magnitude - wholeDegrees;
    const double wholeMinutes = wholePart(fraction * 60.0);
    const double rest = std::fma(-wholeMinutes, kDegreesPerMinute, fraction);
    sign = positive ? 1 : -1;
    degrees = wholeDegrees;
    minutes = wholeMinutes;
    seconds = wholePart(rest * 3600.0);
    return true;
}
