// Texts of frequencies: this library's beside snprintf and KFormat.
#include "support/random.h"

#include <rfUtils/presentation/rfUtils.h>

#include <KFormat>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using rfu::bench::Random;

/// A frequency with what the alternatives have to be told: they do not choose unit and decimals.
struct Frequency {
    double megahertz;
    double number;  ///< in its unit
    int decimals;
    const char* ending;
};

/// Frequencies between 10 kHz and 10 GHz in steps of 1 Hz, most of them shown in MHz and GHz.
std::vector<Frequency> frequencies() {
    Random random(20240919);
    std::vector<Frequency> all;
    while (all.size() < 1024) {
        const auto hertz = [&random](std::uint64_t low, std::uint64_t high) {
            return static_cast<double>(low + random.below(high - low)) * 1e-6;
        };
        const double gigahertz = hertz(1000000001, 10000000000);
        const double megahertz = hertz(1000001, 1000000000);
        const double megahertzToo = hertz(1000001, 1000000000);
        const double kilohertz = hertz(10000, 1000000);
        all.push_back({gigahertz, gigahertz * 0.001, 9, " GHz"});
        all.push_back({megahertz, megahertz, 6, " MHz"});
        all.push_back({megahertzToo, megahertzToo, 6, " MHz"});
        all.push_back({kilohertz, kilohertz * 1000.0, 3, " kHz"});
    }
    return all;
}

std::string printed(const Frequency& frequency) {
    char text[64];
    const int size = std::snprintf(text, sizeof text, "%.*f%s", frequency.decimals,
                                   frequency.number, frequency.ending);
    return {text, static_cast<std::size_t>(size)};
}

QString formatted(const KFormat& format, const Frequency& frequency) {
    return format.formatValue(frequency.megahertz * 1e6, KFormat::Unit::Hertz, frequency.decimals,
                              KFormat::UnitPrefix::AutoAdjust, KFormat::MetricBinaryDialect);
}

template <typename Text>
void measure(benchmark::State& state, Text text) {
    const std::vector<Frequency> all = frequencies();
    for (const Frequency& frequency : all) {
        if (text(frequency) != decltype(text(frequency))(printed(frequency).c_str())) {
            state.SkipWithError("not the text that snprintf gives");
            return;
        }
    }
    for (auto _ : state) {
        for (const Frequency& frequency : all) {
            benchmark::DoNotOptimize(text(frequency));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(all.size()));
}

void ours(benchmark::State& state) {
    const rfUtils texts;
    measure(state, [&texts](const Frequency& frequency) {
        return texts.makeFrequencyUnit(frequency.megahertz);
    });
}
BENCHMARK(ours)->Name("frequency_text/ours");

void throughSnprintf(benchmark::State& state) {
    measure(state, printed);
}
BENCHMARK(throughSnprintf)->Name("frequency_text/snprintf");

void throughKFormat(benchmark::State& state) {
    const KFormat format(QLocale::c());
    measure(state, [&format](const Frequency& frequency) { return formatted(format, frequency); });
}
BENCHMARK(throughKFormat)->Name("frequency_text/kformat");

}  // namespace
