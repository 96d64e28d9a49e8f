// Statistics of a marker's thousand values, compared with a plain loop over an array.
#include "support/random.h"

#include <rfUtils/trace/traceRssiBuffer.h>

#include <benchmark/benchmark.h>

#include <QVector>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace {

using rfu::bench::Random;

constexpr int kValues = 1000;
constexpr int kMarker = 2;
constexpr double kLimit = -80.0;

/// Levels, one in thirty of them not measured.
std::vector<double> levels() {
    Random random(20240923);
    std::vector<double> all(kValues);
    for (double& level : all) {
        level = random.below(30) == 0 ? -999.0 : random.between(-130.0, -20.0);
    }
    return all;
}

/// A marker whose ring wraps around within the levels.
traceRssiBuffer filledMarker() {
    traceRssiBuffer buffer(1, kValues);
    for (int i = 0; i < kValues / 3; ++i) {
        buffer.appendMarkerPower(kMarker, 0.0);
    }
    for (const double level : levels()) {
        buffer.appendMarkerPower(kMarker, level);
    }
    return buffer;
}

// The plain loops.

double bareAverage(const std::vector<double>& values) {
    double sum = 0.0;
    int count = 0;
    for (const double value : values) {
        if (value != -999.0) {
            sum += value;
            ++count;
        }
    }
    return sum / count;
}

double bareMaximum(const std::vector<double>& values) {
    double maximum = values.front();
    for (const double value : values) {
        maximum = value > maximum ? value : maximum;
    }
    return maximum;
}

double bareMinimum(const std::vector<double>& values) {
    double minimum = 999.0;
    for (const double value : values) {
        if (value != -999.0) {
            minimum = value < minimum ? value : minimum;
        }
    }
    return minimum;
}

int bareCount(const std::vector<double>& values) {
    int count = 0;
    for (const double value : values) {
        count += value > kLimit ? 1 : 0;
    }
    return count;
}

template <typename Ours, typename Bare>
void measureOurs(benchmark::State& state, Ours ours, Bare bare) {
    const traceRssiBuffer buffer = filledMarker();
    if (ours(buffer) != bare(levels())) {
        state.SkipWithError("not the result of the plain loop");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(ours(buffer));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kValues);
}

template <typename Bare>
void measureBare(benchmark::State& state, Bare bare) {
    const std::vector<double> values = levels();
    for (auto _ : state) {
        benchmark::DoNotOptimize(bare(values));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kValues);
}

template <bool (traceRssiBuffer::*statistic)(int, double*) const>
double ask(const traceRssiBuffer& buffer) {
    double answer = 0.0;
    (buffer.*statistic)(kMarker, &answer);
    return answer;
}

int askCount(const traceRssiBuffer& buffer) {
    int count = 0;
    buffer.getCountLimitMarkerPower(kMarker, kLimit, &count);
    return count;
}

void average(benchmark::State& state) {
    measureOurs(state, ask<&traceRssiBuffer::getAverageMarkerPower>, bareAverage);
}
BENCHMARK(average)->Name("marker_average/ours");
BENCHMARK_CAPTURE(measureBare, average, bareAverage)->Name("marker_average/bare");

void maximum(benchmark::State& state) {
    measureOurs(state, ask<&traceRssiBuffer::getMaxMarkerPower>, bareMaximum);
}
BENCHMARK(maximum)->Name("marker_maximum/ours");
BENCHMARK_CAPTURE(measureBare, maximum, bareMaximum)->Name("marker_maximum/bare");

void minimum(benchmark::State& state) {
    measureOurs(state, ask<&traceRssiBuffer::getMinMarkerPower>, bareMinimum);
}
BENCHMARK(minimum)->Name("marker_minimum/ours");
BENCHMARK_CAPTURE(measureBare, minimum, bareMinimum)->Name("marker_minimum/bare");

void count(benchmark::State& state) {
    measureOurs(state, askCount, bareCount);
}
BENCHMARK(count)->Name("marker_count/ours");
BENCHMARK_CAPTURE(measureBare, count, bareCount)->Name("marker_count/bare");

// Copies of a contiguous ring, as calcMarkerPower fills it, and of one that wraps around, which
// takes two parts from an array too.

constexpr std::size_t kSeam = kValues - kValues / 3;

traceRssiBuffer markerWithoutSeam() {
    traceRssiBuffer buffer(1, kValues);
    for (const double level : levels()) {
        buffer.appendMarkerPower(kMarker, level);
    }
    return buffer;
}

template <typename Values>
void measureOurCopy(benchmark::State& state, traceRssiBuffer (*marker)(), Values out) {
    const traceRssiBuffer buffer = marker();
    for (auto _ : state) {
        buffer.getDataMarkerPower(out, kMarker);
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    if (std::vector<double>(out.begin(), out.end()) != levels()) {
        state.SkipWithError("not the values");
    }
    state.SetItemsProcessed(state.iterations() * kValues);
}
BENCHMARK_CAPTURE(measureOurCopy, vector, markerWithoutSeam, std::vector<double>())
    ->Name("marker_copy/ours");
BENCHMARK_CAPTURE(measureOurCopy, qvector, markerWithoutSeam, QVector<double>())
    ->Name("marker_copy/ours_qvector");
BENCHMARK_CAPTURE(measureOurCopy, vectorOfSeam, filledMarker, std::vector<double>())
    ->Name("marker_copy_with_seam/ours");
BENCHMARK_CAPTURE(measureOurCopy, qvectorOfSeam, filledMarker, QVector<double>())
    ->Name("marker_copy_with_seam/ours_qvector");

void bareCopy(benchmark::State& state) {
    const std::vector<double> values = levels();
    std::vector<double> out;
    for (auto _ : state) {
        out = values;
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kValues);
}
BENCHMARK(bareCopy)->Name("marker_copy/bare");

void bareCopyInTwoParts(benchmark::State& state) {
    std::vector<double> values = levels();
    std::rotate(values.begin(), values.begin() + kSeam, values.end());
    std::vector<double> out(kValues);
    for (auto _ : state) {
        const auto oldest = values.begin() + (kValues - kSeam);
        std::copy(values.begin(), oldest, std::copy(oldest, values.end(), out.begin()));
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    if (out != levels()) {
        state.SkipWithError("not the values");
    }
    state.SetItemsProcessed(state.iterations() * kValues);
}
BENCHMARK(bareCopyInTwoParts)->Name("marker_copy_with_seam/bare");

}  // namespace
