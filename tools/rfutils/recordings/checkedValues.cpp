#include "recordings/checkedValues.h"

#include <string>

#include "analysis/statistics/noiseFloor.h"
#include "support/errors.h"

namespace rfu::command {

double positiveOf(const CommandLine& line, const char* name) {
    const double value = line.value<double>(name);
    if (!(value > 0.0)) {
        throw UsageError(std::string("--") + name + " has to be above zero");
    }
    return value;
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
