#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "analysis/recordings/sweepReader.h"

namespace rfu {

/// Frequencies nearer to each other are the same but for rounding.
inline constexpr double kSameFrequency = 1e-9;  // MHz

/// Where the bin of each point ends, in MHz: where the next one of its band begins, at the last one
/// where the band ends. Ascending within a band, so that no two bins share a frequency: a bin that the
/// next hop covers is empty.
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
