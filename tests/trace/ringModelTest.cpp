// Long random use of the buffer against plain queues that follow the same rules.
#include "markerData.h"

#include <support/samples.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>

namespace {

using rfu::test::Samples;

constexpr int kRounds = 60;
constexpr int kSteps = 500;

template <typename Value>
struct Ring {
    std::size_t capacity;
    std::deque<Value> held;

    void append(const Value& value) {
        held.push_back(value);
        if (held.size() > capacity) {
            held.pop_front();
        }
    }

    void insert(const Value& value) {
        if (capacity == 0) {
            return;
        }
        if (held.size() == capacity) {
            held.pop_back();
        }
        held.push_front(value);
    }
};

struct Model {
    Ring<std::vector<double>> traces;
    std::vector<Ring<double>> markers;
    int pointNum;

    Model(int traceCapacity, int markerCapacity, int points)
        : traces{capacityOf(traceCapacity), {}},
          markers(6, {capacityOf(markerCapacity), {}}),
          pointNum(points) {}

    static std::size_t capacityOf(int capacity) {
        return static_cast<std::size_t>(std::max(capacity, 0));
    }

    void calc(std::size_t marker, int pointIndex) {
        markers[marker].held.clear();
        for (const std::vector<double>& trace : traces.held) {
            if (pointIndex >= 0 && static_cast<std::size_t>(pointIndex) < trace.size()) {
                markers[marker].append(trace[static_cast<std::size_t>(pointIndex)]);
            }
        }
    }

    void clearMarkers() {
        for (Ring<double>& ring : markers) {
            ring.held.clear();
        }
    }
};

std::vector<double> randomTrace(Samples& samples) {
    std::vector<double> trace(samples.below(5));
    for (double& point : trace) {
        point = static_cast<double>(samples.below(2000)) - 1000.0;
    }
    return trace;
}

void step(traceRssiBuffer& buffer, Model& model, Samples& samples) {
    const int marker = static_cast<int>(samples.below(8)) - 1;
    const bool known = marker >= 0 && marker <= 5;
    const auto index = static_cast<std::size_t>(marker);
    switch (samples.below(10)) {
        case 0:
        case 1:
        case 2: {
            std::vector<double> trace = randomTrace(samples);
            buffer.push_back(trace);
            model.traces.append(trace);
            break;
        }
        case 3:
        case 4: {
            std::vector<double> trace = randomTrace(samples);
            buffer.push_front(trace);
            model.traces.insert(trace);
            break;
        }
        case 5:
        case 6: {
            const int point = static_cast<int>(samples.below(7)) - 1;
            ASSERT_EQ(buffer.calcMarkerPower(marker, point), known);
            if (known) {
                model.calc(index, point);
            }
            break;
        }
        case 7:
        case 8: {
            const double value = static_cast<double>(samples.below(100));
            ASSERT_EQ(buffer.appendMarkerPower(marker, value), known);
            if (known) {
                model.markers[index].append(value);
            }
            break;
        }
        default:
            if (samples.below(4) == 0) {
                samples.coin() ? buffer.clearMarkers() : buffer.resetMarkerBuffer();
                model.clearMarkers();
            }
            model.pointNum = samples.anyInteger();
            buffer.setPointNum(model.pointNum);
            buffer.calculate(marker, 1);
            buffer.calculate(marker, 1, 2.0);
            break;
    }
}

template <typename Values>
std::vector<double> asVector(const Values& values) {
    return {values.begin(), values.end()};
}

void expectSame(const traceRssiBuffer& buffer, const Model& model) {
    ASSERT_EQ(buffer.getPointNum(), model.pointNum);
    for (std::size_t marker = 0; marker < 6; ++marker) {
        const auto& held = model.markers[marker].held;
        ASSERT_EQ(markerData(buffer, static_cast<int>(marker)), asVector(held)) << marker;
        int count = -1;
        ASSERT_TRUE(buffer.getCountLimitMarkerPower(static_cast<int>(marker), -2000.0, &count));
        ASSERT_EQ(static_cast<std::size_t>(count), held.size());
    }
    // The traces show themselves by their points, in a copy whose markers hold all of them.
    traceRssiBuffer copy = buffer;
    for (int point = 0; point < 5; ++point) {
        Model expected = model;
        expected.calc(0, point);
        ASSERT_EQ(pointData(copy, point), asVector(expected.markers[0].held)) << point;
    }
}

TEST(RingModel, HoldsWhatPlainQueuesHold) {
    Samples samples(20241001);
    for (int round = 0; round < kRounds && !HasFatalFailure(); ++round) {
        const int traceCapacity = static_cast<int>(samples.below(14)) - 1;
        const int markerCapacity = static_cast<int>(samples.below(17)) - 1;
        traceRssiBuffer buffer(traceCapacity, markerCapacity, round);
        Model model(traceCapacity, markerCapacity, round);
        for (int i = 0; i < kSteps && !HasFatalFailure(); ++i) {
            step(buffer, model, samples);
            expectSame(buffer, model);
        }
    }
}

}  // namespace
