// Texts of volts, watts and fields beside what remains when the prefix is known, one exponential and
// one formatting of a QString, and beside KF5 UnitConversion.
#include "support/random.h"

#include <rfUtils/units/HMath.h>

#include <KUnitConversion/Converter>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <vector>

namespace {

using rfu::bench::Random;

constexpr double kLn10 = 2.302585092994046;
constexpr double kFrequency = 433.92;  // in MHz
constexpr double kGain = 2.15;         // of a dipole, in dBi

struct Prefix {
    const char* symbol;
    int decades;  ///< 10^decades of the prefixed unit make the unit itself
    KUnitConversion::UnitId watts;
};

constexpr Prefix kPrefixes[] = {{"", 0, KUnitConversion::Watt},
                                {"m", 3, KUnitConversion::Milliwatt},
                                {"\u00B5", 6, KUnitConversion::Microwatt},
                                {"u", 6, KUnitConversion::Microwatt},
                                {"n", 9, KUnitConversion::Nanowatt},
                                {"p", 12, KUnitConversion::Picowatt},
                                {"f", 15, KUnitConversion::Femtowatt}};

/// A level and what the alternatives are told, which do not choose the prefix.
struct Level {
    double dBm = 0.0;
    const Prefix* prefix = nullptr;
    QString unit;
    double number = 0.0;  ///< in the unit
};

const Prefix* prefixOf(const QString& prefixed, const QString& unit) {
    for (const Prefix& prefix : kPrefixes) {
        if (prefixed == QString::fromUtf8(prefix.symbol) + unit) {
            return &prefix;
        }
    }
    throw std::out_of_range("no such prefix");
}

/// Levels over the range of the prefixes.
template <typename Ours>
std::vector<Level> levels(double low, double high, const char* unit, Ours ours) {
    HMath math;
    Random random(20240922);
    std::vector<Level> all(1024);
    for (Level& level : all) {
        level.dBm = random.between(low, high);
        ours(math, level.dBm);
        level.unit = math.unit();
        level.prefix = prefixOf(level.unit, QString::fromLatin1(unit));
    }
    return all;
}

// The three works: ours, the range of levels and the bare number.

struct Volts {
    static QString ours(HMath& math, double dBm) { return math.getdBmToVolt(dBm, true); }

    static std::vector<Level> levels() { return ::levels(-280.0, 50.0, "V", ours); }

    static double number(const Level& level) {
        return std::exp(((level.dBm + 46.9897) * 0.05 + level.prefix->decades) * kLn10) * 0.001;
    }
};

struct Watts {
    static QString ours(HMath& math, double dBm) { return math.getdBmToWatt(dBm, true); }

    static std::vector<Level> levels() { return ::levels(-130.0, 50.0, "W", ours); }

    static double number(const Level& level) {
        return std::exp(((level.dBm - 30.0) * 0.1 + level.prefix->decades) * kLn10);
    }
};

struct Fields {
    static QString ours(HMath& math, double dBm) {
        return math.getdBmToField(QStringLiteral("V/m"), dBm, kFrequency, kGain, true);
    }

    static std::vector<Level> levels() { return ::levels(-280.0, 50.0, "V/m", ours); }

    /// A single, as the field is one.
    static double number(const Level& level) {
        static const double antenna = 20.0 * std::log10(kFrequency) + (-29.8 - kGain);
        static const double factors[] = {1.0, 1e3, 1e6, 1e9, 1e12, 1e15};
        const double field = std::exp((level.dBm - 13.0 + antenna) * (kLn10 / 20.0));
        const double single = static_cast<double>(static_cast<float>(field));
        return static_cast<double>(static_cast<float>(single * factors[level.prefix->decades / 3]));
    }
};

QString throughQt(const Level& level) {
    QString text;
    text.setNum(level.number, 'f', 2);
    text += QLatin1Char(' ');
    text += level.unit;
    return text;
}

template <typename Work>
std::vector<Level> numberedLevels() {
    std::vector<Level> all = Work::levels();
    for (Level& level : all) {
        level.number = Work::number(level);
    }
    return all;
}

template <typename Step>
void measure(benchmark::State& state, const std::vector<Level>& all, Step step) {
    for (auto _ : state) {
        for (const Level& level : all) {
            benchmark::DoNotOptimize(step(level));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(all.size()));
}

template <typename Work, typename Text>
void measureText(benchmark::State& state, Text text) {
    const std::vector<Level> all = numberedLevels<Work>();
    for (const Level& level : all) {
        if (text(level) != throughQt(level)) {
            state.SkipWithError("not the text of the bare number");
            return;
        }
    }
    measure(state, all, text);
}

template <typename Work>
void ours(benchmark::State& state) {
    HMath math;
    measureText<Work>(state, [&math](const Level& level) { return Work::ours(math, level.dBm); });
}
BENCHMARK(ours<Volts>)->Name("volt_text/ours");
BENCHMARK(ours<Watts>)->Name("watt_text/ours");
BENCHMARK(ours<Fields>)->Name("field_text/ours");

template <typename Work>
void formatting(benchmark::State& state) {
    measureText<Work>(state, throughQt);
}
BENCHMARK(formatting<Volts>)->Name("volt_text/qt");
BENCHMARK(formatting<Watts>)->Name("watt_text/qt");
BENCHMARK(formatting<Fields>)->Name("field_text/qt");

template <typename Work>
void exponential(benchmark::State& state) {
    measure(state, Work::levels(), Work::number);
}
BENCHMARK(exponential<Volts>)->Name("volt_text/exponential");
BENCHMARK(exponential<Watts>)->Name("watt_text/exponential");
BENCHMARK(exponential<Fields>)->Name("field_text/exponential");

void throughKUnitConversion(benchmark::State& state) {
    measureText<Watts>(state, [](const Level& level) {
        return KUnitConversion::Value(level.dBm, KUnitConversion::DecibelMilliwatt)
            .convertTo(level.prefix->watts)
            .toSymbolString(0, 'f', 2);
    });
}
BENCHMARK(throughKUnitConversion)->Name("watt_text/kunitconversion");

}  // namespace
