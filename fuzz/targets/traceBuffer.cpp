// A sequence of operations on traceRssiBuffer. After each one holds:
// - the answer, the output and what is left untouched of it are those of a model of deques;
// - at the end, and in a copy, every marker's ring is the model's.
#include "support/input.h"
#include "support/require.h"

#include <rfUtils/trace/traceRssiBuffer.h>

#include <QVector>

#include <cmath>
#include <deque>
#include <vector>

using namespace rfu::fuzz;

namespace {

constexpr double kUntouched = 123.25;
constexpr int kMarkers = 6;

template <typename T>
struct Ring {
    std::size_t capacity = 0;
    std::deque<T> values;

    void pushBack(const T& value) {
        values.push_back(value);
        if (values.size() > capacity) {
            values.pop_front();
        }
    }
    void pushFront(const T& value) {
        values.push_front(value);
        if (values.size() > capacity) {
            values.pop_back();
        }
    }
};

bool isNumber(double value) {
    return value == value;
}

/// Orders numbers, and the two zeros.
bool isLess(double a, double b) {
    return a < b || (a == 0.0 && b == 0.0 && std::signbit(a) && !std::signbit(b));
}

double averageOf(const std::deque<double>& values) {
    double sum = 0.0;
    int count = 0;
    for (const double value : values) {
        if (value != -999.0) {
            sum += value;
            ++count;
        }
    }
    return count > 0 ? sum / count : std::numeric_limits<double>::quiet_NaN();
}

double maximumOf(std::deque<double> values) {
    const auto numbers = std::partition(values.begin(), values.end(), isNumber);
    return numbers == values.begin() ? values.front()
                                     : *std::max_element(values.begin(), numbers, isLess);
}

double minimumOf(const std::deque<double>& values) {
    std::vector<double> numbers;
    if (values.front() == -999.0) {
        numbers.push_back(999.0);
    }
    for (const double value : values) {
        if (isNumber(value) && value != -999.0) {
            numbers.push_back(value);
        }
    }
    return numbers.empty() ? values.front()
                           : *std::min_element(numbers.begin(), numbers.end(), isLess);
}

class Session {
public:
    Session(int traces, int values, int points) : buffer_(traces, values, points), points_(points) {
        traces_.capacity = static_cast<std::size_t>(std::max(traces, 0));
        for (Ring<double>& ring : markers_) {
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
    using Values = std::deque<double>;

    static std::vector<double> traceOf(Input& input) {
        std::vector<double> trace(static_cast<std::size_t>(input.below(8)));
        for (double& value : trace) {
            value = input.real();
        }
        return trace;
    }

    static bool isMarker(int marker) { return marker >= 0 && marker < kMarkers; }

    Ring<double>& ringOf(int marker) { return markers_[static_cast<std::size_t>(marker)]; }

    /// Empty for what is no marker.
    Values valuesOf(int marker) const {
        return isMarker(marker) ? markers_[static_cast<std::size_t>(marker)].values : Values();
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
        const Values values = valuesOf(marker);
        using Summary = bool (traceRssiBuffer::*)(int, double*) const;
        const auto require = [&](Summary summary, auto expected) {
            double result = kUntouched;
            REQUIRE((buffer_.*summary)(marker, &result) == !values.empty());
            REQUIRE(same(result, values.empty() ? kUntouched : expected(values)));
            REQUIRE(!(buffer_.*summary)(marker, nullptr));
        };
        require(&traceRssiBuffer::getAverageMarkerPower, averageOf);
        require(&traceRssiBuffer::getMaxMarkerPower, maximumOf);
        require(&traceRssiBuffer::getMinMarkerPower, minimumOf);
    }

    void requireCount(int marker, double limit) const {
        const Values values = valuesOf(marker);
        constexpr int kUntouchedCount = -7;
        int count = kUntouchedCount;
        REQUIRE(buffer_.getCountLimitMarkerPower(marker, limit, &count) == isMarker(marker));
        const auto above = std::count_if(values.begin(), values.end(),
                                         [limit](double value) { return value > limit; });
        REQUIRE(count == (isMarker(marker) ? static_cast<int>(above) : kUntouchedCount));
        REQUIRE(!buffer_.getCountLimitMarkerPower(marker, limit, nullptr));
    }

    void requireValues(int marker) const {
        const Values values = valuesOf(marker);
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
        for (Ring<double>& ring : markers_) {
            ring.values.clear();
        }
    }

    /// Goes on with a copy whose original is changed and destroyed.
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
    Ring<std::vector<double>> traces_;
    std::array<Ring<double>, kMarkers> markers_;
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
