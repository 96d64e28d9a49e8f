#include "analysis/plots/rawWaterfall.h"

#include <gtest/gtest.h>
#include <rfUtils/trace/traceRssiBuffer.h>

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

QImage drawn(RawWaterfall& raw) {
    for (const Sweep& sweep : kSweeps) {
        raw.add(sweep);
    }
    std::size_t next = 0;
    return raw.draw([&](Sweep& sweep) {
        if (next == kSweeps.size()) {
            return false;
        }
        sweep = kSweeps[next++];
        return true;
    });
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
    raw.add({"", {-100.0, -99.0}});
    raw.add({"", {-50.0, 0.0}});
    EXPECT_EQ(raw.height(), 2U);
    EXPECT_EQ(entriesOf(raw.draw([](Sweep&) { return false; })), "0 2\n128 255\n");
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

TEST(RawWaterfall, ColoursFromPercentileToPercentileAfterTheOffsets) {
    WaterfallColors automatic;
    automatic.offsets = {0.0, 30.0};
    RawWaterfall raw(automatic, true, 2);
    raw.add({"", {-100.0, -90.0}});
    EXPECT_EQ(raw.range().low, -100.0);
    EXPECT_EQ(raw.range().high, -60.0);
}
