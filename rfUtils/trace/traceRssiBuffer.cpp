#include <rfUtils/trace/traceRssiBuffer.h>

#include <QDebug>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <limits>
#include <numeric>

namespace {

using Trace = std::vector<double>;
using TraceRing = boost::circular_buffer<Trace>;
using MarkerRing = boost::circular_buffer<double>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::size_t ringCapacity(int capacity) {
    return static_cast<std::size_t>(std::max(capacity, 0));
}

/// The ring of a marker; null for a bad index.
template <typename Rings>
auto* ringOf(Rings& rings, int marker) {
    // A negative index becomes a large unsigned one.
    const auto index = static_cast<std::size_t>(marker);
    return index < std::size(rings) ? &rings[index] : nullptr;
}

bool isMeasured(double value) {
    return value != traceRssiBuffer::kNoMeasurement;
}

/// Calls `action(begin, end)` for the one or two contiguous segments of a ring, oldest first: loops
/// over plain pointers need no wrap-around check.
template <typename Item, typename Action>
void forEachSegment(const boost::circular_buffer<Item>& ring, Action action) {
    const auto older = ring.array_one();
    const auto newer = ring.array_two();
    action(older.first, older.first + older.second);
    action(newer.first, newer.first + newer.second);
}

/// Refills a marker's ring with one point of each trace that has it; the oldest may drop out.
void gatherNewest(const TraceRing& traces, std::size_t point, MarkerRing& ring) {
    ring.clear();
    for (const Trace& trace : traces) {
        if (point < trace.size()) {
            ring.push_back(trace[point]);
        }
    }
}

/// Writes one point of each trace that has it.
/// @return the end of the output
double* gatherSegment(const Trace* trace, const Trace* end, std::size_t point, double* out) {
    // Lengths rarely differ: one branch per four traces, so that the loads of their points, which
    // are far apart in memory, overlap.
    constexpr std::ptrdiff_t kUnroll = 4;
    for (; end - trace >= kUnroll; trace += kUnroll, out += kUnroll) {
        bool allHaveIt = true;
        for (std::ptrdiff_t i = 0; i < kUnroll; ++i) {
            allHaveIt &= point < trace[i].size();
        }
        if (!allHaveIt) {
            break;
        }
        for (std::ptrdiff_t i = 0; i < kUnroll; ++i) {
            out[i] = trace[i][point];
        }
    }
    for (; trace != end; ++trace) {
        if (point < trace->size()) {
            *out++ = (*trace)[point];
        }
    }
    return out;
}

/// gatherNewest() for a ring with room for all traces: writes to one contiguous segment and
/// allocates nothing.
void gatherAll(const TraceRing& traces, std::size_t point, MarkerRing& ring) {
    ring.resize(traces.size());
    double* const first = ring.linearize();
    double* next = first;
    forEachSegment(traces, [point, &next](const Trace* trace, const Trace* end) {
        next = gatherSegment(trace, end, point, next);
    });
    ring.resize(static_cast<std::size_t>(next - first));
}

double average(const MarkerRing& ring) {
    double sum = 0.0;
    int count = 0;
    for (const double value : ring) {
        if (isMeasured(value)) {
            sum += value;
            ++count;
        }
    }
    // The sign of the NaN of 0/0 depends on the processor.
    return count == 0 ? std::numeric_limits<double>::quiet_NaN() : sum / count;
}

/// Folds a ring by `choose(best, value)` in independent lanes, which the processor can run in
/// parallel. The result must not depend on the order of the values.
template <typename Choose>
double foldInLanes(const MarkerRing& ring, double start, Choose choose) {
    std::array<double, 8> lanes;
    lanes.fill(start);
    forEachSegment(ring, [&lanes, choose](const double* value, const double* end) {
        for (; static_cast<std::size_t>(end - value) >= lanes.size(); value += lanes.size()) {
            for (std::size_t lane = 0; lane < lanes.size(); ++lane) {
                lanes[lane] = choose(lanes[lane], value[lane]);
            }
        }
        for (; value != end; ++value) {
            lanes[0] = choose(lanes[0], *value);
        }
    });
    return std::accumulate(lanes.begin() + 1, lanes.end(), lanes[0], choose);
}

// std::fmax and std::fmin leave the sign of a zero to the processor.

double largerNumber(double a, double b) {
    if (std::isnan(a)) {
        return b;
    }
    if (a == b) {
        return std::signbit(a) ? b : a;
    }
    return std::max(a, b);
}

double smallerNumber(double a, double b) {
    if (std::isnan(a)) {
        return b;
    }
    if (a == b) {
        return std::signbit(a) ? a : b;
    }
    return std::min(a, b);
}

// Comparing with < and > ignores NaN and takes zeros of both signs as equal. So the fast result
// holds unless it is 0, or the infinity of the start: then the ring is scanned again by the full
// rule.

double maximum(const MarkerRing& ring) {
    double result = foldInLanes(
        ring, -kInfinity, [](double best, double value) { return value > best ? value : best; });
    if (result == 0.0 || result == -kInfinity) {
        result = ring.front();
        for (const double value : ring) {
            result = largerNumber(result, value);
        }
    }
    return result;
}

double minimum(const MarkerRing& ring) {
    const double start =
        isMeasured(ring.front()) ? ring.front() : double{traceRssiBuffer::kPlaceholder};
    double result = foldInLanes(ring, kInfinity, [](double best, double value) {
        const double candidate = isMeasured(value) ? value : best;
        return candidate < best ? candidate : best;
    });
    if (result != 0.0 && result != kInfinity) {
        return std::min(result, start);
    }
    result = start;
    for (const double value : ring) {
        if (isMeasured(value)) {
            result = smallerNumber(result, value);
        }
    }
    return result;
}

/// False, with `out` untouched, for a bad marker, an empty ring or no `out`.
template <typename Statistic>
bool store(double* out, const MarkerRing* ring, Statistic statistic) {
    const bool stores = ring != nullptr && !ring->empty() && out != nullptr;
    if (stores) {
        *out = statistic(*ring);
    }
    return stores;
}

/// Copies the values of a ring, oldest first.
/// @param out has as many values
void copyOut(const MarkerRing& ring, double* out) {
    const auto older = ring.array_one();
    const auto newer = ring.array_two();
    std::memcpy(out, older.first, older.second * sizeof(double));
    std::memcpy(out + older.second, newer.first, newer.second * sizeof(double));
}

}  // namespace

