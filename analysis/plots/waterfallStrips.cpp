#include "analysis/plots/waterfallStrips.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace rfu {

namespace {

constexpr LevelRange kFirstRange = {-120.0, -20.0};

LevelRange widened(const LevelRange& range) {
    return {range.low, std::max(range.high, range.low + kNarrowestRange)};
}

PackedLevel maximumOf(const PackedLevel* levels, const ColumnPoints& column) {
    PackedLevel maximum = kNotMeasured;  // which is below all others
    for (std::size_t point = column.begin; point < column.end; ++point) {
        maximum = std::max(maximum, levels[point]);
    }
    return maximum;
}

}  // namespace

WaterfallStrips::WaterfallStrips() {
    setColors(kPalettes[0], kFirstRange);
}

void WaterfallStrips::setColumns(std::vector<ColumnPoints> columns, int width) {
    clear();
    columns_ = std::move(columns);
    width_ = static_cast<std::size_t>(width);
}

void WaterfallStrips::setColors(const Palette& palette, const LevelRange& range) {
    colors_ = std::make_unique<const LevelColors>(palette, widened(range));
    for (auto& [number, strip] : strips_) {
        strip.uncoloured = strip.held;
        strip.revision = ++lastRevision_;
    }
}

void WaterfallStrips::keepOnly(std::uint64_t first, std::uint64_t last) {
    strips_.erase(strips_.begin(), strips_.lower_bound(stripOf(first)));
    strips_.erase(strips_.upper_bound(stripOf(last)), strips_.end());
}

void WaterfallStrips::setRow(std::uint64_t row, std::int64_t time, const PackedLevel* levels) {
    Strip& strip = strips_[stripOf(row)];
    if (strip.levels.empty()) {
        strip.levels.assign(kRowsOfStrip * width_, kNotMeasured);
    }
    PackedLevel* const reduced = strip.levels.data() + placeOf(row) * width_;
    for (const ColumnPoints& column : columns_) {
        reduced[column.column] = maximumOf(levels, column);
    }
    strip.times[placeOf(row)] = time;
    strip.held |= bitOf(row);
    strip.uncoloured |= bitOf(row);
    strip.revision = ++lastRevision_;
}

const WaterfallStrips::Strip* WaterfallStrips::find(std::uint64_t strip) const {
    const auto found = strips_.find(strip);
    return found == strips_.end() ? nullptr : &found->second;
}

bool WaterfallStrips::hasRow(std::uint64_t row) const {
    const Strip* const strip = find(stripOf(row));
    return strip != nullptr && (strip->held & bitOf(row)) != 0;
}

std::int64_t WaterfallStrips::time(std::uint64_t row) const {
    return find(stripOf(row))->times[placeOf(row)];
}

PackedLevel WaterfallStrips::level(std::uint64_t row, int column) const {
    if (column < 0 || column >= width() || !hasRow(row)) {
        return kNotMeasured;
    }
    return find(stripOf(row))->levels[placeOf(row) * width_ + static_cast<std::size_t>(column)];
}

LevelHistogram WaterfallStrips::histogram() const {
    LevelHistogram histogram;
    for (const auto& [number, strip] : strips_) {
        histogram.add(strip.levels.data(), strip.levels.size());
    }
    return histogram;
}

std::vector<std::uint64_t> WaterfallStrips::strips() const {
    std::vector<std::uint64_t> numbers;
    for (const auto& [number, strip] : strips_) {
        numbers.push_back(number);
    }
    return numbers;
}

std::uint64_t WaterfallStrips::revision(std::uint64_t strip) const {
    const Strip* const found = find(strip);
    return found == nullptr ? 0 : found->revision;
}

QImage WaterfallStrips::picture(std::uint64_t strip) {
    const auto found = strips_.find(strip);
    if (found == strips_.end()) {
        return {};
    }
    Strip& painted = found->second;
    if (painted.picture.isNull()) {
        painted.picture = QImage(width(), kRowsOfStrip, QImage::Format_ARGB32_Premultiplied);
        painted.picture.fill(Qt::transparent);
    }
    for (std::size_t place = 0; place < kRowsOfStrip && width_ > 0; ++place) {
        const std::uint64_t bit = bitOf(place);
        if ((painted.uncoloured & bit) != 0) {
            painted.opaque =
                paintRow(painted, place) ? painted.opaque | bit : painted.opaque & ~bit;
        }
    }
    painted.uncoloured = 0;
    painted.picture.reinterpretAsFormat(painted.opaque == ~std::uint64_t{0}
                                            ? QImage::Format_RGB32
                                            : QImage::Format_ARGB32_Premultiplied);
    return painted.picture;
}

/// @return whether all of the row was measured
bool WaterfallStrips::paintRow(Strip& strip, std::size_t place) const {
    auto* const pixels = reinterpret_cast<QRgb*>(strip.picture.scanLine(lineOf(place)));
    const PackedLevel* const levels = strip.levels.data() + place * width_;
    PackedLevel lowest = std::numeric_limits<PackedLevel>::max();
    for (std::size_t column = 0; column < width_; ++column) {
        pixels[column] = colors_->color(levels[column]);
        lowest = std::min(lowest, levels[column]);
    }
    return lowest != kNotMeasured;
}

}  // namespace rfu
