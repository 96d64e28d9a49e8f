// A new row of a waterfall: reduced to the columns of the view and coloured, before its strip is uploaded.
#include "support/random.h"

#include "analysis/plots/viewColumns.h"
#include "analysis/plots/waterfallStrips.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

using rfu::PackedLevel;
using rfu::WaterfallStrips;
using rfu::bench::Random;

constexpr std::size_t kPoints = 16384;
constexpr int kWidth = 1280;
constexpr std::size_t kRows = 64;
constexpr rfu::LevelRange kRange = {-120.0, -20.0};

std::vector<std::vector<PackedLevel>> rows() {
    Random random(20240925);
    std::vector<std::vector<PackedLevel>> all(kRows, std::vector<PackedLevel>(kPoints));
    for (std::vector<PackedLevel>& row : all) {
        for (PackedLevel& level : row) {
            level = static_cast<PackedLevel>(-static_cast<int>(random.below(13000)));
        }
    }
    return all;
}

const QRgb* lineOf(const QImage& picture, std::uint64_t row) {
    return reinterpret_cast<const QRgb*>(picture.constScanLine(WaterfallStrips::lineOf(row)));
}

/// A row after the other, as while a receiver is watched.
void row(benchmark::State& state) {
    const std::vector<std::vector<PackedLevel>> levels = rows();
    WaterfallStrips strips;
    strips.setColumns(rfu::columnsOfView({}, kPoints, {0.0, double{kPoints}}, kWidth), kWidth);
    strips.setColors(rfu::kPalettes[0], kRange);
    std::uint64_t number = 0;
    for (auto _ : state) {
        strips.setRow(number, 0, levels[number % kRows].data());
        benchmark::DoNotOptimize(strips.picture(WaterfallStrips::stripOf(number)).constBits());
        ++number;
        strips.keepOnly(number < kRows ? 0 : number - kRows, number);
    }
    // Column 5 begins at the first point from 5 * 16384 / 1280 = 64 on, column 6 at 76.8.
    const std::vector<PackedLevel>& last = levels[(number - 1) % kRows];
    const PackedLevel level = *std::max_element(last.begin() + 64, last.begin() + 77);
    const QImage picture = strips.picture(WaterfallStrips::stripOf(number - 1));
    if (lineOf(picture, number - 1)[5] != strips.colors().color(level)) {
        state.SkipWithError("not the colour of the highest level");
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPoints));
}
BENCHMARK(row)->Name("waterfall_row/ours");

}  // namespace
