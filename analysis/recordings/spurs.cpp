#include "analysis/recordings/spurs.h"

namespace rfu {

std::vector<bool> pointsInSpurs(const FrequencyAxis& axis, const std::vector<Spur>& spurs) {
    std::vector<bool> isInSpur;
    isInSpur.reserve(axis.points.size());
    for (const AxisHop& hop : axis.hops) {
        for (std::size_t i = hop.firstBin; i < hop.firstBin + hop.bins; ++i) {
            const double low = hop.low + static_cast<double>(i) * hop.step;
            bool isIn = false;
            for (const Spur& spur : spurs) {
                const double middle = spur.frequency ? *spur.frequency * kHertzPerMegahertz
                                                     : (hop.low + hop.high) / 2.0;
                const double half = spur.width / 2.0 * kHertzPerMegahertz;
                isIn = isIn || (low < middle + half && low + hop.step > middle - half);
            }
            isInSpur.push_back(isIn);
        }
    }
    return isInSpur;
}

}  // namespace rfu
