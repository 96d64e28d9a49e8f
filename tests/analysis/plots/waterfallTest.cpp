#include "analysis/plots/waterfall.h"

#include <gtest/gtest.h>
#include <rfUtils/trace/traceRssiBuffer.h>
#include <support/deadline.h>

#include <QBuffer>
#include <algorithm>
#include <cmath>

#include "analysis/recordings/timeStamp.h"

using rfu::FrequencyAxis;
using rfu::Palette;
using rfu::Sweep;
using rfu::Waterfall;
using rfu::WaterfallLayout;
using rfu::WaterfallOptions;

namespace {

constexpr double kNone = traceRssiBuffer::kNoMeasurement;
const Palette& kViridis = rfu::kPalettes[0];

/// Bins of 1 MHz from 100 MHz on.
FrequencyAxis axisOf(std::size_t points) {
    FrequencyAxis axis;
    for (std::size_t i = 0; i < points; ++i) {
        axis.points.push_back(100.0 + static_cast<double>(i));
    }
    axis.bands.push_back({0, 100.0, 100.0 + static_cast<double>(points)});
    return axis;
}

/// A sweep some seconds after 2024-05-04 21:00:00.
Sweep sweepAt(double seconds, std::vector<double> levels) {
    const std::int64_t time =
        rfu::microsecondsOf("2024-05-04 21:00:00") + std::llround(seconds * 1e6);
    return {rfu::dateText(time) + ' ' + rfu::timeText(time, 6), std::move(levels)};
}

/// The range of -100 to 0 dBm, a plotting area of 800 x 400.
WaterfallOptions plain() {
    WaterfallOptions options;
    options.size = QSize(996, 524);
    options.colors.range = rfu::LevelRange{-100.0, 0.0};
    return options;
}

/// As it is read from the file.
QImage decoded(const Waterfall& waterfall) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(waterfall.draw("title").save(&buffer, "PNG"));
    return QImage::fromData(bytes, "PNG").convertToFormat(QImage::Format_ARGB32);
}

/// Of a level between -100 and 0 dBm.
QRgb colorOf(double level, const Palette& palette = kViridis) {
    if (level == kNone) {
        return 0;
    }
    return palette.color(std::min(255, static_cast<int>((level + 100.0) * 2.56)));
}

/// How many pixels have a colour.
int countOf(const QImage& image, QRgb color) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        const auto* const line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        count += static_cast<int>(std::count(line, line + image.width(), color));
    }
    return count;
}

std::string labelsOf(const std::vector<rfu::TimeTick>& ticks) {
    std::string text;
    for (const rfu::TimeTick& tick : ticks) {
        text += (text.empty() ? "" : " ") + tick.date.toStdString() +
                (tick.date.isEmpty() ? "" : "/") + tick.label.toStdString();
    }
    return text;
}

/// Painted from sweeps of `points` points.
Waterfall painted(const WaterfallOptions& options, const std::vector<Sweep>& sweeps) {
    const std::size_t points = sweeps[0].levels.size();
    Waterfall waterfall(options, axisOf(points), points);
    for (const Sweep& sweep : sweeps) {
        waterfall.add(sweep);
    }
    return waterfall;
}

}  // namespace

