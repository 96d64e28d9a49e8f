#include "support/plotOptions.h"

#include <cmath>
#include <string>

#include "support/errors.h"
#include "support/picture.h"

namespace rfu::command {

namespace {

int sideOf(const CommandLine& line, const char* option, int smallest, int largest) {
    const int side = line.value<int>(option);
    if (side < smallest || side > largest) {
        throw UsageError(std::string("--") + option + " takes " + std::to_string(smallest) +
                         " to " + std::to_string(largest) + " pixels");
    }
    return side;
}

}  // namespace

QSize sizeOf(const CommandLine& line, QSize smallest, QSize largest) {
    return {sideOf(line, "width", smallest.width(), largest.width()),
            sideOf(line, "height", smallest.height(), largest.height())};
}

PlotOptions plotOptionsOf(const CommandLine& line, const QStringList& inputs) {
    PlotOptions options;
    options.file = line.text("plot");
    if (!line.isSet("plot")) {
        for (const char* option : {"width", "height", "levels"}) {
            if (line.isSet(option)) {
                throw UsageError(std::string("--") + option + " needs --plot");
            }
        }
        return options;
    }
    options.shape.size = sizeOf(line, PlotShape::kSmallest, PlotShape::kLargest);
    if (const auto levels = line.find<NumberRange>("levels")) {
        options.shape.values = ValueRange{levels->low, levels->high};
        if (!Axis::isWide(*options.shape.values, Axis::kLevelDigits) ||
            !std::isfinite(levels->high - levels->low)) {
            throw UsageError("--levels: the two are too close together or too far apart");
        }
    }
    requireReplaceablePlot(options.file, inputs);
    return options;
}

}  // namespace rfu::command
