// UTM to degrees: the library's series, compared with PROJ's inverse.
#include "support/random.h"

#include <rfUtils/geo/veltaGEO.h>

#include <benchmark/benchmark.h>

#include <proj.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace {

using rfu::bench::Random;

constexpr std::size_t kPositions = 1024;
constexpr int kZone = 33;

/// Positions anywhere in the northern half of a zone.
std::vector<PJ_COORD> positions() {
    Random random(20240918);
    std::vector<PJ_COORD> all(kPositions);
    for (PJ_COORD& position : all) {
        // Floats, so that both read the same number.
        const auto easting = static_cast<float>(random.between(200000.0, 800000.0));
        const auto northing = static_cast<float>(random.between(0.0, 9000000.0));
        position =
            proj_coord(static_cast<double>(easting), static_cast<double>(northing), 0.0, 0.0);
    }
    return all;
}

/// The inverse projection alone, from metres to radians: less work than a conversion between two
/// reference systems.
class Projection {
public:
    explicit Projection(const char* definition = "+proj=utm +zone=33 +ellps=WGS84")
        : pj_(proj_create(PJ_DEFAULT_CTX, definition)) {}
    ~Projection() { proj_destroy(pj_); }
    Projection(const Projection&) = delete;
    Projection& operator=(const Projection&) = delete;

    PJ* get() const { return pj_; }

private:
    PJ* pj_;
};

/// Whether both results agree within 2 m, the library's maximum error.
bool near(float latitude, float longitude, const PJ_COORD& radians) {
    constexpr double kTolerance = 5e-5;
    return std::abs(static_cast<double>(latitude) - proj_todeg(radians.lp.phi)) < kTolerance &&
           std::abs(static_cast<double>(longitude) - proj_todeg(radians.lp.lam)) < kTolerance;
}

void ours(benchmark::State& state) {
    const auto map = std::make_unique<veltaGEO>();
    const std::vector<PJ_COORD> all = positions();
    float latitude = 0.0F;
    float longitude = 0.0F;
    for (auto _ : state) {
        for (const PJ_COORD& position : all) {
            map->utmToLatLng(static_cast<float>(position.xy.x), static_cast<float>(position.xy.y),
                             kZone, 0, &latitude, &longitude);
            benchmark::DoNotOptimize(latitude);
            benchmark::DoNotOptimize(longitude);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPositions));
    const Projection projection;
    if (!near(latitude, longitude, proj_trans(projection.get(), PJ_INV, all.back()))) {
        state.SkipWithError("not the place that PROJ finds");
    }
}
BENCHMARK(ours)->Name("utm_to_degrees/ours");

void onePoint(benchmark::State& state, const char* definition) {
    const Projection projection(definition);
    const std::vector<PJ_COORD> all = positions();
    for (auto _ : state) {
        for (const PJ_COORD& position : all) {
            benchmark::DoNotOptimize(proj_trans(projection.get(), PJ_INV, position));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPositions));
}
BENCHMARK_CAPTURE(onePoint, exact, "+proj=utm +zone=33 +ellps=WGS84")->Name("utm_to_degrees/proj");
// The shorter series, of the same length as ours.
BENCHMARK_CAPTURE(onePoint, series, "+proj=utm +zone=33 +ellps=WGS84 +approx")
    ->Name("utm_to_degrees/proj_approx");

void wholeArray(benchmark::State& state) {
    const Projection projection;
    const std::vector<PJ_COORD> all = positions();
    std::vector<PJ_COORD> changed;
    for (auto _ : state) {
        changed = all;
        benchmark::DoNotOptimize(
            proj_trans_array(projection.get(), PJ_INV, changed.size(), changed.data()));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPositions));
}
BENCHMARK(wholeArray)->Name("utm_to_degrees/proj_array");

}  // namespace
