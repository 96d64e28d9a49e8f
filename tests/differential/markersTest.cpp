#include <support/markerModel.h>
#include <support/samples.h>

#include <rfUtils/trace/traceRssiBuffer.h>

#include <QVector>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

using namespace rfu::test;

constexpr int kMarker = 3;

double randomPower(Samples& samples) {
    const Range powers{-150.0, 30.0, {-999.0, 999.0, 0.0}};
    switch (samples.below(5)) {
        case 0:
            return -999.0;
        case 1:
            return samples.coin() ? 0.0 : -0.0;
        default:
            return samples.number(powers);
    }
}

/// Calls check(buffer, ring, samples) for short and long rings of all fill levels.
template <typename Check>
void forRandomRings(std::uint64_t seed, Check check) {
    Samples samples(seed);
    for (const int capacity : {12, 50}) {
        traceRssiBuffer buffer(1, capacity);
        MarkerModel ring{static_cast<std::size_t>(capacity), {}};
        for (int i = caseCount() / 2; i > 0 && !testing::Test::HasFatalFailure(); --i) {
            if (samples.below(ring.capacity) == 0) {
                buffer.clearMarkers();
                ring.values.clear();
            } else {
                const double value = randomPower(samples);
                buffer.appendMarkerPower(kMarker, value);
                ring.pushBack(value);
            }
            check(buffer, ring, samples);
        }
    }
}

template <typename Model>
void expectStatistic(std::uint64_t seed, bool (traceRssiBuffer::*statistic)(int, double*) const,
                     Model model) {
    forRandomRings(seed, [&](const traceRssiBuffer& buffer, const MarkerModel& ring, Samples&) {
        const bool isEmpty = ring.values.empty();
        double got = 7.0;
        ASSERT_EQ((buffer.*statistic)(kMarker, &got), !isEmpty);
        ASSERT_TRUE(same(got, isEmpty ? 7.0 : model(ring)))
            << std::hexfloat << got << " of " << testing::PrintToString(ring.values);
    });
}

TEST(DifferentialMarkers, getAverageMarkerPower) {
    expectStatistic(20240917, &traceRssiBuffer::getAverageMarkerPower, averageOf);
}

TEST(DifferentialMarkers, getMaxMarkerPower) {
    expectStatistic(20240918, &traceRssiBuffer::getMaxMarkerPower, maximumOf);
}

TEST(DifferentialMarkers, getMinMarkerPower) {
    expectStatistic(20240919, &traceRssiBuffer::getMinMarkerPower, minimumOf);
}

TEST(DifferentialMarkers, getCountLimitMarkerPower) {
    forRandomRings(20240920,
                   [](const traceRssiBuffer& buffer, const MarkerModel& ring, Samples& samples) {
                       const double limit = ring.values.empty() || samples.coin()
                                                ? randomPower(samples)
                                                : samples.beside(samples.oneOf(ring.values));
                       int got = -7;
                       ASSERT_TRUE(buffer.getCountLimitMarkerPower(kMarker, limit, &got));
                       ASSERT_EQ(got, countAbove(ring, limit)) << std::hexfloat << limit;
                   });
}

template <typename Values>
bool holds(const Values& got, const MarkerModel& ring) {
    return std::equal(got.begin(), got.end(), ring.values.begin(), ring.values.end(),
                      [](double a, double b) { return same(a, b); });
}

/// Into vectors of any size before, and into one that shares its data.
TEST(DifferentialMarkers, getDataMarkerPower) {
    forRandomRings(20240921,
                   [](const traceRssiBuffer& buffer, const MarkerModel& ring, Samples& samples) {
                       const auto before = static_cast<int>(samples.below(80));
                       std::vector<double> got(static_cast<std::size_t>(before), 7.0);
                       QVector<double> qtGot(before, 7.0);
                       const QVector<double> shared = samples.coin() ? qtGot : QVector<double>();
                       ASSERT_EQ(buffer.getDataMarkerPower(got, kMarker), !ring.values.empty());
                       ASSERT_EQ(buffer.getDataMarkerPower(qtGot, kMarker), !ring.values.empty());
                       ASSERT_TRUE(holds(got, ring) && holds(qtGot, ring));
                       ASSERT_EQ(shared.count(7.0), shared.size());
                   });
}

}  // namespace
