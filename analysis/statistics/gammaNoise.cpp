#include "analysis/statistics/gammaNoise.h"

#include <boost/math/special_functions/gamma.hpp>
#include <cmath>

namespace rfu {

namespace {

// The same steps on every processor: no long double.
using Policy = boost::math::policies::policy<boost::math::policies::promote_double<false>>;

double powerBelow(double shape, double share) {
    return boost::math::gamma_p_inv(shape, share, Policy());
}

double powerAbove(double shape, double share) {
    return boost::math::gamma_q_inv(shape, share, Policy());
}

double decibels(double quotient) {
    return 10.0 * std::log10(quotient);
}

}  // namespace

double noiseSpread(double shape) {
    return decibels(powerBelow(shape, kHighShare) / powerBelow(shape, kLowShare));
}

double noiseShape(double spread) {
    double low = std::log(kMinNoiseShape);
    double high = std::log(kMaxNoiseShape);
    if (!(spread < noiseSpread(kMinNoiseShape))) {
        return kMinNoiseShape;
    }
    if (spread <= noiseSpread(kMaxNoiseShape)) {
        return kMaxNoiseShape;
    }
    for (int i = 0; i < 40; ++i) {
        const double middle = (low + high) / 2.0;
        (noiseSpread(std::exp(middle)) > spread ? low : high) = middle;
    }
    return std::exp((low + high) / 2.0);
}

double noiseExcess(double shape, double share, double uncertainty) {
    const double median = powerBelow(shape, 0.5);
    const double exact = decibels(powerAbove(shape, share) / median);
    if (uncertainty <= 0.0) {
        return exact;
    }
    // The share above a level, as the mean over the places where the median may be.
    constexpr int kSteps = 60;
    constexpr double kDeviations = 7.0;
    const auto shareAbove = [&](double excess) {
        double sum = 0.0;
        double weights = 0.0;
        for (int i = -kSteps; i <= kSteps; ++i) {
            const double deviations = kDeviations * i / kSteps;
            const double weight = std::exp(-deviations * deviations / 2.0);
            const double level = excess + deviations * uncertainty;
            sum += weight *
                   boost::math::gamma_q(shape, median * std::pow(10.0, level / 10.0), Policy());
            weights += weight;
        }
        return sum / weights;
    };
    double low = exact;
    double high = exact + kDeviations * uncertainty;
    for (int i = 0; i < 30; ++i) {
        const double middle = (low + high) / 2.0;
        (shareAbove(middle) > share ? low : high) = middle;
    }
    return high;
}

}  // namespace rfu
