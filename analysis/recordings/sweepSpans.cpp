#include "analysis/recordings/sweepSpans.h"

#include <algorithm>
#include <cstddef>

#include "analysis/recordings/timeStamp.h"

namespace rfu {

namespace {

constexpr std::size_t kNeighbours = 7;  // to either side, whose steps make the usual one
constexpr std::int64_t kJitter = kMicrosecondsPerSecond;
constexpr std::int64_t kUnknownStep = kMicrosecondsPerSecond;

/// Sweeps of one time.
struct SameTime {
    std::int64_t begin;
    std::size_t sweeps;
};

std::vector<SameTime> runsOf(const std::vector<std::int64_t>& begins) {
    std::vector<SameTime> runs;
    for (const std::int64_t begin : begins) {
        if (!runs.empty() && begin <= runs.back().begin && begin >= runs.back().begin - kJitter) {
            ++runs.back().sweeps;
        } else {
            runs.push_back({begin, 1});
        }
    }
    return runs;
}

/// The lower median of the steps around a run, without backward ones.
std::int64_t usualStep(const std::vector<SameTime>& runs, std::size_t run) {
    std::vector<std::int64_t> steps;
    const std::size_t first = run > kNeighbours ? run - kNeighbours : 0;
    const std::size_t last = std::min(run + kNeighbours + 1, runs.size() - 1);
    for (std::size_t i = first; i < last; ++i) {
        const std::int64_t step = runs[i + 1].begin - runs[i].begin;
        if (step > 0) {
            steps.push_back(step);
        }
    }
    if (steps.empty()) {
        return kUnknownStep;
    }
    const auto middle = steps.begin() + static_cast<std::ptrdiff_t>((steps.size() - 1) / 2);
    std::nth_element(steps.begin(), middle, steps.end());
    return *middle;
}

}  // namespace

std::vector<TimeSpan> spansOf(const std::vector<std::int64_t>& begins) {
    const std::vector<SameTime> runs = runsOf(begins);
    const bool areCut = std::all_of(runs.begin(), runs.end(), [](const SameTime& run) {
        return run.begin % kMicrosecondsPerSecond == 0;
    });
    const std::int64_t resolution = areCut ? kMicrosecondsPerSecond : 0;
    std::vector<TimeSpan> spans;
    spans.reserve(begins.size());
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const std::int64_t usual = usualStep(runs, i);
        const std::int64_t step = i + 1 < runs.size() ? runs[i + 1].begin - runs[i].begin : usual;
        const bool isLast = step < 0 || step > usual + usual / 2 + resolution;
        const std::int64_t length = isLast ? usual : step;
        const auto sweeps = static_cast<std::int64_t>(runs[i].sweeps);
        for (std::int64_t k = 0; k < sweeps; ++k) {
            spans.push_back(
                {runs[i].begin + length / sweeps * k + length % sweeps * k / sweeps,
                 runs[i].begin + length / sweeps * (k + 1) + length % sweeps * (k + 1) / sweeps});
        }
    }
    return spans;
}

}  // namespace rfu
