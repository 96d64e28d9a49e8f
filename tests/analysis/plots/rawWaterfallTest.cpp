#include "analysis/plots/rawWaterfall.h"

#include <gtest/gtest.h>
#include <rfUtils/trace/traceRssiBuffer.h>

#include <QImage>
#include <algorithm>

using rfu::RawWaterfall;
using rfu::Sweep;
using rfu::WaterfallColors;

namespace {

constexpr double kNone = traceRssiBuffer::kNoMeasurement;

/// Ten seconds apart, but for a gap behind the second and the third.
const std::vector<Sweep> kSweeps = {
    {"2024-05-04 21:00:00", {-100.0, -50.0, kNone}}, {"2024-05-04 21:00:10", {-99.0, 0.0, 50.0}},
    {"2024-05-04 22:00:00", {-60.0, -70.0, -80.0}},  {"2024-05-04 23:00:00", {-60.0, -70.0, -80.0}},
    {"2024-05-04 23:00:10", {-10.0, -20.0, -30.0}},  {"2024-05-04 23:00:20", {-10.0, -20.0, -30.0}},
    {"2024-05-04 23:00:30", {-10.0, -20.0, -30.0}}};

WaterfallColors colors() {
    WaterfallColors result;
    result.range = rfu::LevelRange{-100.0, 0.0};
    return result;
}

/// Entries of the palette with "." for a transparent pixel, one line for each row.
std::string entriesOf(const QImage& image) {
    std::string text;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb color = image.pixel(x, y);
            int entry = 0;
            while (entry < 256 && rfu::kPalettes[0].color(entry) != color) {
                ++entry;
            }
            text += (x > 0 ? " " : "") +
                    (qAlpha(color) == 0 ? std::string(".") : std::to_string(entry));
        }
        text += '\n';
    }
    return text;
}

/// The rows of a picture of sweeps, of which the last ones are gone when they are read again.
QImage drawn(RawWaterfall& raw, const std::vector<Sweep>& sweeps, std::size_t gone = 0) {
    for (const Sweep& sweep : sweeps) {
        raw.add(sweep);
    }
    QImage image(static_cast<int>(sweeps[0].levels.size()), static_cast<int>(raw.height()),
                 QImage::Format_Indexed8);
    image.setColorTable(raw.colors());
    std::size_t next = 0;
    int row = 0;
    raw.draw(
        [&](Sweep& sweep) {
            if (next == sweeps.size() - gone) {
                return false;
            }
            sweep = sweeps[next++];
            return true;
        },
        [&](const uchar* entries) {
            std::copy(entries, entries + image.width(), image.scanLine(row++));
            return true;
        });
    EXPECT_EQ(row, image.height());
    return image;
}

QImage drawn(RawWaterfall& raw) {
    return drawn(raw, kSweeps);
}

}  // namespace

TEST(RawWaterfall, HasAPixelForEachCell) {
    RawWaterfall raw(colors(), true, 3);
    // 2.56 entries for each dB; the first colour makes room for the transparent one
    EXPECT_EQ(entriesOf(drawn(raw)),
              "1 128 .\n2 255 255\n. . .\n102 76 51\n. . .\n102 76 51\n230 204 179\n230 204 179\n"
              "230 204 179\n");
}

TEST(RawWaterfall, LeavesGapsOut) {
    RawWaterfall raw(colors(), false, 3);
    EXPECT_EQ(entriesOf(drawn(raw)),
              "1 128 .\n2 255 255\n102 76 51\n102 76 51\n230 204 179\n230 204 179\n230 204 179\n");
}

TEST(RawWaterfall, HasAllColoursWithoutHoles) {
    RawWaterfall raw(colors(), true, 2);
    EXPECT_EQ(entriesOf(drawn(raw, {{"", {-100.0, -99.0}}, {"", {-50.0, 0.0}}})), "0 2\n128 255\n");
}

TEST(RawWaterfall, TakesTheSweepsAgainWhereItHoldsNoCells) {
    RawWaterfall held(colors(), true, 3, 7 * 3 * 2);
    RawWaterfall passed(colors(), true, 3, 7 * 3 * 2 - 1);
    const QImage first = drawn(held);
    const QImage second = drawn(passed);
    EXPECT_EQ(first, second);
    RawWaterfall full(colors(), true, 3, 12);
    full.add(kSweeps[0]);
    full.add(kSweeps[1]);
    EXPECT_TRUE(full.holdsCells());
    full.add(kSweeps[2]);
    EXPECT_FALSE(full.holdsCells());
}

TEST(RawWaterfall, LeavesRowsBlankWhereSweepsAreGone) {
    RawWaterfall raw(colors(), true, 3, 0);
    EXPECT_EQ(entriesOf(drawn(raw, kSweeps, 5)),
              "1 128 .\n2 255 255\n. . .\n. . .\n. . .\n. . .\n. . .\n. . .\n. . .\n");
}

TEST(RawWaterfall, EndsWhereItsRowsAreNotWanted) {
    RawWaterfall raw(colors(), true, 3);
    drawn(raw);
    int rows = 0;
    raw.draw([](Sweep&) { return false; }, [&](const uchar*) { return ++rows < 3; });
    EXPECT_EQ(rows, 3);
}

TEST(RawWaterfall, ColoursFromPercentileToPercentileAfterTheOffsets) {
    WaterfallColors automatic;
    automatic.offsets = {0.0, 30.0};
    RawWaterfall raw(automatic, true, 2);
    raw.add({"", {-100.0, -90.0}});
    EXPECT_EQ(raw.range().low, -100.0);
    EXPECT_EQ(raw.range().high, -60.0);
}