TEST(Waterfall, ColoursEachCellToItsBorders) {
    const std::vector<std::vector<double>> levels = {{-100.0, -75.0, -50.0, kNone},
                                                     {-25.0, -1.0, 0.0, -99.0},
                                                     {50.0, -150.0, kNone, -60.0},
                                                     {-10.0, -20.0, -30.0, -40.0}};
    std::vector<Sweep> sweeps;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        sweeps.push_back(sweepAt(10.0 * static_cast<double>(i), levels[i]));
    }
    for (const Palette& palette : rfu::kPalettes) {
        WaterfallOptions options = plain();
        options.colors.palette = &palette;
        const Waterfall waterfall = painted(options, sweeps);
        const WaterfallLayout layout = waterfall.layout();
        const QImage image = decoded(waterfall);
        ASSERT_EQ(image.size(), QSize(996, 524));
        ASSERT_EQ(layout.area.size(), QSize(800, 400));
        for (std::size_t row = 0; row < 4; ++row) {
            for (std::size_t column = 0; column < 4; ++column) {
                const double level = levels[row][column];
                const QRgb color =
                    colorOf(level == kNone ? level : std::clamp(level, -100.0, 0.0), palette);
                const int left = layout.area.left() + 200 * static_cast<int>(column);
                const int top = layout.area.top() + 100 * static_cast<int>(row);
                for (const QPoint& at : {QPoint(left, top), QPoint(left + 199, top + 99)}) {
                    EXPECT_EQ(image.pixel(at), color) << palette.name << row << ' ' << column;
                }
            }
        }
        EXPECT_EQ(qAlpha(image.pixel(0, 0)), 255) << "the paper around it";
    }
}

TEST(Waterfall, LabelsItsAxesAndTheBar) {
    const Waterfall waterfall =
        painted(plain(), {sweepAt(3540, {-50, -50}), sweepAt(7140, {-50, -50}),
                          sweepAt(10740, {-50, -50}), sweepAt(14340, {-50, -50})});
    const WaterfallLayout layout = waterfall.layout();
    EXPECT_EQ(labelsOf(layout.rows),
              "2024-05-04/22:00 22:30 23:00 23:30 2024-05-05/00:00 00:30 01:00 01:30");
    // from 21:59 to 1:59 along 400 pixels
    EXPECT_NEAR(layout.rows[0].at, layout.area.top() + 400.0 / 240.0, 1e-9);
    EXPECT_NEAR(layout.rows[4].at, layout.area.top() + 400.0 * 121.0 / 240.0, 1e-9);
    EXPECT_EQ(layout.placeName, "frequency in MHz");
    ASSERT_EQ(layout.places.size(), 11U);
    EXPECT_EQ(layout.places[1].label, "100.2");
    EXPECT_NEAR(layout.places[1].at, layout.area.left() + 80.0, 1e-9);
    ASSERT_EQ(layout.levels.size(), 11U);
    EXPECT_EQ(layout.levels[3].label, "-70");
    EXPECT_DOUBLE_EQ(layout.barY(layout.levels[3].level), layout.bar.top() + 280.0);
    const QImage image = decoded(waterfall);
    // -70 dBm are entry 76.8 of 256
    EXPECT_EQ(image.pixel(layout.bar.center().x(), layout.bar.top() + 280), colorOf(-70.0));
    EXPECT_EQ(image.pixel(layout.bar.center().x(), layout.bar.top()), kViridis.color(255));
    EXPECT_EQ(image.pixel(layout.bar.center().x(), layout.bar.bottom()), kViridis.color(0));
}

TEST(Waterfall, TellsTheBarInTheShownUnit) {
    WaterfallOptions options = plain();
    options.scale = {"dBuV", 107.0, 0.0};
    const WaterfallLayout layout = painted(options, {sweepAt(0, {-50, -50})}).layout();
    ASSERT_FALSE(layout.levels.empty());
    EXPECT_EQ(layout.levels.front().label, "10");
    EXPECT_DOUBLE_EQ(layout.levels.front().level, -97.0);
}

TEST(Waterfall, AddsAnOffsetToEachPoint) {
    WaterfallOptions options = plain();
    options.colors.offsets = {10.0, -20.0};
    const Waterfall waterfall = painted(options, {sweepAt(0, {-50, -50})});
    const WaterfallLayout layout = waterfall.layout();
    const QImage image = decoded(waterfall);
    EXPECT_EQ(image.pixel(layout.area.left(), layout.area.center().y()), colorOf(-40.0));
    EXPECT_EQ(image.pixel(layout.area.right(), layout.area.center().y()), colorOf(-70.0));
}

