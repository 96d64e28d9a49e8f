#include "analysis/plots/rawWaterfall.h"

#include <algorithm>

#include "analysis/recordings/sweepSpans.h"
#include "analysis/recordings/timeStamp.h"

namespace rfu {

namespace {

// More than 32 MiB, the largest threshold above which malloc() returns memory to the system at once.
constexpr std::size_t kCellsOfBlock = (33U << 20) / sizeof(PackedLevel);
constexpr int kTransparent = 0;

}  // namespace

RawWaterfall::RawWaterfall(WaterfallColors colors, bool showsGaps, std::size_t points,
                           std::size_t mostHeld)
    : colors_(std::move(colors)),
      showsGaps_(showsGaps),
      points_(points),
      mostHeld_(mostHeld),
      sweepsOfBlock_(std::max<std::size_t>(kCellsOfBlock / points, 1)),
      packed_(points) {}

void RawWaterfall::pack(const Sweep& sweep, PackedLevel* cells) const {
    packLevels(sweep.levels.data(), colors_.offsetsOrNull(), points_, cells);
}

PackedLevel* RawWaterfall::cellsOf(std::size_t sweep) {
    return &blocks_[sweep / sweepsOfBlock_][sweep % sweepsOfBlock_ * points_];
}

void RawWaterfall::add(const Sweep& sweep) {
    pack(sweep, packed_.data());
    histogram_.add(packed_.data(), points_);
    if (!sweep.time.empty()) {
        times_.push_back(microsecondsOf(sweep.time));
    }
    hold();
    ++sweeps_;
}

/// Holds the cells of the newest sweep.
void RawWaterfall::hold() {
    holdsCells_ = holdsCells_ && (sweeps_ + 1) * points_ * sizeof(PackedLevel) <= mostHeld_;
    if (!holdsCells_) {
        blocks_.clear();
        return;
    }
    if (sweeps_ % sweepsOfBlock_ == 0) {
        // Pages that are never written take no memory.
        blocks_.emplace_back(new PackedLevel[sweepsOfBlock_ * points_]);
    }
    std::copy(packed_.begin(), packed_.end(), cellsOf(sweeps_));
}

std::vector<std::size_t> RawWaterfall::rowOfEachSweep() const {
    std::vector<std::size_t> rows(sweeps_);
    const std::vector<TimeSpan> spans = spansOf(times_);
    for (std::size_t i = 1; i < sweeps_; ++i) {
        const bool isBehindGap = showsGaps_ && !spans.empty() && spans[i].begin > spans[i - 1].end;
        rows[i] = rows[i - 1] + (isBehindGap ? 2 : 1);
    }
    return rows;
}

bool RawWaterfall::hasHoles() const {
    return histogram_.notMeasured() > 0 || height() > sweeps_;
}

QVector<QRgb> RawWaterfall::colors() const {
    QVector<QRgb> table;
    for (int entry = 0; entry < Palette::kEntries; ++entry) {
        table.push_back(colors_.palette->color(entry));
    }
    if (hasHoles()) {
        table[kTransparent] = qRgba(0, 0, 0, 0);
    }
    return table;
}

void RawWaterfall::draw(const std::function<bool(Sweep&)>& next,
                        const std::function<bool(const uchar* row)>& use) {
    const LevelColors colors(*colors_.palette, colors_.rangeOf(histogram_));
    const std::vector<std::size_t> rows = rowOfEachSweep();
    const int lowest = hasHoles() ? kTransparent + 1 : 0;
    const std::vector<uchar> blank(points_, kTransparent);
    std::vector<uchar> pixels(points_);
    Sweep sweep;
    for (std::size_t i = 0; i < sweeps_; ++i) {
        const bool isBehindGap = i > 0 && rows[i] > rows[i - 1] + 1;
        if (isBehindGap && !use(blank.data())) {
            return;
        }
        const bool isThere = holdsCells_ || next(sweep);
        if (isThere) {
            const PackedLevel* cells = packed_.data();
            if (holdsCells_) {
                cells = cellsOf(i);
            } else {
                pack(sweep, packed_.data());
            }
            std::transform(cells, cells + points_, pixels.begin(), [&](PackedLevel level) {
                return static_cast<uchar>(
                    level == kNotMeasured ? kTransparent : std::max(colors.entry(level), lowest));
            });
        }
        if (!use(isThere ? pixels.data() : blank.data())) {
            return;
        }
    }
}

}  // namespace rfu
