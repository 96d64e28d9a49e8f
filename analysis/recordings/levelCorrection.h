#pragma once

#include <QString>
#include <cstddef>
#include <vector>

namespace rfu {

/// What is added to the levels of a recording, as for the loss of a cable: an offset and, over
/// frequency, the numbers of a file.
class LevelCorrection {
public:
    LevelCorrection() = default;
    /// @param offset in dB
    explicit LevelCorrection(double offset) : offset_(offset) {}
    /// @param file CSV of frequency and dB, see readFrequencyTable()
    /// @throw InputError
    LevelCorrection(double offset, const QString& file);

    bool isNone() const { return offset_ == 0.0 && points_.empty(); }
    /// Whether it takes the frequencies of points.
    bool needsFrequencies() const { return !points_.empty(); }
    /// Empty where there is none.
    const QString& file() const { return file_; }

    /// In dB, straight between the points, of the first and the last one beyond them; where a
    /// frequency comes twice, the second one counts from there on.
    /// @param frequency in MHz
    double at(double frequency) const;

    /// Of each point.
    /// @param frequencies in MHz; none for points without them
    /// @param points how many there are
    std::vector<double> ofPoints(const std::vector<double>& frequencies, std::size_t points) const;

private:
    struct Point {
        double frequency;  // MHz
        double decibels;
    };

    double offset_ = 0.0;
    QString file_;
    std::vector<Point> points_;  // ascending
};

/// Adds to measured levels. They stay within the levels that a recording may have.
/// @param corrections as many as levels, in dB
void correct(std::vector<double>& levels, const std::vector<double>& corrections);

}  // namespace rfu