TEST(Waterfall, KeepsTheTimeTrueToScale) {
    // ten sweeps of 10 s, a gap of 100 s, ten more: 300 s along 400 pixels
    std::vector<Sweep> sweeps;
    for (int i = 0; i < 20; ++i) {
        sweeps.push_back(sweepAt(10.0 * i + (i < 10 ? 0.0 : 100.0), {i < 10 ? -80.0 : -20.0}));
    }
    const Waterfall waterfall = painted(plain(), sweeps);
    const QImage image = decoded(waterfall);
    const QRect area = waterfall.layout().area;
    for (int y = 0; y < 400; ++y) {
        const QRgb expected = y < 133 ? colorOf(-80.0) : y < 266 ? 0 : colorOf(-20.0);
        ASSERT_EQ(image.pixel(area.left() + 5, area.top() + y), expected) << y;
    }
    WaterfallOptions options = plain();
    options.showsGaps = false;
    const Waterfall dense = painted(options, sweeps);
    const QImage denseImage = decoded(dense);
    EXPECT_EQ(countOf(denseImage, 0), 0);
    EXPECT_EQ(denseImage.pixel(area.left(), area.top() + 199), colorOf(-80.0));
    EXPECT_EQ(denseImage.pixel(area.left(), area.top() + 200), colorOf(-20.0));
    // Behind the gap stands its own time.
    EXPECT_EQ(labelsOf(dense.layout().rows),
              "2024-05-04/21:00:00 21:00:30 21:01:00 21:01:30 21:03:20 21:03:30 21:04:00 21:04:30");
    EXPECT_DOUBLE_EQ(dense.layout().rows[4].at, area.top() + 200.0);
}

TEST(Waterfall, GoesOnWhereTheClockWasMovedBack) {
    std::vector<Sweep> sweeps;
    for (int i = 0; i < 20; ++i) {
        sweeps.push_back(sweepAt(60.0 * i + (i < 10 ? 3600.0 : 0.0), {-5.0 * i}));
    }
    const Waterfall waterfall = painted(plain(), sweeps);
    const QImage image = decoded(waterfall);
    const QRect area = waterfall.layout().area;
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(image.pixel(area.left(), area.top() + 20 * i + 10), colorOf(-5.0 * i)) << i;
    }
    EXPECT_EQ(labelsOf(waterfall.layout().rows), "2024-05-04/22:00 22:05 21:10 21:15");
}

TEST(Waterfall, KeepsABurstOfOneCell) {
    const std::size_t points = 2000;
    for (const bool showsGaps : {true, false}) {
        WaterfallOptions options = plain();
        options.showsGaps = showsGaps;
        Waterfall waterfall(options, axisOf(points), points);
        for (int i = 0; i < 6000; ++i) {
            std::vector<double> levels(points, -90.0);
            if (i == 3456) {
                levels[1234] = -10.0;
            }
            waterfall.add(sweepAt(0.1 * i, std::move(levels)));
        }
        const QImage image = decoded(waterfall);
        EXPECT_EQ(countOf(image, 0), 0) << "no seams";
        const QRect area = waterfall.layout().area;
        int found = 0;
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x) {
                if (image.pixel(x, y) == colorOf(-10.0)) {
                    ++found;
                    EXPECT_EQ(x - area.left(), 1234 * 800 / 2000);
                    EXPECT_NEAR(y - area.top(), 3456 * 400 / 6000, 1);
                } else {
                    ASSERT_EQ(image.pixel(x, y), colorOf(-90.0)) << x << ' ' << y;
                }
            }
        }
        EXPECT_EQ(found, 1);
    }
}

