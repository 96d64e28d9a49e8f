#pragma once

#include <QString>
#include <cstddef>
#include <optional>
#include <vector>

#include "analysis/recordings/sweepReader.h"

namespace rfu {

/// A limit over frequency: straight between its points, with a step where a frequency comes twice.
class LimitLine {
public:
    struct Point {
        double frequency;  // MHz
        double level;
    };

    explicit LimitLine(bool isUpper) : isUpper_(isUpper) {}

    bool isUpper() const { return isUpper_; }
    /// Ascending, a frequency at most twice.
    const std::vector<Point>& points() const { return points_; }
    void add(const Point& point) { points_.push_back(point); }

    /// The limit at a frequency in MHz: at a step the stricter of the two, outside the points none.
    std::optional<double> at(double frequency) const;

private:
    bool isUpper_;
    std::vector<Point> points_;
};

/// Upper and lower limits of the level, both in the same unit.
struct LimitMask {
    LimitLine upper{true};
    LimitLine lower{false};
};

/// Reads a mask from CSV: frequency, upper limit, lower limit; see readFrequencyTable(). An empty field
/// gives that limit no point there.
/// @param isLinear whether the unit is linear, so that limits have to be above 0
/// @throw InputError
LimitMask readLimitMask(const QString& file, bool isLinear);

/// Neighbouring points beyond a limit.
struct Violation {
    std::size_t first;
    std::size_t last;
    std::size_t worst;  // point
    bool isUpper;
    double limit;   // at the worst point
    double margin;  // at the worst point: dB from the level to the limit, below 0
};

struct MaskResult {
    std::size_t judged = 0;             // points with a level and a limit
    std::vector<Violation> violations;  // in the order of their first points
};

/// Judges each point at its frequency. Points strictly beyond a limit are gathered as runsAbove() does.
/// @param levels            of each point of the axis, in the unit of the mask; NaN for none
/// @param decibelsPerDecade of a linear unit; 0 for levels in dB
MaskResult judge(const LimitMask& mask, const FrequencyAxis& axis,
                 const std::vector<double>& levels, double decibelsPerDecade);

}  // namespace rfu
