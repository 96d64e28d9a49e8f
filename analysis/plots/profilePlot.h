#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analysis/plots/drawing.h"
#include "analysis/plots/plotFrame.h"

namespace rfu {

/// The terrain below a radio link, in metres.
struct ProfilePlot {
    /// Where the line of sight is least clear.
    struct Mark {
        std::string label;
        double distance;
        double ground;
        double lineOfSight;
    };

    QSize size = PlotShape::kUsual;
    std::string title;
    std::vector<double> distances;  // ascending, from one end to the other
    std::vector<double> ground;     // with the Earth's bulge; NaN where it was not measured
    double startAntenna = 0.0;      // heights above the datum of the ground
    double endAntenna = 0.0;
    double fresnelRadius = 0.0;  // of the first Fresnel zone, at the middle of the link
    double clearRatio = 0.0;     // the share of the radius that has to be clear
    std::optional<Mark> mark;
};

Drawing drawingOf(ProfilePlot plot);

}  // namespace rfu
