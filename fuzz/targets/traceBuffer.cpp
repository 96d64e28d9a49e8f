// A sequence of operations on traceRssiBuffer, each compared with a model of deques: its result, its
// output, and the outputs that it leaves untouched. At the end, and in a copy, every marker's ring
// is the model's.
#include "support/input.h"
#include "support/require.h"

#include <rfUtils/trace/traceRssiBuffer.h>
#include <tests/support/markerModel.h>

#include <QVector>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

using namespace rfu::fuzz;
using namespace rfu::test;

namespace {

constexpr double kUntouched = 123.25;
constexpr int kMarkers = 6;

class Session {
public:
    Session(int traces, int values, int points) : buffer_(traces, values, points), points_(points) {
        traces_.capacity = static_cast<std::size_t>(std::max(traces, 0));
        for (MarkerModel& ring : markers_) {
            ring.capacity = static_cast<std::size_t>(std::max(values, 0));
        }
    }

    void step(Input& input) {
        const int operation = input.below(12);
        if (operation < 2) {
            return push(traceOf(input), operation == 0);
        }
        const int number = input.integer();
        switch (operation) {
            case 2:
            case 3:
                return append(number, input.real());
            case 4:
                return calculate(number, input.integer());
            case 5:
                return requireSummaries(number);
            case 6:
                return requireCount(number, input.real());
            case 7:
                return requireValues(number);
            case 8:
                return setPoints(number);
            case 9:
                return reset(number % 2 == 0);
            case 10:
                return takeCopy();
            default:
                return requireReserved(number);
        }
    }

    void requireAll() const {
        REQUIRE(buffer_.getPointNum() == points_);
        for (int marker = -1; marker <= kMarkers; ++marker) {
            requireValues(marker);
            requireSummaries(marker);
        }
    }

private:
    static std::vector<double> traceOf(Input& input) {
        std::vector<double> trace(static_cast<std::size_t>(input.below(8)));
        for (double& value : trace) {
            value = input.real();
        }
        return trace;
    }

    static bool isMarker(int marker) { return marker >= 0 && marker < kMarkers; }

    MarkerModel& ringOf(int marker) { return markers_[static_cast<std::size_t>(marker)]; }

    /// An empty ring for a bad index.
    MarkerModel modelOf(int marker) const {
        return isMarker(marker) ? markers_[static_cast<std::size_t>(marker)] : MarkerModel();
    }

    void push(std::vector<double> trace, bool back) {
        const std::size_t length = trace.size();
        back ? traces_.pushBack(trace) : traces_.pushFront(trace);
        back ? buffer_.push_back(trace) : buffer_.push_front(trace);
        REQUIRE(trace.size() == length);
    }

    void append(int marker, double value) {
        REQUIRE(buffer_.appendMarkerPower(marker, value) == isMarker(marker));
        if (isMarker(marker)) {
            ringOf(marker).pushBack(value);
        }
    }

    void calculate(int marker, int point) {
        REQUIRE(buffer_.calcMarkerPower(marker, point) == isMarker(marker));
        if (!isMarker(marker)) {
            return;
        }
        ringOf(marker).values.clear();
        for (const std::vector<double>& trace : traces_.values) {
            if (point >= 0 && static_cast<std::size_t>(point) < trace.size()) {
                ringOf(marker).pushBack(trace[static_cast<std::size_t>(point)]);
            }
        }
    }

    void requireSummaries(int marker) const {
        const MarkerModel ring = modelOf(marker);
        const bool isEmpty = ring.values.empty();
        using Summary = bool (traceRssiBuffer::*)(int, double*) const;
        const auto require = [&](Summary summary, auto expected) {
            double result = kUntouched;
            REQUIRE((buffer_.*summary)(marker, &result) == !isEmpty);
            REQUIRE(same(result, isEmpty ? kUntouched : expected(ring)));
            REQUIRE(!(buffer_.*summary)(marker, nullptr));
        };
        require(&traceRssiBuffer::getAverageMarkerPower, averageOf);
        require(&traceRssiBuffer::getMaxMarkerPower, maximumOf);
        require(&traceRssiBuffer::getMinMarkerPower, minimumOf);
    }

    void requireCount(int marker, double limit) const {
        constexpr int kUntouchedCount = -7;
        int count = kUntouchedCount;
        REQUIRE(buffer_.getCountLimitMarkerPower(marker, limit, &count) == isMarker(marker));
        REQUIRE(count == (isMarker(marker) ? countAbove(modelOf(marker), limit) : kUntouchedCount));
        REQUIRE(!buffer_.getCountLimitMarkerPower(marker, limit, nullptr));
    }

    void requireValues(int marker) const {
        const auto values = modelOf(marker).values;
        std::vector<double> plain = {kUntouched};
        QVector<double> ofQt = {kUntouched};
        REQUIRE(buffer_.getDataMarkerPower(plain, marker) == !values.empty());
        REQUIRE(buffer_.getDataMarkerPower(ofQt, marker) == !values.empty());
        REQUIRE(std::equal(plain.begin(), plain.end(), values.begin(), values.end(), same));
        REQUIRE(std::equal(ofQt.begin(), ofQt.end(), values.begin(), values.end(), same));
    }

    void setPoints(int points) {
        buffer_.setPointNum(points);
        points_ = points;
    }

    void reset(bool byOneName) {
        byOneName ? buffer_.resetMarkerBuffer() : buffer_.clearMarkers();
        for (MarkerModel& ring : markers_) {
            ring.values.clear();
        }
    }

    /// Continues with a copy; the original is changed and destroyed.
    void takeCopy() {
        traceRssiBuffer copy(buffer_);
        reset(true);
        copy.resetMarkerBuffer();
        buffer_ = copy;
        copy.appendMarkerPower(0, kUntouched);
    }

    void requireReserved(int any) {
        buffer_.calculate(any, any);
        buffer_.calculate(any, any, kUntouched);
        REQUIRE(buffer_.getAverageMarker(any, any) == 999.0);
        REQUIRE(buffer_.getMaxMarker(any, any) == 999.0);
        REQUIRE(buffer_.getMinMarker(any, any) == 999.0);
    }

    traceRssiBuffer buffer_;
    RingModel<std::vector<double>> traces_;
    std::array<MarkerModel, kMarkers> markers_;
    int points_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const int traces = input.below(8) - 1;
    const int values = input.below(8) - 1;
    Session session(traces, values, input.integer());
    while (!input.atEnd()) {
        session.step(input);
    }
    session.requireAll();
    return 0;
}
