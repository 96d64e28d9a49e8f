#include "analysis/plots/levelColors.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace rfu {

namespace {

constexpr double kLowestShare = 0.01;
constexpr double kHighestShare = 0.999;
constexpr double kEntryRounding = 1e-9;  // of an entry, at the border of two entries
constexpr double kLevelMargin = 0.5;     // dB, added to both sides where all levels are equal
constexpr double kSteadyStep = 5.0;      // dB
constexpr double kMostRoom = 10.0;       // dB

}  // namespace

LevelRange usualRange(const LevelHistogram& levels) {
    LevelRange range = {unpacked(levels.percentile(kLowestShare).value_or(0)),
                        unpacked(levels.percentile(kHighestShare).value_or(0))};
    if (range.high - range.low < kNarrowestRange) {
        range.low -= kLevelMargin;
        range.high += kLevelMargin;
    }
    return range;
}

LevelRange steadyColors(const std::optional<LevelRange>& before, const LevelRange& usual) {
    const auto fits = [](double room) { return room >= 0.0 && room <= kMostRoom; };
    if (before && fits(usual.low - before->low) && fits(before->high - usual.high)) {
        return *before;
    }
    return {std::floor(usual.low / kSteadyStep) * kSteadyStep,
            std::ceil(usual.high / kSteadyStep) * kSteadyStep};
}

LevelColors::LevelColors(const Palette& palette, const LevelRange& range) : palette_(palette) {
    constexpr int kMost = std::numeric_limits<PackedLevel>::max();
    for (int level = -kMost; level <= kMost; ++level) {
        const auto packed = static_cast<PackedLevel>(level);
        const double part = (unpacked(packed) - range.low) / (range.high - range.low);
        const double entry = std::floor(part * Palette::kEntries + kEntryRounding);
        entries_[static_cast<std::uint16_t>(packed)] =
            static_cast<std::uint8_t>(std::clamp(entry, 0.0, Palette::kEntries - 1.0));
    }
    entries_[static_cast<std::uint16_t>(kNotMeasured)] = 0;
}

}  // namespace rfu
