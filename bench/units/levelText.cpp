// Texts of levels beside QString::setNum and append, which are handed the number and the unit.
#include "support/random.h"

#include <rfUtils/units/HMath.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

using rfu::bench::Random;

constexpr std::size_t kLevels = 1024;
constexpr double kGain = 2.15;  // of a dipole, in dBi

struct Level {
    double dBm;
    double frequency;  ///< in MHz
    QString unit;
    double number;  ///< in the unit
};

struct OffsetOfUnit {
    const char* unit;
    double offset;
};

std::vector<Level> levels() {
    constexpr OffsetOfUnit kUnits[] = {
        {"dBm", 0.0}, {"dBV", -13.0103}, {"dBmV", 46.9897}, {"dBuV", 106.9897}};
    Random random(20240920);
    std::vector<Level> all(kLevels);
    for (Level& level : all) {
        const OffsetOfUnit& unit = kUnits[random.below(std::size(kUnits))];
        level.dBm = random.between(-150.0, 30.0);
        level.unit = QString::fromLatin1(unit.unit);
        level.number = level.dBm + unit.offset;
    }
    return all;
}

std::vector<Level> fieldLevels() {
    constexpr OffsetOfUnit kUnits[] = {{"dBuV/m", 107.0},
                                       {"dBmV/m", 47.0},
                                       {"dBV/m", -13.0},
                                       {"dBW/m^2", -38.75999999999999},
                                       {"dBA/m", -64.53}};
    Random random(20240921);
    std::vector<Level> all(kLevels);
    for (Level& level : all) {
        const OffsetOfUnit& unit = kUnits[random.below(std::size(kUnits))];
        level.dBm = random.between(-150.0, 30.0);
        level.frequency = random.between(9.0, 6000.0);
        level.unit = QString::fromLatin1(unit.unit);
        const double antenna = 20.0 * std::log10(level.frequency) + (-29.8 - kGain);
        level.number = level.dBm + unit.offset + antenna;
    }
    return all;
}

/// What a program writes that has the number and the unit already.
QString throughQt(const Level& level, int decimals) {
    QString text;
    text.setNum(level.number, 'f', decimals);
    text += QLatin1Char(' ');
    text += level.unit;
    return text;
}

template <typename Text>
void measure(benchmark::State& state, const std::vector<Level>& all, int decimals, Text text) {
    for (const Level& level : all) {
        if (text(level) != throughQt(level, decimals)) {
            state.SkipWithError("not the text that Qt gives");
            return;
        }
    }
    for (auto _ : state) {
        for (const Level& level : all) {
            benchmark::DoNotOptimize(text(level));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(all.size()));
}

void ourLevels(benchmark::State& state) {
    HMath math;
    measure(state, levels(), 1,
            [&math](const Level& level) { return math.getdBmToUnit(level.unit, level.dBm, true); });
}
BENCHMARK(ourLevels)->Name("level_text/ours");

void levelsThroughQt(benchmark::State& state) {
    measure(state, levels(), 1, [](const Level& level) { return throughQt(level, 1); });
}
BENCHMARK(levelsThroughQt)->Name("level_text/qt");

void ourFieldLevels(benchmark::State& state) {
    HMath math;
    measure(state, fieldLevels(), 2, [&math](const Level& level) {
        return math.getdBmToField(level.unit, level.dBm, level.frequency, kGain, true);
    });
}
BENCHMARK(ourFieldLevels)->Name("field_level_text/ours");

void fieldLevelsThroughQt(benchmark::State& state) {
    measure(state, fieldLevels(), 2, [](const Level& level) { return throughQt(level, 2); });
}
BENCHMARK(fieldLevelsThroughQt)->Name("field_level_text/qt");

}  // namespace
