#include "analysis/plots/occupancyPlot.h"

#include <QColor>
#include <QFontMetricsF>
#include <QPainter>
#include <QPen>
#include <QRect>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "analysis/plots/axis.h"
#include "analysis/plots/curves.h"
#include "analysis/plots/palette.h"
#include "analysis/plots/plotFrame.h"
#include "analysis/plots/style.h"
#include "analysis/recordings/bins.h"

namespace rfu {

namespace {

constexpr double kHours = 24.0;

const CurveStyle kShare = {"occupancy", QColor(0x1f, 0x4e, 0x79), 1.8};
const CurveStyle kInterval = {"95 % interval", QColor(0xb4, 0xc5, 0xd6), 8.0};

QString placeName() {
    return QStringLiteral("frequency in MHz");
}

/// @param highest of the vertical axis, which begins at 0
PlotFrame frameOf(const OccupancyPlot& plot, double highest, std::vector<CurveStyle> legend) {
    const ValueRange vertical = {0.0, highest};
    return {{plot.size, vertical},
            {{plot.band.low, plot.band.high}, Axis::kPlaceDigits},
            {vertical, Axis::kLevelDigits},
            std::move(legend)};
}

/// The places of a line over channels and the values at them: both ends of each channel or, where
/// channels overlap, its middle.
struct Steps {
    std::vector<double> places;
    std::vector<std::size_t> breaks;
    bool areOfEnds = true;

    explicit Steps(const std::vector<FrequencyRange>& channels) {
        for (std::size_t i = 1; i < channels.size(); ++i) {
            areOfEnds = areOfEnds && channels[i].low >= channels[i - 1].high - kSameFrequency;
        }
        for (std::size_t i = 0; i < channels.size(); ++i) {
            const FrequencyRange& channel = channels[i];
            if (!areOfEnds) {
                places.push_back((channel.low + channel.high) / 2.0);
                continue;
            }
            if (i > 0 && channel.low > channels[i - 1].high + kSameFrequency) {
                breaks.push_back(places.size());
            }
            places.push_back(i > 0 ? std::max(channel.low, places.back()) : channel.low);
            places.push_back(channel.high);
        }
    }

    std::vector<double> of(const std::vector<double>& values) const {
        std::vector<double> result;
        for (const double value : values) {
            result.insert(result.end(), areOfEnds ? 2 : 1, value);
        }
        return result;
    }
};

void drawLine(QPainter& painter, const OccupancyPlot& plot) {
    const PlotFrame frame = frameOf(plot, 1.0, {kShare, kInterval});
    frame.drawTitle(painter, qtText(plot.title));
    frame.drawLegend(painter);
    frame.drawAxes(painter, placeName(), QStringLiteral("occupancy"));
    const OccupancyPlot::Row& row = plot.rows.front();
    const Steps steps(plot.channels);
    const Curves curves(steps.places, steps.breaks, frame);
    curves.fillBetween(painter, steps.of(row.high), steps.of(row.low), kInterval.color);
    curves.drawLine(painter, steps.of(row.share), kShare);
}

QRgb colorOf(double share) {
    const Palette& palette = kPalettes[0];
    return palette.color(static_cast<int>(std::lround(share * (Palette::kEntries - 1))));
}

/// Colours from 0 to 1 where the legend stands.
void drawScale(QPainter& painter, const PlotFrame& frame) {
    const int width = std::min(static_cast<int>(frame.area().width() / 4.0), Palette::kEntries);
    constexpr int kHeight = 12;
    constexpr int kMiddle = 56;
    painter.setFont(fontOf(13));
    painter.setPen(kInk);
    const QFontMetricsF metrics(painter.font());
    const double base = kMiddle + metrics.capHeight() / 2;
    const int left = static_cast<int>(frame.area().left()) + 18;
    painter.drawText(QPointF(frame.area().left(), base), QStringLiteral("0"));
    for (int i = 0; i < width; ++i) {
        painter.fillRect(left + i, kMiddle - kHeight / 2, 1, kHeight,
                         QColor(colorOf(i / (width - 1.0))));
    }
    painter.drawText(QPointF(left + width + 8, base),
                     QStringLiteral("1   occupancy, the highest within a pixel"));
}

/// The cells of an hour: a pixel column shows the highest share of its channels.
void drawHour(QPainter& painter, const PlotFrame& frame,
              const std::vector<FrequencyRange>& channels, const OccupancyPlot::Row& row) {
    const QRect area = frame.area().toRect();
    std::vector<double> columns(static_cast<std::size_t>(area.width()),
                                std::numeric_limits<double>::quiet_NaN());
    for (std::size_t i = 0; i < channels.size(); ++i) {
        if (std::isnan(row.share[i])) {
            continue;
        }
        const auto columnOf = [&](double place) {
            return std::clamp(static_cast<int>(std::lround(frame.x(place))) - area.left(), 0,
                              area.width());
        };
        const int last = area.width() - 1;
        const int first = std::min(columnOf(channels[i].low), last);
        const int end = std::max(columnOf(channels[i].high), first + 1);
        for (int x = first; x < end; ++x) {
            double& column = columns[static_cast<std::size_t>(x)];
            column = column >= row.share[i] ? column : row.share[i];
        }
    }
    const int top = static_cast<int>(std::lround(frame.y(row.hour + 1)));
    const int bottom = static_cast<int>(std::lround(frame.y(row.hour)));
    for (std::size_t first = 0; first < columns.size();) {
        std::size_t end = first + 1;
        while (end < columns.size() && columns[end] == columns[first]) {
            ++end;
        }
        if (!std::isnan(columns[first])) {
            painter.fillRect(area.left() + static_cast<int>(first), top,
                             static_cast<int>(end - first), bottom - top,
                             QColor(colorOf(columns[first])));
        }
        first = end;
    }
}

void drawHours(QPainter& painter, const OccupancyPlot& plot) {
    const PlotFrame frame = frameOf(plot, kHours, {});
    frame.drawTitle(painter, qtText(plot.title));
    frame.drawAxes(painter, placeName(), QStringLiteral("hour of day"));
    drawScale(painter, frame);
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (const OccupancyPlot::Row& row : plot.rows) {
        drawHour(painter, frame, plot.channels, row);
    }
}

}  // namespace

OccupancyPlot::OccupancyPlot(const std::vector<Channel>& all, const FrequencyRange& ofRecorded,
                             const HourlyOccupancy& counts)
    : band(ofRecorded) {
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    for (const Channel& channel : all) {
        if (channel.isRecorded()) {
            channels.push_back(channel.range);
        }
    }
    for (const auto& [hour, ofHour] : counts) {
        Row row = {hour, {}, {}, {}};
        for (std::size_t i = 0; i < all.size(); ++i) {
            if (!all[i].isRecorded()) {
                continue;
            }
            const OccupancyCount& count = ofHour.channels[i];
            const bool isMeasured = count.samples > 0;
            const ShareInterval interval =
                isMeasured ? wilsonInterval(count) : ShareInterval{kNone, kNone};
            row.share.push_back(isMeasured ? count.share() : kNone);
            if (hour == kAllHours) {
                row.low.push_back(interval.low);
                row.high.push_back(interval.high);
            }
        }
        rows.push_back(std::move(row));
    }
}

Drawing drawingOf(OccupancyPlot plot) {
    Drawing drawing = {plot.size, plot.title, {}};
    drawing.paint = [plot = std::move(plot)](QPainter& painter) {
        if (plot.rows.front().hour == kAllHours) {
            drawLine(painter, plot);
        } else {
            drawHours(painter, plot);
        }
    };
    return drawing;
}

}  // namespace rfu
