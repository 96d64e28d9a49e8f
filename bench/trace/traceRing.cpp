// The ring of traces, compared with arrays: storing a trace, and gathering one point of all traces.
#include "support/random.h"

#include <rfUtils/trace/traceRssiBuffer.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <vector>

namespace {

using rfu::bench::Random;
using Trace = std::vector<double>;

constexpr std::size_t kTraces = 1000;
constexpr std::size_t kPoints = 1001;
constexpr std::int64_t kBytes = kPoints * sizeof(double);
constexpr std::size_t kStep = 384;  // between gathered points, beyond a cache line

std::vector<Trace> sweeps(std::size_t count) {
    Random random(20240924);
    std::vector<Trace> all(count, Trace(kPoints));
    for (Trace& trace : all) {
        for (double& level : trace) {
            level = random.between(-130.0, -20.0);
        }
    }
    return all;
}

traceRssiBuffer filledRing(const std::vector<Trace>& traces) {
    const auto capacity = static_cast<int>(traces.size());
    traceRssiBuffer buffer(capacity, capacity, static_cast<int>(kPoints));
    for (Trace trace : traces) {
        buffer.push_back(trace);
    }
    return buffer;
}

void gather(benchmark::State& state) {
    const std::vector<Trace> traces = sweeps(kTraces);
    traceRssiBuffer buffer = filledRing(traces);
    std::size_t point = 0;
    for (auto _ : state) {
        point = (point + kStep) % kPoints;
        benchmark::DoNotOptimize(buffer.calcMarkerPower(3, static_cast<int>(point)));
        benchmark::ClobberMemory();
    }
    Trace gathered;
    buffer.getDataMarkerPower(gathered, 3);
    for (std::size_t i = 0; i < kTraces; ++i) {
        if (gathered[i] != traces[i][point]) {
            state.SkipWithError("not the point of each trace");
            return;
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kTraces));
}
BENCHMARK(gather)->Name("marker_gather/ours");

void bareGather(benchmark::State& state) {
    const std::vector<Trace> traces = sweeps(kTraces);
    Trace gathered(kTraces);
    std::size_t point = 0;
    for (auto _ : state) {
        point = (point + kStep) % kPoints;
        for (std::size_t i = 0; i < kTraces; ++i) {
            gathered[i] = traces[i][point];
        }
        benchmark::DoNotOptimize(gathered.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kTraces));
}
BENCHMARK(bareGather)->Name("marker_gather/bare");

void push(benchmark::State& state) {
    const std::vector<Trace> traces = sweeps(64);
    traceRssiBuffer buffer = filledRing(traces);
    Trace trace = traces.front();
    for (auto _ : state) {
        buffer.push_back(trace);
        benchmark::ClobberMemory();
    }
    Trace held;
    buffer.calcMarkerPower(0, static_cast<int>(kPoints) - 1);
    buffer.getDataMarkerPower(held, 0);
    if (held.size() != traces.size() || held.back() != trace.back()) {
        state.SkipWithError("not the trace that was stored");
    }
    state.SetBytesProcessed(state.iterations() * kBytes);
}
BENCHMARK(push)->Name("trace_push/ours");

void copyOverOldest(benchmark::State& state) {
    std::vector<Trace> traces = sweeps(64);
    const Trace trace = traces.front();
    std::size_t oldest = 0;
    for (auto _ : state) {
        std::memcpy(traces[oldest].data(), trace.data(), kPoints * sizeof(double));
        oldest = (oldest + 1) % traces.size();
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * kBytes);
}
BENCHMARK(copyOverOldest)->Name("trace_push/memcpy");

}  // namespace
