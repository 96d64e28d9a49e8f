#include "analysis/plots/rawWaterfall.h"

#include <algorithm>
#include <new>

#include "analysis/recordings/sweepSpans.h"
#include "analysis/recordings/timeStamp.h"

namespace rfu {

namespace {

// Above the largest threshold from which malloc() gives memory back to the system at once, so that
// the picture may take the place of the cells.
constexpr std::size_t kCellsOfBlock = (33U << 20) / sizeof(PackedLevel);
constexpr int kTransparent = 0;

QImage pictureOf(std::size_t width, std::size_t height, const Palette& palette, bool hasHoles) {
    QImage image(static_cast<int>(width), static_cast<int>(height), QImage::Format_Indexed8);
    if (image.isNull()) {
        throw std::bad_alloc();
    }
    QVector<QRgb> table;
    for (int entry = 0; entry < Palette::kEntries; ++entry) {
        table.push_back(palette.color(entry));
    }
    if (hasHoles) {
        table[kTransparent] = qRgba(0, 0, 0, 0);
    }
    image.setColorTable(table);
    return image;
}

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
        blocks_.emplace_back(new PackedLevel[sweepsOfBlock_ * points_]);  // most stays untouched
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

QImage RawWaterfall::draw(const std::function<bool(Sweep&)>& next) {
    const LevelColors colors(*colors_.palette, colors_.rangeOf(histogram_));
    const std::vector<std::size_t> rows = rowOfEachSweep();
    const bool hasHoles = histogram_.notMeasured() > 0 || rows.back() + 1 > sweeps_;
    QImage image = pictureOf(points_, rows.back() + 1, *colors_.palette, hasHoles);
    const int lowest = hasHoles ? kTransparent + 1 : 0;
    Sweep sweep;
    std::size_t row = 0;
    for (std::size_t i = 0; i < sweeps_; ++i) {
        for (; row < rows[i]; ++row) {  // of a gap
            std::fill_n(image.scanLine(static_cast<int>(row)), points_, kTransparent);
        }
        uchar* const pixels = image.scanLine(static_cast<int>(row++));
        if (!holdsCells_ && !next(sweep)) {
            std::fill_n(pixels, points_, kTransparent);
            continue;
        }
        const PackedLevel* cells = packed_.data();
        if (holdsCells_) {
            cells = cellsOf(i);
        } else {
            pack(sweep, packed_.data());
        }
        std::transform(cells, cells + points_, pixels, [&](PackedLevel level) {
            return static_cast<uchar>(
                level == kNotMeasured ? kTransparent : std::max(colors.entry(level), lowest));
        });
        if (holdsCells_ && (i + 1) % sweepsOfBlock_ == 0) {
            blocks_[i / sweepsOfBlock_].reset();
        }
    }
    blocks_.clear();
    holdsCells_ = false;
    return image;
}

}  // namespace rfu