traceRssiBuffer::traceRssiBuffer(int traceCapacity, int markerCapacity, int points)
    : traceBuffer(ringCapacity(traceCapacity)), pointNum(points) {
    for (auto& ring : markerBuffer) {
        ring.set_capacity(ringCapacity(markerCapacity));
    }
}

void traceRssiBuffer::push_back(std::vector<double>& trace) {
    traceBuffer.push_back(trace);
}

void traceRssiBuffer::push_front(std::vector<double>& trace) {
    traceBuffer.push_front(trace);
}

int traceRssiBuffer::getPointNum() const {
    return pointNum;
}

void traceRssiBuffer::setPointNum(int points) {
    pointNum = points;
}

bool traceRssiBuffer::calcMarkerPower(int marker, int pointIndex) {
    auto* const ring = ringOf(markerBuffer, marker);
    if (ring == nullptr) {
        return false;
    }
    // A negative index becomes a large unsigned one.
    const auto point = static_cast<std::size_t>(pointIndex);
    if (traceBuffer.size() <= ring->capacity()) {
        gatherAll(traceBuffer, point, *ring);
    } else {
        gatherNewest(traceBuffer, point, *ring);
    }
    return true;
}

bool traceRssiBuffer::appendMarkerPower(int marker, double value) {
    auto* const ring = ringOf(markerBuffer, marker);
    if (ring == nullptr) {
        return false;
    }
    ring->push_back(value);
    return true;
}

bool traceRssiBuffer::getAverageMarkerPower(int marker, double* out) const {
    return store(out, ringOf(markerBuffer, marker), average);
}

bool traceRssiBuffer::getMaxMarkerPower(int marker, double* out) const {
    return store(out, ringOf(markerBuffer, marker), maximum);
}

bool traceRssiBuffer::getMinMarkerPower(int marker, double* out) const {
    return store(out, ringOf(markerBuffer, marker), minimum);
}

bool traceRssiBuffer::getCountLimitMarkerPower(int marker, double limit, int* out) const {
    const auto* const ring = ringOf(markerBuffer, marker);
    if (ring == nullptr || out == nullptr) {
        return false;
    }
    std::ptrdiff_t count = 0;
    forEachSegment(*ring, [limit, &count](const double* value, const double* end) {
        count += std::count_if(value, end, [limit](double power) { return power > limit; });
    });
    *out = static_cast<int>(count);
    return true;
}

bool traceRssiBuffer::getDataMarkerPower(std::vector<double>& out, int marker) const {
    const auto* const ring = ringOf(markerBuffer, marker);
    const std::size_t size = ring == nullptr ? 0 : ring->size();
    if (size > out.capacity()) {
        out.clear();  // resize() then has nothing to copy
    }
    out.resize(size);
    if (size == 0) {
        return false;
    }
    copyOut(*ring, out.data());
    return true;
}

bool traceRssiBuffer::getDataMarkerPower(QVector<double>& out, int marker) const {
    const auto* const ring = ringOf(markerBuffer, marker);
    const int size = ring == nullptr ? 0 : static_cast<int>(ring->size());
    if (size > out.capacity() || !out.isDetached()) {
        out.resize(0);  // keeps the capacity, unlike clear()
    }
    out.resize(size);
    if (size == 0) {
        return false;
    }
    copyOut(*ring, out.data());
    return true;
}

void traceRssiBuffer::resetMarkerBuffer() {
    for (auto& ring : markerBuffer) {
        ring.clear();
    }
}

void traceRssiBuffer::clearMarkers() {
    resetMarkerBuffer();
}

void traceRssiBuffer::info() const {
    for (const auto& ring : markerBuffer) {
        qCritical() << "traceMarkerBuffer ::::" << ring.capacity() << ", " << ring.size();
    }
}

void traceRssiBuffer::calculate(int, int) {}

void traceRssiBuffer::calculate(int, int, double) {}

double traceRssiBuffer::getAverageMarker(int, int) const {
    return kPlaceholder;
}

double traceRssiBuffer::getMaxMarker(int, int) const {
    return kPlaceholder;
}

double traceRssiBuffer::getMinMarker(int, int) const {
    return kPlaceholder;
}
