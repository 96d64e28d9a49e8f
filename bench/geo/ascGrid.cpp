// Loading an ASCII grid, compared with GDAL and with reading the file and its numbers only.
#include "geo/gdal.h"
#include "support/mapText.h"
#include "support/wholeFile.h"

#include <rfUtils/geo/veltaGEO.h>

#include <benchmark/benchmark.h>

#include <QString>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace rfu::bench;

constexpr int kSide = 2048;

constexpr CellStyle kIntegers = {"integers", "%.0f", -120.0, 4200.0};
constexpr CellStyle kExponents = {"exponents", "%.6e", -1.0e-6, 1.0e-6};

struct GridFile {
    std::string path;
    std::size_t bytes;
};

const GridFile& gridFile(const CellStyle& style, int side) {
    static std::map<std::string, GridFile> files;
    const std::string name = std::string(style.name) + std::to_string(side) + ".asc";
    const auto known = files.find(name);
    if (known != files.end()) {
        return known->second;
    }
    const std::string text = gridText(side, style);
    return files[name] = {writeScratch(name, text), text.size()};
}

/// Reads the whole file, then each number behind its six header lines.
void readNumbers(const GridFile& file, std::vector<char>& bytes, std::vector<float>& cells) {
    bytes.resize(file.bytes);
    const char* cursor = bytes.data();
    const char* const end = cursor + readFile(file.path, bytes.data(), bytes.size());
    for (int line = 0; line < 6; ++line) {
        cursor = static_cast<const char*>(
                     std::memchr(cursor, '\n', static_cast<std::size_t>(end - cursor))) +
                 1;
    }
    for (float& cell : cells) {
        double value = 0.0;
        cursor = std::from_chars(cursor, end, value).ptr + 1;
        cell = static_cast<float>(value);
    }
}

void countBytes(benchmark::State& state, const GridFile& file) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(file.bytes));
}

void load(benchmark::State& state, const CellStyle& style, int side) {
    const GridFile& file = gridFile(style, side);
    const QString path = QString::fromStdString(file.path);
    const auto map = std::make_unique<veltaGEO>();
    for (auto _ : state) {
        benchmark::DoNotOptimize(map->loadASCFile(path));
    }
    countBytes(state, file);
    std::vector<char> bytes;
    std::vector<float> cells(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
    readNumbers(file, bytes, cells);
    for (int row = 0; row < side; ++row) {
        if (std::memcmp(map->grid[row], cells.data() + row * std::ptrdiff_t{side},
                        static_cast<std::size_t>(side) * sizeof(float)) != 0) {
            state.SkipWithError("not the cells of the file");
        }
    }
}

void ours(benchmark::State& state, const CellStyle& style) {
    load(state, style, kSide);
}

void gdal(benchmark::State& state, const CellStyle& style) {
    const GridFile& file = gridFile(style, kSide);
    std::vector<float> cells(std::size_t{kSide} * kSide);
    for (auto _ : state) {
        if (!readByGdal(file.path, cells.data(), kSide, kSide)) {
            state.SkipWithError("GDAL cannot read the file");
        }
    }
    countBytes(state, file);
}

/// Reuses the buffer for the file: allocating it would take time too.
void fromChars(benchmark::State& state, const CellStyle& style) {
    const GridFile& file = gridFile(style, kSide);
    std::vector<char> bytes;
    std::vector<float> cells(std::size_t{kSide} * kSide);
    for (auto _ : state) {
        readNumbers(file, bytes, cells);
        benchmark::DoNotOptimize(cells.data());
        benchmark::ClobberMemory();
    }
    countBytes(state, file);
}

// clang-format off
BENCHMARK_CAPTURE(ours, d, kTwoDecimals)->Name("asc_two_decimals/ours")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(gdal, d, kTwoDecimals)->Name("asc_two_decimals/gdal")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fromChars, d, kTwoDecimals)->Name("asc_two_decimals/from_chars")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ours, i, kIntegers)->Name("asc_integers/ours")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(gdal, i, kIntegers)->Name("asc_integers/gdal")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fromChars, i, kIntegers)->Name("asc_integers/from_chars")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ours, e, kExponents)->Name("asc_exponents/ours")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(gdal, e, kExponents)->Name("asc_exponents/gdal")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fromChars, e, kExponents)->Name("asc_exponents/from_chars")->Unit(benchmark::kMillisecond);
// clang-format on

/// Time by the side of the grid.
void ofSide(benchmark::State& state) {
    load(state, kTwoDecimals, static_cast<int>(state.range(0)));
}
BENCHMARK(ofSide)->Name("asc_size/ours")->RangeMultiplier(2)->Range(256, kSide);

}  // namespace
