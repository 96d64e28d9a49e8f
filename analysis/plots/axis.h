#pragma once

#include <QString>
#include <vector>

namespace rfu {

/// From the lowest to the highest value.
struct ValueRange {
    double low;
    double high;
};

/// Of the finite values of several series; 0 to 1 without any.
ValueRange rangeOf(const std::vector<const std::vector<double>*>& series);

/// How many ticks a vertical axis has room for, 40 pixels or more apart; at most Axis::kWantedTicks.
int verticalTicks(double pixels);

/// The range of values along an axis and the round numbers (ticks) on it: multiples of 1, 2 or 5
/// times a power of ten, not many more of them than wanted.
class Axis {
public:
    enum class Ends {
        Exact,   // at the given values
        Rounded  // moved out to the next tick
    };

    static constexpr int kWantedTicks = 10;
    // The significant digits of the longest labels that fit
    static constexpr int kPlaceDigits = 12;  // between the ticks of a horizontal axis
    static constexpr int kLevelDigits = 7;   // beside a vertical axis

    /// A range that is empty, or so narrow that neighbouring ticks would have the same label, is
    /// widened by 1 % of its lower end to both sides, by 0.5 at least.
    /// @param low, high finite, as is their difference
    /// @param maxDigits significant digits of a label, at most 13
    /// @param minStep from tick to tick
    /// @param wantedTicks at most kWantedTicks
    Axis(double low, double high, Ends ends, int maxDigits, double minStep = 0.0,
         int wantedTicks = kWantedTicks);

    /// Whether neighbouring ticks of a range have different labels, so that it is not widened.
    static bool isWide(const ValueRange& range, int maxDigits);

    double low() const { return low_; }
    double high() const { return high_; }

    /// 0 at the low end, 1 at the high end.
    double position(double value) const { return (value - low_) / (high_ - low_); }

    /// Ascending; within the range, apart from rounding.
    std::vector<double> ticks() const;
    QString label(double tick) const;

private:
    double low_;
    double high_;
    double step_;
    int maxDigits_;
};

}  // namespace rfu
