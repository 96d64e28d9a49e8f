#include "analysis/recordings/channels.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace rfu {

namespace {

/// Without the last digits that a sum makes.
double toMillihertz(double frequency) {
    constexpr double kMillihertz = 1e9;  // a MHz
    return std::round(frequency * kMillihertz) / kMillihertz;
}

}  // namespace

std::vector<FrequencyRange> ChannelRaster::ranges(double width) const {
    std::vector<FrequencyRange> ranges;
    ranges.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const double from = toMillihertz(low + i * step);
        ranges.push_back({from, toMillihertz(from + width)});
    }
    return ranges;
}

std::optional<ChannelRaster> parseChannelRaster(std::string_view text) {
    const std::size_t first = text.find(':');
    const std::size_t last = text.rfind(':');
    if (first == last) {
        return std::nullopt;
    }
    const auto low = parseFrequency(text.substr(0, first));
    const auto step = parseFrequency(text.substr(first + 1, last - first - 1));
    const auto count = parseInteger(text.substr(last + 1));
    const bool isRaster = low && step && count && *low >= 0.0 && *step > 0.0 && *count > 0;
    return isRaster ? std::optional(ChannelRaster{*low, *step, *count}) : std::nullopt;
}

ChannelPlacer::ChannelPlacer(const FrequencyAxis& axis) : axis_(axis), bins_(filledBins(axis)) {}

ChannelPlacer::BinRange ChannelPlacer::binsIn(const FrequencyRange& range) const {
    const auto isBelow = [](const Bin& bin, double frequency) {
        return bin.middle() < frequency - kSameFrequency;
    };
    const auto first = std::lower_bound(bins_.begin(), bins_.end(), range.low, isBelow);
    return {first, std::lower_bound(first, bins_.end(), range.high, isBelow)};
}

bool ChannelPlacer::isWithinBand(const FrequencyRange& range) const {
    return std::any_of(axis_.bands.begin(), axis_.bands.end(),
                       [&range](const FrequencyAxis::Band& band) {
                           return range.low >= band.low - kSameFrequency &&
                                  range.high <= band.high + kSameFrequency;
                       });
}

Channel ChannelPlacer::place(const FrequencyRange& range) const {
    const auto [first, end] = binsIn(range);
    const Channel missing = {range, 0, 0};
    if (first == end) {
        return {range, 0, 0, isWithinBand(range)};
    }
    const Bin& last = *std::prev(end);
    const FrequencyAxis::Band& band = axis_.bands[bandOf(axis_, first->point)];
    const bool isOneBand = bandOf(axis_, last.point) == bandOf(axis_, first->point);
    // Beside the band, the next bin would have its middle half a bin away.
    const double lowest = band.low - (first->high - first->low) / 2.0;
    const double highest = band.high + (last.high - last.low) / 2.0;
    const bool isWhole =
        range.low > lowest + kSameFrequency && range.high <= highest + kSameFrequency;
    return isOneBand && isWhole ? Channel{range, first->point, last.point + 1} : missing;
}

std::vector<Channel> ChannelPlacer::ofPoints() const {
    std::vector<Channel> channels;
    channels.reserve(bins_.size());
    for (const Bin& bin : bins_) {
        channels.push_back({{bin.low, bin.high}, bin.point, bin.point + 1});
    }
    return channels;
}

std::pair<std::size_t, std::size_t> ChannelPlacer::pointsIn(const FrequencyRange& range) const {
    const auto [first, end] = binsIn(range);
    return first == end ? std::pair<std::size_t, std::size_t>(0, 0)
                        : std::pair(first->point, std::prev(end)->point + 1);
}

std::vector<bool> ChannelPlacer::usable() const {
    std::vector<bool> isUsable(axis_.points.size(), false);
    for (const Bin& bin : bins_) {
        isUsable[bin.point] = true;
    }
    return isUsable;
}

}  // namespace rfu
