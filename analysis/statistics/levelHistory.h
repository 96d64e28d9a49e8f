#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "analysis/recordings/stateFile.h"
#include "analysis/recordings/sweepReader.h"
#include "analysis/statistics/pointHistogram.h"
#include "analysis/statistics/pointStatistics.h"

namespace rfu {

/// The levels of all sweeps, for what depends on their distribution. Levels count in hundredths of a
/// dB. As long as they fit the memory, every answer is exact; beyond that the levels become
/// histograms, which take the same memory however many sweeps follow.
class LevelHistory {
public:
    static constexpr std::size_t kMaxBytes = 200000000;
    /// With histograms; those of more points would be too wide or would not fit.
    static constexpr std::size_t kMaxPoints = 400000;

    /// @param maxBytes of memory, but for at least a few bytes a point
    explicit LevelHistory(std::size_t maxBytes = kMaxBytes);

    /// @param sweep as many levels in every one
    void add(const Sweep& sweep);

    /// Whether the levels fill the memory and there are too many points to go on.
    bool isFull() const { return points_ > kMaxPoints && bytesHeld() >= maxBytes_; }

    std::size_t points() const { return points_; }
    std::size_t sweeps() const { return sweeps_; }

    /// Memory of the levels that are held, and of their times.
    std::size_t bytesHeld() const;

    /// Calls use(levels) with the levels of each sweep, from the oldest on. @pre all are held
    void forEachSweep(const std::function<void(const std::vector<PackedLevel>& levels)>& use) const;

    /// The smallest level not below this one that above() tells apart: a multiple of 0.05 dB.
    static double onGrid(double level);

    /// A measured level as it is held.
    static double rounded(double level);

    /// Within how many dB medians lie: 0 where the levels are held.
    double resolution() const;

    /// Of the levels of each point; of an even count the mean of the middle two. NaN for a point that
    /// was never measured.
    std::vector<double> medians();

    /// What follows from the bins of the histograms alone is the same whether the levels are held or
    /// not, and whether they came at once or from states.
    struct Medians {
        std::vector<double> levels;  // as medians() tells them
        std::vector<double> ofBins;  // with the middle of its bin for each level
    };
    Medians mediansAndBins();

    /// Calls use(level, count) for the middles of the bins of a point's levels in any order; each may
    /// come several times.
    void forEachBin(std::size_t point,
                    const std::function<void(double level, long long count)>& use);

    struct Exceeding {
        long long count;
        std::string first;  // times of the sweeps
        std::string last;
    };
    /// The sweeps in which a point lies above a level of the grid.
    Exceeding above(std::size_t point, double level);

    void write(StateWriter& writer) const;
    /// Adds the sweeps of a state, which come after all others. From then on there are histograms.
    /// @param points of all states together
    void merge(StatePart& part, std::size_t points);
    /// Behind merge(): whether statistics of a point may be those of its levels.
    bool agreesWith(const PointStatistics& statistics, std::size_t point) const;

private:
    /// A few neighbouring points. Its levels stand sweep by sweep, in pieces that all panels begin
    /// and end at the same sweeps.
    struct Panel {
        std::size_t points;
        std::vector<std::unique_ptr<PackedLevel[]>> pieces;
    };
    struct Piece {
        std::size_t room;
        std::size_t sweeps;
    };
    struct Stamp {
        std::uint32_t sweep;
        std::string time;
    };

    void begin(std::size_t points);
    void beginPiece();
    void drain();
    void drain(std::size_t panel);
    void addTo(PointHistogram& histogram, std::size_t point) const;
    void settle();
    void coarsen();
    std::size_t bytesOfSweep() const;
    std::size_t maxBytesHeld() const;
    std::size_t bytesOfHistograms(std::size_t first, std::size_t end) const;
    std::size_t bytesOfHistograms() const;
    void dropUnusedTimes();
    std::vector<Stamp>::const_iterator stampOf(std::uint32_t sweep) const;
    PointHistogram readHistogram(StateReader& reader, int width, std::uint32_t sweeps);
    void readTimes(StateReader& reader, std::uint32_t sweeps);
    void copyPoint(std::size_t point, std::size_t piece, PackedLevel* codes) const;
    void addMedians(const Panel& panel, Medians& medians) const;
    double medianOf(const PointHistogram& histogram) const;
    double medianOfBins(const PointHistogram& histogram) const;
    double middleOfBin(int bin) const;

    std::size_t maxBytes_;
    std::size_t points_ = 0;
    std::size_t sweeps_ = 0;
    std::vector<Panel> panels_;
    std::vector<Piece> pieces_;
    std::size_t sweepsHeld_ = 0;              // in the pieces: the newest
    std::vector<PointHistogram> histograms_;  // of the sweeps before; empty where all are held
    int binWidth_ = PointHistogram::kFinest;  // in codes
    std::vector<Stamp> times_;                // ascending
};

}  // namespace rfu
