#include "recordings/checkedValues.h"

#include <rfUtils/units/HMath.h>

#include <string>

#include "analysis/statistics/noiseFloor.h"
#include "support/errors.h"
#include "support/units.h"

namespace rfu::command {

double positiveOf(const CommandLine& line, const char* name) {
    const double value = line.value<double>(name);
    if (!(value > 0.0)) {
        throw UsageError(std::string("--") + name + " has to be above zero");
    }
    return value;
}

std::optional<double> limitOf(const CommandLine& line) {
    const auto limit = line.find<Quantity>("limit");
    HMath math;
    return limit ? std::optional(levelOf(math, *limit->unit, limit->value, antennaOf(line)))
                 : std::nullopt;
}

const rfu::Unit& antennaUnitOf(const CommandLine& line, const rfu::Unit& shown) {
    const auto limit = line.find<Quantity>("limit");
    return limit && limit->unit->needsAntenna() ? *limit->unit : shown;
}

std::size_t floorWindowOf(const CommandLine& line) {
    constexpr int kMaxWindow = 1000000;
    const int window = line.value<int>("window");
    if (window < static_cast<int>(kMinWindow) || window > kMaxWindow) {
        throw UsageError("--window takes " + std::to_string(kMinWindow) + " to " +
                         std::to_string(kMaxWindow) + " points");
    }
    return static_cast<std::size_t>(window);
}

}  // namespace rfu::command
