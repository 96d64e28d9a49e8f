// Time of each loader at sizes a factor of four or ten apart.
#include <rfUtils/catalogues/ResultSetup.h>
#include <rfUtils/catalogues/subItemList.h>
#include <rfUtils/geo/veltaGEO.h>
#include <rfUtils/trace/traceRssiBuffer.h>

#include <support/catalogueText.h>
#include <support/mapText.h>
#include <support/scratchFolder.h>

#include <QTextCodec>
#include <QtGlobal>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace rfu::bench;

constexpr std::size_t kChoicesOfItem = 50;
constexpr std::size_t kPoints = 1001;

void dropMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

void grid(benchmark::State& state) {
    const auto side = static_cast<int>(state.range(0));
    const QString name = QString::fromStdString(writeScratch("grid.asc", gridText(side)));
    const auto map = std::make_unique<veltaGEO>();
    for (auto _ : state) {
        benchmark::DoNotOptimize(map->loadASCFile(name));
    }
    if (map->nCols != side || map->grid[side - 1][side - 1] == 0.0F) {
        state.SkipWithError("the last cell is not there");
    }
    state.counters["elements"] = static_cast<double>(side) * side;
}

void band(benchmark::State& state) {
    const auto side = static_cast<int>(state.range(0));
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO 8859-1"));
    const QString name = QString::fromStdString(writeBand(side));
    const auto map = std::make_unique<veltaGEO>();
    for (auto _ : state) {
        benchmark::DoNotOptimize(map->loadHDRFile(name) && map->loadBILFile(name));
    }
    if (map->nCols != side || map->grid[side - 1][side - 1] == 0.0F) {
        state.SkipWithError("the last cell is not there");
    }
    state.counters["elements"] = static_cast<double>(side) * side;
}

void catalogue(benchmark::State& state) {
    const auto choices = static_cast<std::size_t>(state.range(0));
    const std::size_t items = choices / kChoicesOfItem;
    const std::string name = writeScratch("catalogue.json", catalogueText(items, kChoicesOfItem));
    int last = 0;
    for (auto _ : state) {
        subItemList list;
        benchmark::DoNotOptimize(list.loadJson(name));
        last = list.getOrderFromSubItemId(itemName(items - 1), choiceName(kChoicesOfItem - 1));
    }
    if (last != kChoicesOfItem - 1) {
        state.SkipWithError("the last choice is not there");
    }
    state.counters["elements"] = static_cast<double>(choices);
}

void setups(benchmark::State& state) {
    const auto choices = static_cast<std::size_t>(state.range(0));
    const std::size_t items = choices / kChoicesOfItem;
    const QString name =
        QString::fromStdString(writeScratch("setups.json", catalogueText(items, kChoicesOfItem)));
    const auto before = qInstallMessageHandler(dropMessage);
    QString last;
    for (auto _ : state) {
        ResultSetup setups;
        benchmark::DoNotOptimize(setups.loadJson(name));
        last = setups.setupId(static_cast<int>(choices) - 1);
    }
    qInstallMessageHandler(before);
    if (last.isEmpty()) {
        state.SkipWithError("the last setup is not there");
    }
    state.counters["elements"] = static_cast<double>(choices);
}

void traces(benchmark::State& state) {
    const auto count = static_cast<int>(state.range(0));
    std::vector<double> trace(kPoints, -80.0);
    for (auto _ : state) {
        traceRssiBuffer buffer(count, count);
        for (int i = 0; i < count; ++i) {
            buffer.push_back(trace);
        }
        benchmark::DoNotOptimize(buffer.calcMarkerPower(0, kPoints / 2));
    }
    state.counters["elements"] = count;
}

void inSides(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(2)->Range(256, 2048)->Unit(benchmark::kMillisecond);
}

void inChoices(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
}

}  // namespace

BENCHMARK(grid)->Name("cost_grid")->Apply(inSides);
BENCHMARK(band)->Name("cost_band")->Apply(inSides);
BENCHMARK(catalogue)->Name("cost_catalogue")->Apply(inChoices);
BENCHMARK(setups)->Name("cost_setups")->Apply(inChoices);
BENCHMARK(traces)
    ->Name("cost_traces")
    ->RangeMultiplier(10)
    ->Range(1, 10000)
    ->Unit(benchmark::kMillisecond);
