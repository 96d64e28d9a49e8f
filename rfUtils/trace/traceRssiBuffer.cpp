#include <rfUtils/trace/traceRssiBuffer.h>

#include <QDebug>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <iterator>
#include <limits>
#include <numeric>

namespace {

std::size_t ringCapacity(int capacity) {
    return static_cast<std::size_t>(std::max(capacity, 0));
}

/// The ring of a marker, null for an index that is no marker.
template <typename Rings>
auto* ringOf(Rings& rings, int marker) {
    // As an unsigned number a negative index is beyond the last marker.
    const auto index = static_cast<std::size_t>(marker);
    return index < std::size(rings) ? &rings[index] : nullptr;
}

// std::fmax and std::fmin leave the sign of a zero to the processor, these do not.

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

bool isMeasured(double value) {
    return value != traceRssiBuffer::kNoMeasurement;
}

using MarkerRing = boost::circular_buffer<double>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Calls `action(first, last)` for the one or two runs of memory that hold a ring's items, oldest
/// first. A loop over plain pointers need not look for the seam at every item.
template <typename Item, typename Action>
void forEachRun(const boost::circular_buffer<Item>& ring, Action action) {
    const auto older = ring.array_one();
    const auto newer = ring.array_two();
    action(older.first, older.first + older.second);
    action(newer.first, newer.first + newer.second);
}

/// `choose(best, value)` folded over a ring from `start`. The values are dealt out to several lanes,
/// which the processor works off side by side: for choices that do not depend on the order.
template <typename Choose>
double foldedInLanes(const MarkerRing& ring, double start, Choose choose) {
    std::array<double, 8> lanes;
    lanes.fill(start);
    forEachRun(ring, [&lanes, choose](const double* value, const double* end) {
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

/// Copies the values of a ring that is not empty, oldest first.
void copyOut(const MarkerRing& ring, double* out) {
    const auto older = ring.array_one();
    const auto newer = ring.array_two();
    std::memcpy(out, older.first, older.second * sizeof(double));
    std::memcpy(out + older.second, newer.first, newer.second * sizeof(double));
}

using Trace = std::vector<double>;
using TraceRing = boost::circular_buffer<Trace>;

/// Fills a marker's ring with a point of every trace that has it; the oldest may drop out.
void gatherNewest(const TraceRing& traces, std::size_t point, MarkerRing& ring) {
    ring.clear();
    for (const auto& trace : traces) {
        if (point < trace.size()) {
            ring.push_back(trace[point]);
        }
    }
}

/// Writes a point of each trace of a run that has it, and returns the end of what was written.
double* gatherRun(const Trace* trace, const Trace* end, std::size_t point, double* out) {
    // Lengths differ rarely. Asking four traces at once leaves the processor more of its loads for
    // the points, which lie far apart.
    constexpr std::ptrdiff_t kAtOnce = 4;
    for (; end - trace >= kAtOnce; trace += kAtOnce, out += kAtOnce) {
        bool allHaveIt = true;
        for (std::ptrdiff_t i = 0; i < kAtOnce; ++i) {
            allHaveIt &= point < trace[i].size();
        }
        if (!allHaveIt) {
            break;
        }
        for (std::ptrdiff_t i = 0; i < kAtOnce; ++i) {
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

/// The same where the ring has room for all of them: written in one run of memory from its first
/// value on. Nothing is allocated.
void gatherAll(const TraceRing& traces, std::size_t point, MarkerRing& ring) {
    ring.resize(traces.size());
    double* const first = ring.linearize();
    double* next = first;
    forEachRun(traces, [point, &next](const Trace* trace, const Trace* end) {
        next = gatherRun(trace, end, point, next);
    });
    ring.resize(static_cast<std::size_t>(next - first));
}

double maximumByRule(const MarkerRing& ring) {
    double maximum = ring.front();
    for (const double value : ring) {
        maximum = largerNumber(maximum, value);
    }
    return maximum;
}

double minimumByRule(const MarkerRing& ring) {
    double minimum =
        isMeasured(ring.front()) ? ring.front() : double{traceRssiBuffer::kPlaceholder};
    for (const double value : ring) {
        if (isMeasured(value)) {
            minimum = smallerNumber(minimum, value);
        }
    }
    return minimum;
}

// Plain comparison passes over every NaN and takes zeros of both signs for the same, so its answer
// is the rule's unless it is a zero, or the infinity that it starts from: then there may be nothing
// but NaN.

double maximumInLanes(const MarkerRing& ring) {
    return foldedInLanes(ring, -kInfinity,
                         [](double best, double value) { return value > best ? value : best; });
}

double minimumInLanes(const MarkerRing& ring) {
    return foldedInLanes(ring, kInfinity, [](double best, double value) {
        const double candidate = isMeasured(value) ? value : best;
        return candidate < best ? candidate : best;
    });
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
    // As an unsigned number a negative index is beyond every trace.
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
    const auto* const ring = ringOf(markerBuffer, marker);
    if (ring == nullptr || ring->empty() || out == nullptr) {
        return false;
    }
    double sum = 0.0;
    int count = 0;
    for (const double value : *ring) {
        if (isMeasured(value)) {
            sum += value;
            ++count;
        }
    }
    // Written out because the sign of the NaN of 0/0 depends on the processor.
    *out = count == 0 ? std::numeric_limits<double>::quiet_NaN() : sum / count;
    return true;
}

bool traceRssiBuffer::getMaxMarkerPower(int marker, double* out) const {
    const auto* const ring = ringOf(markerBuffer, marker);
    if (ring == nullptr || ring->empty() || out == nullptr) {
        return false;
    }
    const double maximum = maximumInLanes(*ring);
    *out = maximum == 0.0 || maximum == -kInfinity ? maximumByRule(*ring) : maximum;
    return true;
}

bool traceRssiBuffer::getMinMarkerPower(int marker, double* out) const {
    const auto* const ring = ringOf(markerBuffer, marker);
    if (ring == nullptr || ring->empty() || out == nullptr) {
        return false;
    }
    const double minimum = minimumInLanes(*ring);
    if (minimum == 0.0 || minimum == kInfinity) {
        *out = minimumByRule(*ring);
    } else {
        *out = isMeasured(ring->front()) ? minimum : std::min(minimum, double{kPlaceholder});
    }
    return true;
}

bool traceRssiBuffer::getCountLimitMarkerPower(int marker, double limit, int* out) const {
    const auto* const ring = ringOf(markerBuffer, marker);
    if (ring == nullptr || out == nullptr) {
        return false;
    }
    std::ptrdiff_t count = 0;
    forEachRun(*ring, [limit, &count](const double* value, const double* end) {
        count += std::count_if(value, end, [limit](double power) { return power > limit; });
    });
    *out = static_cast<int>(count);
    return true;
}

bool traceRssiBuffer::getDataMarkerPower(std::vector<double>& out, int marker) const {
    const auto* const ring = ringOf(markerBuffer, marker);
    const std::size_t size = ring == nullptr ? 0 : ring->size();
    if (size > out.capacity()) {
        out.clear();  // otherwise what it holds is written over, without zeros before
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
        out.resize(0);  // keeps the capacity; otherwise as above
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
