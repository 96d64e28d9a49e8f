#pragma once

#include <optional>
#include <vector>

#include "analysis/recordings/sweepReader.h"

namespace rfu {

/// A range of frequencies with a signal that the receiver itself makes.
struct Spur {
    std::optional<double> frequency;  // MHz, its middle; none: the middle of every hop
    double width;                     // MHz
};

/// Of each point of an axis whether its bin reaches into one of the spurs.
std::vector<bool> pointsInSpurs(const FrequencyAxis& axis, const std::vector<Spur>& spurs);

}  // namespace rfu
