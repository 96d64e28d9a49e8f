#pragma once

#include <QImage>
#include <QRect>
#include <QSize>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "analysis/plots/bandPanels.h"
#include "analysis/plots/levelColors.h"
#include "analysis/plots/levelScale.h"
#include "analysis/plots/timeAxis.h"
#include "analysis/plots/waterfallRows.h"
#include "analysis/recordings/sweepReader.h"
#include "analysis/statistics/levelHistogram.h"

namespace rfu {

struct WaterfallOptions {
    QSize size = QSize(1920, 1080);  // from 320 x 200 to 10000 x 10000
    Reduction reduction = Reduction::Maximum;
    bool showsGaps = true;  // the time axis is to scale; else all sweeps are equally high
    LevelScale scale;
    WaterfallColors colors;
};

/// The positions in pixels, and the texts, of everything in a picture.
struct WaterfallLayout {
    QRect area;  // of all panels
    std::vector<BandPanel> panels;
    std::vector<PlaceTick> places;
    QString placeName;
    std::vector<TimeTick> rows;
    QString rowName;
    QRect bar;  // of colours
    std::vector<LevelTick> levels;
    LevelRange range;  // of the bar
    double barY(double level) const;
};

/// Frequency across, time down, level as colour: painted sweep by sweep, in memory that does not
/// grow with the recording. A pixel of several cells shows their levels reduced to one; a pixel without
/// a measured cell is transparent.
class Waterfall {
public:
    static constexpr QSize kSmallest = QSize(320, 200);
    static constexpr QSize kLargest = QSize(10000, 10000);

    /// @param axis of the sweeps; empty for a recording without frequencies
    Waterfall(WaterfallOptions options, const FrequencyAxis& axis, std::size_t points);

    void add(const Sweep& sweep);

    const LevelHistogram& levels() const { return histogram_; }
    /// Of the sweeps so far.
    LevelRange range() const { return options_.colors.rangeOf(histogram_); }

    /// Needs a QGuiApplication for its fonts. @pre there is a sweep
    WaterfallLayout layout() const;
    /// The same.
    QImage draw(const std::string& title) const;

private:
    struct RowSpan {
        double top;  // in pixels
        double bottom;
    };

    bool isTrueToScale() const { return hasTimes_ && options_.showsGaps; }
    std::vector<RowSpan> rowSpans() const;
    std::vector<TimeTick> rowTicks() const;
    bool paintCells(QImage& image) const;
    void fillLine(const std::vector<PackedLevel>& levels, const LevelColors& colors,
                  std::vector<QRgb>& line) const;

    WaterfallOptions options_;
    QRect area_;  // of all panels
    BandPanels panels_;
    bool hasFrequencies_;
    bool hasTimes_ = false;
    std::unique_ptr<WaterfallRows> rows_;
    LevelHistogram histogram_;
    std::vector<PackedLevel> packed_;  // of the newest sweep
    std::int64_t sweeps_ = 0;
};

}  // namespace rfu