TEST(Waterfall, ReducesAsAskedFor) {
    const struct {
        rfu::Reduction reduction;
        double level;
    } kRows[] = {{rfu::Reduction::Maximum, -20.0},
                 {rfu::Reduction::Mean, -50.0},
                 {rfu::Reduction::Minimum, -80.0}};
    for (const auto& row : kRows) {
        WaterfallOptions options = plain();
        options.reduction = row.reduction;
        Waterfall waterfall(options, axisOf(1600), 1600);
        for (int i = 0; i < 800; ++i) {
            std::vector<double> levels(1600, i % 2 == 0 ? -80.0 : kNone);
            for (std::size_t point = 1; point < levels.size(); point += 2) {
                levels[point] = i % 2 == 0 ? -20.0 : kNone;
            }
            waterfall.add(sweepAt(i, std::move(levels)));
        }
        const QImage image = decoded(waterfall);
        EXPECT_EQ(countOf(image.copy(waterfall.layout().area), colorOf(row.level)), 800 * 400)
            << row.level;
    }
}

TEST(Waterfall, CutsTheAxisBetweenBands) {
    FrequencyAxis axis;
    axis.points = {100.0, 200.0};
    axis.bands = {{0, 100.0, 101.0}, {1, 200.0, 201.0}};
    Waterfall waterfall(plain(), axis, 2);
    waterfall.add(sweepAt(0, {-30, -60}));
    const WaterfallLayout layout = waterfall.layout();
    ASSERT_EQ(layout.panels.size(), 2U);
    const QImage image = decoded(waterfall);
    const int y = layout.area.center().y();
    EXPECT_EQ(image.pixel(layout.panels[0].left, y), colorOf(-30.0));
    EXPECT_EQ(image.pixel(layout.panels[0].right - 1, y), colorOf(-30.0));
    EXPECT_EQ(image.pixel(layout.panels[1].left, y), colorOf(-60.0));
    EXPECT_EQ(image.pixel(layout.panels[1].right - 1, y), colorOf(-60.0));
    for (int x = layout.panels[0].right + 1; x < layout.panels[1].left - 1; ++x) {
        EXPECT_EQ(image.pixel(x, y), image.pixel(2, 2)) << "paper at " << x;
    }
}

TEST(Waterfall, CountsPointsAndSweepsWithoutFrequencies) {
    Waterfall waterfall(plain(), FrequencyAxis(), 4);
    for (int i = 0; i < 5; ++i) {
        waterfall.add({"", {-10.0 * i, -50, -50, -50}});
    }
    const WaterfallLayout layout = waterfall.layout();
    EXPECT_EQ(layout.placeName, "point");
    EXPECT_EQ(layout.rowName, "sweep");
    EXPECT_EQ(labelsOf(layout.rows), "1 2 3 4 5");
    EXPECT_DOUBLE_EQ(layout.rows[2].at, layout.area.top() + 160.0);
    const QImage image = decoded(waterfall);
    EXPECT_EQ(image.pixel(layout.area.left(), layout.area.top() + 160), colorOf(-20.0));
    EXPECT_EQ(countOf(image, 0), 0);
}

TEST(Waterfall, ColoursFromPercentileToPercentile) {
    WaterfallOptions options = plain();
    options.colors.range.reset();
    Waterfall waterfall(options, axisOf(1000), 1000);
    for (int i = 0; i < 2; ++i) {
        std::vector<double> levels;
        for (int point = 0; point < 1000; ++point) {
            levels.push_back(-100.0 + 0.05 * point);
        }
        waterfall.add(sweepAt(i, levels));
    }
    EXPECT_DOUBLE_EQ(waterfall.range().low, -99.55);   // the 20th of 2000
    EXPECT_DOUBLE_EQ(waterfall.range().high, -50.10);  // the 1998th
    EXPECT_DOUBLE_EQ(waterfall.layout().range.low, -99.55);
}

TEST(Waterfall, DrawsAnythingAtAnySize) {
    const Deadline deadline;
    for (const QSize& size : {Waterfall::kSmallest, QSize(320, 3000), QSize(3000, 200)}) {
        for (const double level : {kNone, -50.0, 998.9, -998.9}) {
            WaterfallOptions options = plain();
            options.size = size;
            options.colors.range.reset();
            Waterfall waterfall(options, axisOf(3), 3);
            waterfall.add(sweepAt(0, {level, kNone, level}));
            EXPECT_EQ(waterfall.draw("").size(), size) << level;
        }
    }
}
