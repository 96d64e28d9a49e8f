#include "analysis/plots/levelScale.h"

#include <rfUtils/units/unitTable.h>
#include <algorithm>
#include <cmath>
#include <iterator>

#include "analysis/plots/axis.h"

namespace rfu {

namespace {

/// digit times ten to the power of decade, as "20 uV".
QString prefixedLabel(int digit, int decade, const std::string& unit) {
    const auto prefix =
        std::find_if(std::begin(kPrefixes), std::end(kPrefixes),
                     [decade](const Prefix& known) { return -known.decades <= decade; });
    const Prefix& used = prefix == std::end(kPrefixes) ? *std::prev(prefix) : *prefix;
    const double number = digit * std::pow(10.0, decade + used.decades);
    QString label = QString::number(number, 'g', Axis::kLevelDigits) + QLatin1Char(' ');
    if (used.letter == 'u') {
        label += QChar(0xB5);
    } else if (used.letter != 0) {
        label += QLatin1Char(used.letter);
    }
    return label + QString::fromStdString(unit);
}

/// One, two or three round numbers in each decade, or one in several decades.
std::vector<LevelTick> linearTicks(const LevelScale& scale, const LevelRange& range, int wanted) {
    const double decades = (range.high - range.low) / scale.decibelsPerDecade;
    const int stride = std::max(1, static_cast<int>(std::ceil(decades / wanted)));
    const bool showsAll = decades * 3.0 <= wanted;
    std::vector<LevelTick> ticks;
    const auto first = static_cast<int>(std::floor(std::log10(scale.shown(range.low))));
    const auto last = static_cast<int>(std::floor(std::log10(scale.shown(range.high))));
    for (int decade = first; decade <= last; ++decade) {
        for (const int digit : {1, 2, 5}) {
            const double level = scale.dBm(digit * std::pow(10.0, decade));
            const bool isWanted = digit == 1 ? decade % stride == 0 : showsAll;
            if (isWanted && level >= range.low && level <= range.high) {
                ticks.push_back({level, prefixedLabel(digit, decade, scale.unit)});
            }
        }
    }
    return ticks;
}

}  // namespace

double LevelScale::shown(double dBm) const {
    return isLinear() ? atZero * std::pow(10.0, dBm / decibelsPerDecade) : dBm + atZero;
}

double LevelScale::dBm(double value) const {
    return isLinear() ? decibelsPerDecade * std::log10(value / atZero) : value - atZero;
}

std::vector<LevelTick> levelTicks(const LevelScale& scale, const LevelRange& range, int wanted) {
    if (scale.isLinear()) {
        return linearTicks(scale, range, wanted);
    }
    const Axis axis(scale.shown(range.low), scale.shown(range.high), Axis::Ends::Exact,
                    Axis::kLevelDigits, 0.0, wanted);
    std::vector<LevelTick> ticks;
    for (const double tick : axis.ticks()) {
        ticks.push_back({scale.dBm(tick), axis.label(tick)});
    }
    return ticks;
}

}  // namespace rfu
