#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "analysis/plots/drawing.h"
#include "analysis/plots/plotFrame.h"

namespace rfu {

/// Two series of levels over the same places, and below them their difference. NaN where nothing was
/// measured.
struct ComparisonPlot {
    PlotShape shape;  // its values are those of the levels
    std::string title;
    std::string levelUnit;
    std::string placeName;            // of the horizontal axis, with its unit
    std::vector<double> places;       // of the points, ascending
    double end = 0.0;                 // of the horizontal axis, which begins at the first place
    std::vector<std::size_t> breaks;  // points to which no line leads, ascending
    bool isCounted = false;           // whether only whole places mean something
    std::string nameOfA;
    std::string nameOfB;
    std::vector<double> a;
    std::vector<double> b;
    std::vector<double> differences;  // dB
    std::optional<double> threshold;  // dB, to both sides
};

Drawing drawingOf(ComparisonPlot plot);

}  // namespace rfu
