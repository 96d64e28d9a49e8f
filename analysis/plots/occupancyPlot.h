#pragma once

#include <QSize>
#include <string>
#include <vector>

#include "analysis/plots/drawing.h"
#include "analysis/plots/plotFrame.h"
#include "analysis/recordings/channels.h"
#include "analysis/statistics/occupancy.h"
#include "analysis/support/numbers.h"

namespace rfu {

/// The occupancy of channels: as a line over frequency with its interval, or of each hour of day as
/// colour.
struct OccupancyPlot {
    /// Of each channel, from 0 to 1; NaN without samples.
    struct Row {
        int hour;  // kAllHours for all
        std::vector<double> share;
        std::vector<double> low;  // of the interval; none of single hours
        std::vector<double> high;
    };

    QSize size = PlotShape::kUsual;
    std::string title;
    std::vector<FrequencyRange> channels;
    FrequencyRange band;    // in which they lie
    std::vector<Row> rows;  // one under kAllHours, or one for each hour

    /// Without a title. Channels that were not recorded are left out.
    /// @pre there is a sweep
    OccupancyPlot(const std::vector<Channel>& all, const FrequencyRange& ofRecorded,
                  const HourlyOccupancy& counts);
};

Drawing drawingOf(OccupancyPlot plot);

}  // namespace rfu
