// A frame of 1280 x 720 pixels with a new trace of 16,384 points, drawn by the processor: the spectrum over a waterfall
// of 1,000 rows with six markers. And the newest trace alone, beside the same in a chart of Qt Charts.
#include "support/random.h"
#include "views/page.h"

#include <benchmark/benchmark.h>

#include <QColor>
#include <QMetaObject>
#include <QPointF>
#include <QVariant>
#include <QVector>

#ifdef RFUTILS_HAS_CHARTS
#include <QtCharts/QLineSeries>
#endif

#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <vector>

namespace {

using rfu::bench::Page;

constexpr int kPoints = 16384;
constexpr std::size_t kSweeps = 16;  // which come in turn
constexpr int kDepth = 1000;
constexpr int kFrames = 20;      // of a repetition, of which there are 15
constexpr double kStart = 88.0;  // MHz
constexpr double kStop = 108.0;
constexpr int kCarrier = kPoints / 2;
constexpr double kStrong = -25.0;  // dBm

/// Noise with a carrier in the middle, in hundredths of a dB as receivers write levels.
std::vector<QVector<double>> sweeps() {
    rfu::bench::Random random(20261122);
    std::vector<QVector<double>> all(kSweeps, QVector<double>(kPoints));
    for (QVector<double>& sweep : all) {
        for (double& level : sweep) {
            level = std::round(random.between(-110.0, -90.0) * 100.0) / 100.0;
        }
        sweep[kCarrier] = kStrong;
    }
    return all;
}

// Half of the height for each view.
constexpr char kViews[] = R"(
import QtQuick 2.15
import RfUtils 1.0

Column {
    id: page
    property var sweeps: []
    property int next: 0
    function strong() { return waterfall.levelColor(-25) }
    function strongX() { return Math.floor(waterfall.xOf(98)) }
    TraceModel { id: trace; depth: 1000; updateInterval: 0; startFrequency: 88; stopFrequency: 108 }
    MarkerModel {
        id: rows
        trace: trace
        Component.onCompleted: [88, 90.5, 94.3, 100, 105.1, 107].forEach((frequency, row) => set(row, frequency))
    }
    FrequencyZoom { id: shared; trace: trace }
    TraceView { width: page.width; height: page.height / 2; trace: trace; zoom: shared; markers: rows }
    WaterfallView {
        id: waterfall
        width: page.width
        height: page.height / 2
        trace: trace
        zoom: shared
        markers: rows
        minLevel: -120
        maxLevel: -20
    }
    function take(sweep) { sweeps.push(new Float64Array(sweep)) }
    function append() {
        next = (next + 1) % sweeps.length
        trace.append(sweeps[next])
    }
}
)";

QVariant call(QObject& page, const char* function) {
    QVariant result;
    QMetaObject::invokeMethod(&page, function, Q_RETURN_ARG(QVariant, result));
    return result;
}

void take(Page& page) {
    for (const QVector<double>& sweep : sweeps()) {
        QMetaObject::invokeMethod(&page.root(), "take",
                                  Q_ARG(QVariant, QVariant::fromValue(sweep)));
    }
}

void views(benchmark::State& state) {
    Page page(kViews);
    take(page);
    for (int i = 0; i < kDepth; ++i) {
        QMetaObject::invokeMethod(&page.root(), "append");
    }
    QImage picture = page.frame();
    for (auto _ : state) {
        QMetaObject::invokeMethod(&page.root(), "append");
        picture = page.frame();
    }
    const int x = call(page.root(), "strongX").toInt();
    if (picture.pixelColor(x, Page::kSize.height() * 3 / 4) !=
        call(page.root(), "strong").value<QColor>()) {
        state.SkipWithError("the carrier is not on the waterfall");
    }
}
BENCHMARK(views)->Name("view_frame/ours")->Iterations(kFrames)->Unit(benchmark::kMillisecond);

constexpr char kTrace[] = R"(
import QtQuick 2.15
import RfUtils 1.0

TraceView {
    trace: TraceModel { id: kept; depth: 1; updateInterval: 0; startFrequency: 88; stopFrequency: 108 }
    newestColor: "#ff0000"
    minLevel: -120
    maxLevel: -20
    property var sweeps: []
    property int next: 0
    function take(sweep) { sweeps.push(new Float64Array(sweep)) }
    function append() {
        next = (next + 1) % sweeps.length
        kept.append(sweeps[next])
    }
}
)";

bool shows(const QImage& picture, const QColor& color) {
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y) == color) {
                return true;
            }
        }
    }
    return false;
}

void trace(benchmark::State& state) {
    Page page(kTrace);
    take(page);
    QImage picture = page.frame();
    for (auto _ : state) {
        QMetaObject::invokeMethod(&page.root(), "append");
        picture = page.frame();
    }
    if (!shows(picture, Qt::red)) {
        state.SkipWithError("the trace is not in the view");
    }
}
BENCHMARK(trace)->Name("view_frame/trace")->Iterations(kFrames)->Unit(benchmark::kMillisecond);

#ifdef RFUTILS_HAS_CHARTS
constexpr char kChart[] = R"(
import QtQuick 2.15
import QtCharts 2.15

ChartView {
    property LineSeries series: line
    legend.visible: false
    LineSeries {
        id: line
        color: "#ff0000"
        axisX: ValueAxis { min: 88; max: 108 }
        axisY: ValueAxis { min: -120; max: -20 }
    }
}
)";

void chart(benchmark::State& state) {
    Page page(kChart);
    auto* const series =
        qobject_cast<QtCharts::QLineSeries*>(page.root().property("series").value<QObject*>());
    std::vector<QVector<QPointF>> traces;
    for (const QVector<double>& sweep : sweeps()) {
        QVector<QPointF> trace;
        for (int i = 0; i < kPoints; ++i) {
            trace.append({kStart + (kStop - kStart) * i / kPoints, sweep[i]});
        }
        traces.push_back(trace);
    }
    QImage picture = page.frame();
    std::size_t next = 0;
    for (auto _ : state) {
        next = (next + 1) % kSweeps;
        series->replace(traces[next]);
        picture = page.frame();
    }
    if (!shows(picture, Qt::red)) {
        state.SkipWithError("the trace is not on the chart");
    }
}
BENCHMARK(chart)->Name("view_frame/charts")->Iterations(kFrames)->Unit(benchmark::kMillisecond);
#endif

}  // namespace
