#include "analysis/statistics/runs.h"

namespace rfu {

std::vector<Run> runsAbove(const std::vector<double>& excess, const std::vector<double>& levels,
                           const std::vector<std::size_t>& bands) {
    std::vector<Run> runs;
    auto band = bands.begin();
    bool isOpen = false;
    for (std::size_t i = 0; i < excess.size(); ++i) {
        for (; band != bands.end() && *band <= i; ++band) {
            isOpen = false;
        }
        if (!(excess[i] > 0.0)) {
            isOpen = isOpen && i - runs.back().last < 2;
        } else if (!isOpen) {
            runs.push_back({i, i, i});
            isOpen = true;
        } else {
            Run& run = runs.back();
            run.last = i;
            run.strongest = levels[i] > levels[run.strongest] ? i : run.strongest;
        }
    }
    return runs;
}

}  // namespace rfu
