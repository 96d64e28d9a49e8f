#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "analysis/plots/drawing.h"
#include "analysis/plots/plotFrame.h"

namespace rfu {

/// Maximum, average and minimum over the points of a recording. Levels are in `levelUnit`, NaN
/// where nothing was measured; the three curves have a level for each place.
struct TracePlot {
    struct Mark {
        std::string label;
        std::size_t point;
    };
    /// A line beside the curves.
    struct Line {
        std::vector<double> places;  // ascending; two equal ones make a step
        std::vector<double> levels;
    };

    PlotShape shape;
    std::string title;
    std::string levelUnit;
    std::string placeName;            // of the horizontal axis, with its unit
    std::vector<double> places;       // of the points, ascending
    double end = 0.0;                 // of the horizontal axis, which begins at the first place
    std::vector<std::size_t> breaks;  // indexes of points that are not joined to the one before
    bool isCounted = false;           // whether the places are numbers of points
    std::vector<double> maximum;
    std::vector<double> average;
    std::vector<double> minimum;
    std::vector<Mark> marks;
    std::vector<Line> limits;
    std::vector<Line> mask;
};

Drawing drawingOf(TracePlot plot);

}  // namespace rfu
