#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "analysis/recordings/sweepReader.h"

namespace rfu {

/// Frequencies closer to each other differ by rounding only.
inline constexpr double kSameFrequency = 1e-9;  // MHz

/// The end of the bin of each point, in MHz: the beginning of the next bin of its band, or the end of the
/// band. The ends ascend within a band, so that no two bins share a frequency: a bin that the next hop
/// covers is empty.
std::vector<double> binEnds(const FrequencyAxis& axis);

/// Where a bin that is not empty lies, in MHz.
struct Bin {
    std::size_t point;
    double low;
    double high;

    double middle() const { return (low + high) / 2.0; }
};

/// All of them, ascending.
std::vector<Bin> filledBins(const FrequencyAxis& axis);

/// The band of a point, by its number.
std::size_t bandOf(const FrequencyAxis& axis, std::size_t point);

/// The first point of each band.
std::vector<std::size_t> firstPointsOf(const FrequencyAxis& axis);

/// "from 88 MHz to 108 MHz and from 400 MHz to 500 MHz"
std::string describe(const std::vector<FrequencyAxis::Band>& bands);

}  // namespace rfu
