#include <support/samples.h>

#include <rfUtils/trace/traceRssiBuffer.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <vector>

namespace {

using namespace rfu::test;

/// A marker ring and what it should hold, oldest first.
struct Ring {
    explicit Ring(std::size_t values) : capacity(values), buffer(1, static_cast<int>(values)) {}

    std::size_t capacity;
    traceRssiBuffer buffer;
    std::deque<double> held;

    void append(double value) {
        buffer.appendMarkerPower(3, value);
        held.push_back(value);
        if (held.size() > capacity) {
            held.pop_front();
        }
    }
};

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

/// Tries a statistic on short and long rings of all fill levels.
template <typename Check>
void forRandomRings(std::uint64_t seed, Check check) {
    Samples samples(seed);
    for (const std::size_t capacity : {std::size_t{12}, std::size_t{50}}) {
        Ring ring(capacity);
        for (int i = caseCount() / 2; i > 0 && !testing::Test::HasFatalFailure(); --i) {
            if (samples.below(capacity) == 0) {
                ring.buffer.clearMarkers();
                ring.held.clear();
            } else {
                ring.append(randomPower(samples));
            }
            check(ring, samples);
        }
    }
}

testing::AssertionResult gives(const Ring& ring, bool done, double got, double expected) {
    const bool expectedDone = !ring.held.empty();
    if (done == expectedDone && same(got, expectedDone ? expected : 7.0)) {
        return testing::AssertionSuccess();
    }
    testing::AssertionResult failure = testing::AssertionFailure();
    failure << std::hexfloat << got << " instead of " << expected << " of";
    for (const double value : ring.held) {
        failure << ' ' << value;
    }
    return failure;
}

TEST(DifferentialMarkers, getAverageMarkerPower) {
    forRandomRings(20240917, [](const Ring& ring, Samples&) {
        double sum = 0.0;
        int count = 0;
        for (const double value : ring.held) {
            if (value == -999.0) {
                continue;
            }
            sum = sum + value;
            count = count + 1;
        }
        const double expected = count == 0 ? std::numeric_limits<double>::quiet_NaN()
                                           : sum / static_cast<double>(count);
        double got = 7.0;
        const bool done = ring.buffer.getAverageMarkerPower(3, &got);
        ASSERT_TRUE(gives(ring, done, got, expected));
    });
}

/// Whether a is smaller than b; of two zeros the negative one is.
bool isSmaller(double a, double b) {
    return a < b || (a == b && std::signbit(a) && !std::signbit(b));
}

TEST(DifferentialMarkers, getMaxMarkerPower) {
    forRandomRings(20240918, [](const Ring& ring, Samples&) {
        double expected = std::numeric_limits<double>::quiet_NaN();
        for (const double value : ring.held) {
            if (std::isnan(expected) || isSmaller(expected, value)) {
                expected = value;
            }
        }
        double got = 7.0;
        const bool done = ring.buffer.getMaxMarkerPower(3, &got);
        ASSERT_TRUE(gives(ring, done, got, expected));
    });
}

TEST(DifferentialMarkers, getMinMarkerPower) {
    forRandomRings(20240919, [](const Ring& ring, Samples&) {
        double running = 999.0;
        bool found = false;
        for (std::size_t i = 0; i < ring.held.size(); ++i) {
            const double value = ring.held[i];
            if (value == -999.0) {
                continue;
            }
            found = true;
            if (i == 0 || std::isnan(running) || isSmaller(value, running)) {
                running = value;
            }
        }
        double got = 7.0;
        const bool done = ring.buffer.getMinMarkerPower(3, &got);
        ASSERT_TRUE(gives(ring, done, got, found ? running : 999.0));
    });
}

TEST(DifferentialMarkers, getCountLimitMarkerPower) {
    forRandomRings(20240920, [](const Ring& ring, Samples& samples) {
        const double limit = ring.held.empty() || samples.coin()
                                 ? randomPower(samples)
                                 : samples.beside(samples.oneOf(ring.held));
        int expected = 0;
        for (const double value : ring.held) {
            expected += value > limit ? 1 : 0;
        }
        int got = -7;
        ASSERT_TRUE(ring.buffer.getCountLimitMarkerPower(3, limit, &got));
        ASSERT_EQ(got, expected) << std::hexfloat << limit;
    });
}

template <typename Values>
testing::AssertionResult holds(const Values& got, const std::deque<double>& expected) {
    const bool equal = std::equal(got.begin(), got.end(), expected.begin(), expected.end(),
                                  [](double a, double b) { return same(a, b); });
    return equal ? testing::AssertionSuccess() : testing::AssertionFailure() << "other values";
}

// Into vectors that held nothing, less or more before, and into one that shares what it holds.
TEST(DifferentialMarkers, getDataMarkerPower) {
    forRandomRings(20240921, [](const Ring& ring, Samples& samples) {
        const auto before = static_cast<int>(samples.below(80));
        std::vector<double> got(static_cast<std::size_t>(before), 7.0);
        QVector<double> qtGot(before, 7.0);
        const QVector<double> shared = samples.coin() ? qtGot : QVector<double>();
        ASSERT_EQ(ring.buffer.getDataMarkerPower(got, 3), !ring.held.empty());
        ASSERT_EQ(ring.buffer.getDataMarkerPower(qtGot, 3), !ring.held.empty());
        ASSERT_TRUE(holds(got, ring.held));
        ASSERT_TRUE(holds(qtGot, ring.held));
        ASSERT_EQ(shared.count(7.0), shared.size());
    });
}

}  // namespace
