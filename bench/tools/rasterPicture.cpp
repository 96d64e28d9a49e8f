// What `rfutils raster --png` does with a map: reading and colouring it, beside writing the picture.
#include "analysis/maps/rasterFile.h"
#include "analysis/maps/rasterImage.h"
#include "support/picture.h"

#include "support/random.h"
#include "support/scratchFolder.h"

#include <QImage>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <string>

namespace {

using namespace rfu;
using namespace rfu::bench;

constexpr int kSide = 2048;

/// Hills with a little noise, in metres to the centimetre.
std::string terrain() {
    Random random(11);
    std::string text =
        "ncols 2048\nnrows 2048\nxllcorner 0\nyllcorner 0\ncellsize 30\nNODATA_value -9999\n";
    for (int row = 0; row < kSide; ++row) {
        for (int column = 0; column < kSide; ++column) {
            const double height = 500.0 + 400.0 * std::sin(column / 97.0) * std::cos(row / 131.0) +
                                  random.between(0.0, 5.0);
            char cell[32];
            std::snprintf(cell, sizeof cell, column == 0 ? "%.2f" : " %.2f", height);
            text += cell;
        }
        text += '\n';
    }
    return text;
}

constexpr char kColors[] =
    "0 58 112 64\n160 96 150 74\n160 96 150 74\n300 172 190 98\n300 172 190 98\n450 222 204 134\n"
    "450 222 204 134\n620 190 148 100\n620 190 148 100\n800 148 108 84\n800 148 108 84\n"
    "1000 244 242 240\n";

/// The map's name; its colour table stands beside it.
const QString& map() {
    static const QString name = [] {
        writeScratch("terrain.clr", kColors);
        return QString::fromStdString(writeScratch("terrain.asc", terrain()));
    }();
    return name;
}

void loadAndColor(benchmark::State& state) {
    QImage image;
    for (auto _ : state) {
        image = draw(loadRaster(map()));
    }
    if (image.width() != kSide || image.height() != kSide || image.allGray()) {
        state.SkipWithError("no picture in colours");
    }
}

void encode(benchmark::State& state) {
    const QImage image = draw(loadRaster(map()));
    const QString picture = map() + QStringLiteral(".png");
    for (auto _ : state) {
        command::savePicture(image, picture);
    }
    if (QImage(picture).size() != image.size()) {
        state.SkipWithError("no picture on the disk");
    }
}

}  // namespace

BENCHMARK(loadAndColor)->Name("raster_picture/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(encode)->Name("raster_picture/png_encoding")->Unit(benchmark::kMillisecond);
