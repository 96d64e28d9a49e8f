// Loading a catalogue file beside parsing the same bytes into a document. Each time includes the
// destruction of the result.
#include <rfUtils/catalogues/subItemList.h>

#include <support/catalogueText.h>
#include <support/scratchFolder.h>

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

using namespace rfu::bench;

constexpr std::size_t kItems = 400;
constexpr std::size_t kChoices = 50;

const std::string& text() {
    static const std::string text = catalogueText(kItems, kChoices);
    return text;
}

void countBytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text().size()));
}

void ours(benchmark::State& state) {
    const std::string file = writeScratch("catalogue.json", text());
    int last = 0;
    for (auto _ : state) {
        subItemList list;
        benchmark::DoNotOptimize(list.loadJson(file));
        last = list.getOrderFromSubItemId(itemName(kItems - 1), choiceName(kChoices - 1));
    }
    if (last != kChoices - 1) {
        state.SkipWithError("the last choice is missing");
    }
    countBytes(state);
}

void qtDocument(benchmark::State& state) {
    const QByteArray bytes = QByteArray::fromStdString(text());
    for (auto _ : state) {
        const QJsonDocument document = QJsonDocument::fromJson(bytes);
        benchmark::DoNotOptimize(document.isObject());
    }
    if (QJsonDocument::fromJson(bytes).object().size() != kItems) {
        state.SkipWithError("the last item is missing");
    }
    countBytes(state);
}

void nlohmannDocument(benchmark::State& state) {
    for (auto _ : state) {
        const nlohmann::json document = nlohmann::json::parse(text());
        benchmark::DoNotOptimize(document.is_object());
    }
    countBytes(state);
}

}  // namespace

BENCHMARK(ours)->Name("catalogue_load/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(qtDocument)->Name("catalogue_load/qjsondocument")->Unit(benchmark::kMicrosecond);
BENCHMARK(nlohmannDocument)->Name("catalogue_load/nlohmann")->Unit(benchmark::kMicrosecond);
