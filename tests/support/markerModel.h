// The rules of rings of traces and markers, restated on deques. The trace buffer is compared with them
// by random values and by its fuzz target.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <deque>
#include <limits>

namespace rfu::test {

/// A ring, oldest value first.
template <typename T>
struct RingModel {
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

using MarkerModel = RingModel<double>;

inline double averageOf(const MarkerModel& ring) {
    double sum = 0.0;
    int count = 0;
    for (const double value : ring.values) {
        if (value != -999.0) {
            sum += value;
            ++count;
        }
    }
    return count > 0 ? sum / count : std::numeric_limits<double>::quiet_NaN();
}

/// Orders numbers, and the two zeros.
inline bool isLess(double a, double b) {
    return a < b || (a == 0.0 && b == 0.0 && std::signbit(a) && !std::signbit(b));
}

/// Of a ring that is not empty.
inline double maximumOf(MarkerModel ring) {
    const auto numbers = std::partition(ring.values.begin(), ring.values.end(),
                                        [](double value) { return !std::isnan(value); });
    return numbers == ring.values.begin() ? ring.values.front()
                                          : *std::max_element(ring.values.begin(), numbers, isLess);
}

/// Of a ring that is not empty.
inline double minimumOf(const MarkerModel& ring) {
    std::deque<double> numbers;
    if (ring.values.front() == -999.0) {
        numbers.push_back(999.0);
    }
    for (const double value : ring.values) {
        if (!std::isnan(value) && value != -999.0) {
            numbers.push_back(value);
        }
    }
    return numbers.empty() ? ring.values.front()
                           : *std::min_element(numbers.begin(), numbers.end(), isLess);
}

inline int countAbove(const MarkerModel& ring, double limit) {
    return static_cast<int>(std::count_if(ring.values.begin(), ring.values.end(),
                                          [limit](double value) { return value > limit; }));
}

}  // namespace rfu::test
