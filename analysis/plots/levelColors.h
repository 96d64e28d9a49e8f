#pragma once

#include <QRgb>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "analysis/plots/palette.h"
#include "analysis/statistics/levelHistogram.h"
#include "analysis/statistics/packedLevel.h"

namespace rfu {

/// Levels in dBm.
struct LevelRange {
    double low;
    double high;
};

inline constexpr double kNarrowestRange = 0.1;  // dB

/// From the 1st to the 99.9th percentile, widened where that is narrower than kNarrowestRange.
LevelRange usualRange(const LevelHistogram& levels);

/// A range around the usual one that stays for as long as possible, so that colours do not change with
/// every row: its ends are multiples of 5 dB, and it is another one only once the usual range leaves it or
/// an end is more than 10 dB away from it.
/// @param before the range until now
LevelRange steadyColors(const std::optional<LevelRange>& before, const LevelRange& usual);

/// How the levels of a recording are coloured.
struct WaterfallColors {
    const Palette* palette = &kPalettes[0];
    std::optional<LevelRange> range;  // not narrower than kNarrowestRange; usualRange() without
    std::vector<double> offsets;      // in dB, added to the level of each point; may be empty

    LevelRange rangeOf(const LevelHistogram& levels) const {
        return range ? *range : usualRange(levels);
    }
    const double* offsetsOrNull() const { return offsets.empty() ? nullptr : offsets.data(); }
};

/// The colours of packed levels: the range is divided evenly among the entries of the palette, levels
/// beyond it have the colours of its ends.
class LevelColors {
public:
    /// @param range not narrower than kNarrowestRange
    LevelColors(const Palette& palette, const LevelRange& range);

    /// Of a measured level.
    int entry(PackedLevel level) const { return entries_[static_cast<std::uint16_t>(level)]; }
    /// Transparent where nothing was measured.
    QRgb color(PackedLevel level) const {
        return level == kNotMeasured ? qRgba(0, 0, 0, 0) : palette_.color(entry(level));
    }
    const Palette& palette() const { return palette_; }

private:
    const Palette& palette_;
    std::array<std::uint8_t, 65536> entries_;  // by level
};

}  // namespace rfu
