#pragma once

#include <QRgb>
#include <QVector>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "analysis/plots/levelColors.h"
#include "analysis/recordings/sweepReader.h"
#include "analysis/statistics/levelHistogram.h"

namespace rfu {

/// One pixel for each cell, a column for each point and a row for each sweep, the first on top. A
/// gap in time is one transparent row.
///
/// The colours depend on all sweeps. Until the last one is added their cells are held, two bytes each.
/// Where that takes more than kMostHeld, they are dropped, and draw() needs the sweeps a second time.
class RawWaterfall {
public:
    static constexpr std::size_t kMostHeld = 256U << 20;  // bytes
    static constexpr std::size_t kMostSide = 1000000;     // pixels; readers of PNG refuse more

    /// @param points at most kMostSide
    /// @param mostHeld another limit than kMostHeld, for tests
    RawWaterfall(WaterfallColors colors, bool showsGaps, std::size_t points,
                 std::size_t mostHeld = kMostHeld);

    void add(const Sweep& sweep);
    /// Whether the cells of all sweeps so far are held.
    bool holdsCells() const { return holdsCells_; }

    std::size_t sweeps() const { return sweeps_; }
    const LevelHistogram& levels() const { return histogram_; }
    /// Of the sweeps so far.
    LevelRange range() const { return colors_.rangeOf(histogram_); }

    /// Rows of the picture.
    std::size_t height() const { return rowOfEachSweep().back() + 1; }
    QVector<QRgb> colors() const;

    /// Calls use(row) with each row of indexes of colors(), the topmost first, until it returns false.
    /// @param next gives the sweeps again if their cells are not held; where it returns false because
    /// they end early, the rest stays blank
    void draw(const std::function<bool(Sweep&)>& next,
              const std::function<bool(const uchar* row)>& use);

private:
    bool hasHoles() const;
    PackedLevel* cellsOf(std::size_t sweep);
    void pack(const Sweep& sweep, PackedLevel* cells) const;
    void hold();
    std::vector<std::size_t> rowOfEachSweep() const;

    WaterfallColors colors_;
    bool showsGaps_;
    std::size_t points_;
    std::size_t mostHeld_;
    std::size_t sweepsOfBlock_;
    bool holdsCells_ = true;
    std::vector<std::unique_ptr<PackedLevel[]>> blocks_;
    std::vector<PackedLevel> packed_;  // of one sweep
    std::vector<std::int64_t> times_;
    std::size_t sweeps_ = 0;
    LevelHistogram histogram_;
};

}  // namespace rfu
