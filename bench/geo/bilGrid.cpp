// Loading a band of floats, compared with read(2), GDAL and Qt's text stream.
#include "geo/gdal.h"
#include "support/mapText.h"
#include "support/wholeFile.h"

#include <rfUtils/geo/veltaGEO.h>

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTextCodec>
#include <QTextStream>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

namespace {

using namespace rfu::bench;

constexpr int kSide = 2048;
constexpr char kOneByteCodec[] = "ISO 8859-1";
constexpr char kManyByteCodec[] = "UTF-8";

const std::string& band() {
    static const std::string path = writeBand(kSide);
    return path;
}

void countBytes(benchmark::State& state, int side) {
    state.SetBytesProcessed(state.iterations() * side * side *
                            static_cast<std::int64_t>(sizeof(float)));
}

void useCodec(const char* name) {
    QTextCodec::setCodecForLocale(QTextCodec::codecForName(name));
}

/// Reads the rows through Qt's text stream.
void readByQt(const std::string& path, veltaGEO& map) {
    QFile file(QString::fromStdString(path));
    file.open(QIODevice::ReadOnly);
    QTextStream stream(&file);
    for (int row = 0; row < map.nRows; ++row) {
        const QByteArray bytes = stream.read(map.nCols * qint64{sizeof(float)}).toLatin1();
        std::memcpy(map.grid[row], bytes.constData(), static_cast<std::size_t>(bytes.size()));
        std::fill(map.grid[row] + static_cast<std::size_t>(bytes.size()) / sizeof(float),
                  map.grid[row] + map.nCols, map.noData);
    }
}

void load(benchmark::State& state, const std::string& path, int side, const char* codec) {
    useCodec(codec);
    const QString name = QString::fromStdString(path);
    const auto map = std::make_unique<veltaGEO>();
    map->loadHDRFile(name);
    for (auto _ : state) {
        benchmark::DoNotOptimize(map->loadBILFile(name));
    }
    countBytes(state, side);
    const auto expected = std::make_unique<veltaGEO>();
    expected->nCols = expected->nRows = side;
    expected->noData = map->noData;
    readByQt(path, *expected);
    if (std::memcmp(map->grid, expected->grid, sizeof map->grid) != 0) {
        state.SkipWithError("not the cells of the file");
    }
}

void ours(benchmark::State& state, const char* codec) {
    load(state, band(), kSide, codec);
}

void byRead(benchmark::State& state) {
    const std::string& path = band();
    const auto map = std::make_unique<veltaGEO>();
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            readFile(path, reinterpret_cast<char*>(map->grid), sizeof map->grid));
        benchmark::ClobberMemory();
    }
    countBytes(state, kSide);
}

void gdal(benchmark::State& state) {
    const auto map = std::make_unique<veltaGEO>();
    for (auto _ : state) {
        if (!readByGdal(band(), map->grid[0], kSide, kSide)) {
            state.SkipWithError("GDAL cannot read the file");
        }
    }
    countBytes(state, kSide);
}

void qt(benchmark::State& state) {
    useCodec(kManyByteCodec);
    const auto map = std::make_unique<veltaGEO>();
    map->nCols = map->nRows = kSide;
    for (auto _ : state) {
        readByQt(band(), *map);
    }
    countBytes(state, kSide);
}

// clang-format off
BENCHMARK_CAPTURE(ours, one_byte, kOneByteCodec)->Name("bil_one_byte/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(byRead)->Name("bil_one_byte/read")->Unit(benchmark::kMillisecond);
BENCHMARK(gdal)->Name("bil_one_byte/gdal")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ours, utf8, kManyByteCodec)->Name("bil_utf8/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(qt)->Name("bil_utf8/qt")->Unit(benchmark::kMillisecond);
// clang-format on

/// Time by the side of the grid.
void ofSide(benchmark::State& state) {
    const auto side = static_cast<int>(state.range(0));
    load(state, writeBand(side), side, kOneByteCodec);
}
BENCHMARK(ofSide)->Name("bil_size/ours")->RangeMultiplier(2)->Range(256, kSide);

}  // namespace
