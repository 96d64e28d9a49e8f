// A sweep of 16,384 points that a page gives to a TraceModel of full depth, with six markers that show its statistics.
#include "support/random.h"

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QMetaObject>
#include <QObject>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QVariant>
#include <QVector>

#include <cmath>
#include <memory>

namespace {

constexpr int kPoints = 16384;
constexpr int kSweeps = 16;  // which come in turn
constexpr int kDepth = 1000;

// Markers are told of each sweep.
constexpr char kPage[] = R"(
import QtQml 2.15
import RfUtils 1.0

QtObject {
    id: page
    property var sweeps: []
    property int next: 0
    property TraceModel trace: TraceModel { depth: 1000; updateInterval: 0; startFrequency: 88; stopFrequency: 108 }
    property MarkerModel markers: MarkerModel {
        trace: page.trace
        limit: -80
        Component.onCompleted: [88, 90.5, 98.3, 100, 105.1, 108].forEach((frequency, row) => set(row, frequency))
    }
    function take(sweep, isTyped) { sweeps.push(isTyped ? new Float64Array(sweep) : [].slice.call(sweep)) }
    function append() {
        next = (next + 1) % sweeps.length
        trace.append(sweeps[next])
    }
    function shows() {
        const row = markers.get(3)
        return row.valid && row.level === sweeps[next][row.point] && row.above > 0
    }
}
)";

/// Levels in hundredths of a dB, as receivers write them, or any.
QVector<double> sweep(rfu::bench::Random& random, bool isInHundredths) {
    QVector<double> levels(kPoints);
    for (double& level : levels) {
        level = random.between(-130.0, -20.0);
        if (isInHundredths) {
            level = std::round(level * 100.0) / 100.0;
        }
    }
    return levels;
}

bool call(QObject& page, const char* function) {
    QVariant result;
    return QMetaObject::invokeMethod(&page, function, Q_RETURN_ARG(QVariant, result)) &&
           result.toBool();
}

std::unique_ptr<QObject> filledPage(QQmlEngine& engine, bool isTyped, bool isInHundredths) {
    engine.addImportPath(QStringLiteral(RFUTILS_QML_FOLDER));
    QQmlComponent component(&engine);
    component.setData(kPage, {});
    std::unique_ptr<QObject> page(component.create());
    rfu::bench::Random random(20261121);
    for (int i = 0; page != nullptr && i < kSweeps; ++i) {
        QMetaObject::invokeMethod(
            page.get(), "take", Q_ARG(QVariant, QVariant::fromValue(sweep(random, isInHundredths))),
            Q_ARG(QVariant, isTyped));
    }
    for (int i = 0; page != nullptr && i < kDepth; ++i) {
        QMetaObject::invokeMethod(page.get(), "append");
    }
    return page;
}

void append(benchmark::State& state, bool isTyped, bool isInHundredths) {
    static int count = 1;
    static char name[] = "bench_qml";
    static char* arguments[] = {name, nullptr};
    static const QCoreApplication application(count, arguments);
    QQmlEngine engine;
    const std::unique_ptr<QObject> page = filledPage(engine, isTyped, isInHundredths);
    if (page == nullptr || !call(*page, "shows")) {
        state.SkipWithError("the page does not show the sweeps");
        return;
    }
    for (auto _ : state) {
        QMetaObject::invokeMethod(page.get(), "append");
    }
    if (!call(*page, "shows")) {
        state.SkipWithError("the page does not show the last sweep");
    }
}

// clang-format off
BENCHMARK_CAPTURE(append, typed_array, true, true)->Name("trace_model_sweep/ours");
BENCHMARK_CAPTURE(append, array, false, true)->Name("trace_model_sweep/array");
BENCHMARK_CAPTURE(append, odd_levels, true, false)->Name("trace_model_sweep/odd_levels");
// clang-format on

}  // namespace
