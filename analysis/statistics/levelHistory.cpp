#include "analysis/statistics/levelHistory.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "analysis/recordings/timeStamp.h"
#include "analysis/support/inputError.h"
#include "analysis/support/stateStream.h"

namespace rfu {

namespace {

constexpr std::size_t kPanel = 64;    // points
constexpr std::size_t kMinPiece = 4;  // sweeps
constexpr std::size_t kMaxPiece =
    256;  // a point's levels of a piece fit the processor's nearest cache
constexpr std::size_t kShareOfPieces = 8;  // of the memory, once there are histograms
constexpr int kCoarsest = PointHistogram::kFinest << 13;  // width of a bin: two bins hold all codes
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kStepsPerDb = kPackedPerDecibel / PointHistogram::kFinest;  // of the grid

/// Of a level of the grid, which may lie beyond all codes.
int codeOfBound(double bound) {
    return static_cast<int>(
        std::lround(std::min(std::max(bound, -1000.0), 1000.0) * kPackedPerDecibel));
}

/// The finest bin that holds a code.
int binOf(int code) {
    return static_cast<int>(std::ceil(static_cast<double>(code) / PointHistogram::kFinest));
}

double levelOf(double code) {
    return code / kPackedPerDecibel;
}

/// Of histograms.
std::size_t maxBytesOf(std::size_t bytes) {
    return bytes - bytes / kShareOfPieces;
}

// Loops over rows of the same few columns, which the compiler turns into vector instructions.
template <typename T>
using Columns = std::array<T, kPanel>;

/// Counts the codes up to a bound in each column.
/// @param rows at most kMaxPiece
void countRows(const PackedLevel* codes, std::size_t rows, std::size_t columns,
               const Columns<PackedLevel>& bounds, Columns<std::size_t>& counts) {
    Columns<std::int16_t> found = {};
    for (std::size_t row = 0; row < rows; ++row, codes += columns) {
        for (std::size_t i = 0; i < columns; ++i) {
            found[i] = static_cast<std::int16_t>(found[i] + (codes[i] <= bounds[i] ? 1 : 0));
        }
    }
    for (std::size_t i = 0; i < columns; ++i) {
        counts[i] += static_cast<std::size_t>(found[i]);
    }
}

/// Widens the range of each column by its measured codes.
void findRange(const PackedLevel* codes, std::size_t rows, std::size_t columns,
               Columns<PackedLevel>& low, Columns<PackedLevel>& high) {
    for (std::size_t row = 0; row < rows; ++row, codes += columns) {
        for (std::size_t i = 0; i < columns; ++i) {
            const PackedLevel lowest = codes[i] == kNotMeasured ? PackedLevel{INT16_MAX} : codes[i];
            low[i] = std::min(low[i], lowest);
            high[i] = std::max(high[i], codes[i]);
        }
    }
}

/// Finds the smallest code above a bound in each column.
void findNext(const PackedLevel* codes, std::size_t rows, std::size_t columns,
              const Columns<PackedLevel>& bounds, Columns<PackedLevel>& next) {
    for (std::size_t row = 0; row < rows; ++row, codes += columns) {
        for (std::size_t i = 0; i < columns; ++i) {
            const PackedLevel candidate = codes[i] > bounds[i] ? codes[i] : PackedLevel{INT16_MAX};
            next[i] = std::min(next[i], candidate);
        }
    }
}

}  // namespace

LevelHistory::LevelHistory(std::size_t maxBytes) : maxBytes_(maxBytes) {}

double LevelHistory::onGrid(double level) {
    constexpr double kRounding = 1e-6;  // of a step: a sum like -89.9 + 0.1 counts as -89.8
    return std::ceil(level * kStepsPerDb - kRounding) / kStepsPerDb;
}

double LevelHistory::rounded(double level) {
    PackedLevel packed = kNotMeasured;
    packLevels(&level, nullptr, 1, &packed);
    return unpacked(packed);
}

double LevelHistory::resolution() const {
    return histograms_.empty() ? 0.0 : levelOf(binWidth_);
}

void LevelHistory::begin(std::size_t points) {
    points_ = points;
    for (std::size_t first = 0; first < points; first += kPanel) {
        panels_.push_back({std::min(kPanel, points - first), {}});
    }
}

/// Short ones first: pieces that stay nearly empty take memory too.
void LevelHistory::beginPiece() {
    const std::size_t doubled =
        pieces_.empty() ? kMinPiece : std::min(2 * pieces_.back().room, kMaxPiece);
    const std::size_t left = maxBytesHeld() - std::min(bytesHeld(), maxBytesHeld());
    const std::size_t room = std::clamp(left / bytesOfSweep(), kMinPiece, doubled);
    pieces_.push_back({room, 0});
    for (Panel& panel : panels_) {
        panel.pieces.emplace_back(new PackedLevel[room * panel.points]);
    }
}

void LevelHistory::add(const Sweep& sweep) {
    if (points_ == 0) {
        begin(sweep.levels.size());
    }
    if (pieces_.empty() || pieces_.back().sweeps == pieces_.back().room) {
        if (bytesHeld() >= maxBytesHeld()) {
            drain();
        }
        beginPiece();
    }
    const double* levels = sweep.levels.data();
    for (Panel& panel : panels_) {
        PackedLevel* const codes = panel.pieces.back().get() + pieces_.back().sweeps * panel.points;
        packLevels(levels, nullptr, panel.points, codes);
        levels += panel.points;
    }
    times_.push_back({static_cast<std::uint32_t>(sweeps_), sweep.time});
    ++pieces_.back().sweeps;
    ++sweepsHeld_;
    ++sweeps_;
}

std::size_t LevelHistory::bytesOfSweep() const {
    return points_ * sizeof(PackedLevel) + kBytesOfTime;
}

std::size_t LevelHistory::bytesHeld() const {
    return sweepsHeld_ * bytesOfSweep();
}

/// Before the levels become histograms.
std::size_t LevelHistory::maxBytesHeld() const {
    return histograms_.empty() ? maxBytes_ : maxBytes_ / kShareOfPieces;
}

void LevelHistory::forEachSweep(
    const std::function<void(const std::vector<PackedLevel>& levels)>& use) const {
    std::vector<PackedLevel> levels(points_);
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece) {
        for (std::size_t sweep = 0; sweep < pieces_[piece].sweeps; ++sweep) {
            auto to = levels.begin();
            for (const Panel& panel : panels_) {
                to =
                    std::copy_n(panel.pieces[piece].get() + sweep * panel.points, panel.points, to);
            }
            use(levels);
        }
    }
}

/// The levels of a point in a piece.
void LevelHistory::copyPoint(std::size_t point, std::size_t piece, PackedLevel* codes) const {
    const Panel& panel = panels_[point / kPanel];
    const PackedLevel* from = panel.pieces[piece].get() + point % kPanel;
    for (std::size_t i = 0; i < pieces_[piece].sweeps; ++i) {
        codes[i] = from[i * panel.points];
    }
}

/// Adds what is held of a point.
void LevelHistory::addTo(PointHistogram& histogram, std::size_t point) const {
    std::array<PackedLevel, kMaxPiece> codes;
    std::size_t sweep = sweeps_ - sweepsHeld_;
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece) {
        copyPoint(point, piece, codes.data());
        histogram.add(codes.data(), pieces_[piece].sweeps, static_cast<std::uint32_t>(sweep),
                      binWidth_);
        sweep += pieces_[piece].sweeps;
    }
}

/// Moves what is held of a panel into the histograms of its points.
void LevelHistory::drain(std::size_t panel) {
    for (std::size_t i = 0; i < panels_[panel].points; ++i) {
        const std::size_t point = panel * kPanel + i;
        addTo(histograms_[point], point);
    }
    panels_[panel].pieces.clear();  // at once, for the histograms that follow
}

/// Of some points.
std::size_t LevelHistory::bytesOfHistograms(std::size_t first, std::size_t end) const {
    std::size_t sum = 0;
    for (std::size_t point = first; point < end; ++point) {
        sum += histograms_[point].bytes();
    }
    return sum;
}

std::size_t LevelHistory::bytesOfHistograms() const {
    return bytesOfHistograms(0, points_);
}

void LevelHistory::coarsen() {
    for (PointHistogram& histogram : histograms_) {
        histogram.coarsen();
    }
    binWidth_ *= 2;
}

void LevelHistory::drain() {
    histograms_.resize(points_);
    std::size_t bytes = bytesOfHistograms();
    for (std::size_t panel = 0; panel < panels_.size(); ++panel) {
        const std::size_t first = panel * kPanel;
        const std::size_t end = first + panels_[panel].points;
        bytes -= bytesOfHistograms(first, end);
        drain(panel);
        bytes += bytesOfHistograms(first, end);
        // Beside the levels that are still held.
        const std::size_t held = sweepsHeld_ * (points_ - end) * sizeof(PackedLevel);
        while (bytes > std::min(maxBytesOf(maxBytes_), maxBytes_ - std::min(held, maxBytes_)) &&
               binWidth_ < kCoarsest) {
            coarsen();
            bytes = bytesOfHistograms();
        }
    }
    pieces_.clear();
    sweepsHeld_ = 0;
    dropUnusedTimes();
}

/// Leaves nothing held beside histograms.
void LevelHistory::settle() {
    if (!histograms_.empty() && sweepsHeld_ > 0) {
        drain();
    }
}

/// Keeps the times of sweeps that above() may answer.
void LevelHistory::dropUnusedTimes() {
    std::vector<bool> isUsed(times_.size());
    for (const PointHistogram& histogram : histograms_) {
        histogram.forEachSweep([&](std::uint32_t sweep) {
            isUsed[static_cast<std::size_t>(stampOf(sweep) - times_.begin())] = true;
        });
    }
    std::size_t kept = 0;
    for (std::size_t i = 0; i < times_.size(); ++i) {
        if (isUsed[i]) {
            std::swap(times_[kept++], times_[i]);
        }
    }
    times_.resize(kept);
}

/// Of the first sweep not before one.
std::vector<LevelHistory::Stamp>::const_iterator LevelHistory::stampOf(std::uint32_t sweep) const {
    return std::lower_bound(
        times_.begin(), times_.end(), sweep,
        [](const Stamp& stamp, std::uint32_t other) { return stamp.sweep < other; });
}

/// The medians of a panel's points, which are searched side by side: each step halves the range in
/// which the lower one of the middle two levels lies.
void LevelHistory::addMedians(const Panel& panel, Medians& medians) const {
    const auto forEachPiece = [&](auto use) {
        for (std::size_t i = 0; i < pieces_.size(); ++i) {
            use(panel.pieces[i].get(), pieces_[i].sweeps, panel.points);
        }
    };
    const auto countUpTo = [&](const Columns<PackedLevel>& bounds) {
        Columns<std::size_t> counts = {};
        forEachPiece([&](const PackedLevel* codes, std::size_t rows, std::size_t columns) {
            countRows(codes, rows, columns, bounds, counts);
        });
        return counts;
    };
    Columns<PackedLevel> low;
    Columns<PackedLevel> high;
    low.fill(INT16_MAX);
    high.fill(kNotMeasured);
    forEachPiece([&](const PackedLevel* codes, std::size_t rows, std::size_t columns) {
        findRange(codes, rows, columns, low, high);
    });
    Columns<PackedLevel> bounds;
    bounds.fill(kNotMeasured);
    const Columns<std::size_t> missing = countUpTo(bounds);
    Columns<std::size_t> ranks = {};  // of the lower one
    int widest = 0;
    for (std::size_t i = 0; i < panel.points; ++i) {
        const std::size_t measured = sweepsHeld_ - missing[i];
        ranks[i] = missing[i] + (measured == 0 ? 0 : (measured - 1) / 2);
        widest = std::max(widest, high[i] - low[i]);
    }
    // The code at a rank is the smallest one up to which there are more codes than that.
    for (; widest > 0; widest /= 2) {
        for (std::size_t i = 0; i < panel.points; ++i) {
            bounds[i] = static_cast<PackedLevel>(low[i] + (high[i] - low[i]) / 2);
        }
        const Columns<std::size_t> counts = countUpTo(bounds);
        for (std::size_t i = 0; i < panel.points; ++i) {
            if (counts[i] > ranks[i]) {
                high[i] = bounds[i];
            } else if (low[i] < high[i]) {
                low[i] = static_cast<PackedLevel>(bounds[i] + 1);
            }
        }
    }
    const Columns<std::size_t> counts = countUpTo(high);
    Columns<PackedLevel> next;
    next.fill(INT16_MAX);
    forEachPiece([&](const PackedLevel* codes, std::size_t rows, std::size_t columns) {
        findNext(codes, rows, columns, high, next);
    });
    for (std::size_t i = 0; i < panel.points; ++i) {
        const std::size_t measured = sweepsHeld_ - missing[i];
        const int upper = counts[i] > missing[i] + measured / 2 ? high[i] : next[i];
        medians.levels.push_back(measured == 0 ? kNaN : levelOf((high[i] + upper) / 2.0));
        medians.ofBins.push_back(
            measured == 0 ? kNaN : (middleOfBin(binOf(high[i])) + middleOfBin(binOf(upper))) / 2.0);
    }
}

/// In dBm.
double LevelHistory::middleOfBin(int bin) const {
    return levelOf((bin - 0.5) * binWidth_ + 0.5);
}

/// The levels of a bin count as evenly spread over it.
double LevelHistory::medianOf(const PointHistogram& histogram) const {
    const double half = static_cast<double>(histogram.measured()) / 2.0;
    double median = kNaN;
    double below = 0.0;
    histogram.forEachBin([&](int bin, long long count) {
        const auto times = static_cast<double>(count);
        if (below < half && below + times >= half) {
            median = levelOf((bin - 1 + (half - below) / times) * binWidth_ + 0.5);
        }
        below += times;
    });
    return median;
}

double LevelHistory::medianOfBins(const PointHistogram& histogram) const {
    const long long half = histogram.measured() / 2;  // below the upper one of the middle two
    const long long low = histogram.measured() % 2 == 0 ? half - 1 : half;
    double sum = 0.0;
    long long below = 0;
    histogram.forEachBin([&](int bin, long long count) {
        for (const long long rank : {low, half}) {
            sum += below <= rank && rank < below + count ? middleOfBin(bin) : 0.0;
        }
        below += count;
    });
    return histogram.measured() == 0 ? kNaN : sum / 2.0;
}

std::vector<double> LevelHistory::medians() {
    return mediansAndBins().levels;
}

LevelHistory::Medians LevelHistory::mediansAndBins() {
    settle();
    Medians medians;
    medians.levels.reserve(points_);
    medians.ofBins.reserve(points_);
    if (histograms_.empty()) {
        for (const Panel& panel : panels_) {
            addMedians(panel, medians);
        }
    }
    for (const PointHistogram& histogram : histograms_) {
        medians.levels.push_back(medianOf(histogram));
        medians.ofBins.push_back(medianOfBins(histogram));
    }
    return medians;
}

void LevelHistory::forEachBin(std::size_t point,
                              const std::function<void(double level, long long count)>& use) {
    settle();
    std::array<PackedLevel, kMaxPiece> codes;
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece) {
        copyPoint(point, piece, codes.data());
        for (std::size_t i = 0; i < pieces_[piece].sweeps; ++i) {
            if (codes[i] != kNotMeasured) {
                use(middleOfBin(binOf(codes[i])), 1);
            }
        }
    }
    if (!histograms_.empty()) {
        histograms_[point].forEachBin(
            [&](int bin, long long count) { use(middleOfBin(bin), count); });
    }
}

LevelHistory::Exceeding LevelHistory::above(std::size_t point, double level) {
    settle();
    const int bound = codeOfBound(level);
    Exceeding found = {0, {}, {}};
    if (!histograms_.empty()) {
        // Of wider bins the whole one counts.
        const double bin = std::floor(static_cast<double>(bound) / binWidth_);
        const auto exceeding = histograms_[point].above(static_cast<int>(bin));
        return exceeding.count == 0 ? found
                                    : Exceeding{exceeding.count, stampOf(exceeding.first)->time,
                                                stampOf(exceeding.last)->time};
    }
    std::array<PackedLevel, kMaxPiece> codes;
    std::size_t sweep = 0;
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece) {
        copyPoint(point, piece, codes.data());
        for (std::size_t i = 0; i < pieces_[piece].sweeps; ++i, ++sweep) {
            if (codes[i] > bound) {
                found.first = found.count == 0 ? times_[sweep].time : found.first;
                found.last = times_[sweep].time;
                ++found.count;
            }
        }
    }
    return found;
}

void LevelHistory::write(StateWriter& writer) const {
    std::vector<bool> isUsed(times_.size());
    writer.count(static_cast<std::uint64_t>(binWidth_));
    for (std::size_t point = 0; point < points_; ++point) {
        PointHistogram histogram = histograms_.empty() ? PointHistogram() : histograms_[point];
        addTo(histogram, point);
        histogram.write(writer);
        histogram.forEachSweep([&](std::uint32_t sweep) {
            isUsed[static_cast<std::size_t>(stampOf(sweep) - times_.begin())] = true;
        });
    }
    writer.count(static_cast<std::uint64_t>(std::count(isUsed.begin(), isUsed.end(), true)));
    for (std::size_t i = 0; i < times_.size(); ++i) {
        if (isUsed[i]) {
            writer.count(times_[i].sweep);
            writer.text(times_[i].time);
        }
    }
}

/// In bins of the common width.
PointHistogram LevelHistory::readHistogram(StateReader& reader, int width, std::uint32_t sweeps) {
    PointHistogram histogram = PointHistogram::read(reader, width, sweeps);
    for (; width < binWidth_; width *= 2) {
        histogram.coarsen();
    }
    return histogram;
}

/// Of the sweeps that histograms name.
void LevelHistory::readTimes(StateReader& reader, std::uint32_t sweeps) {
    const auto firstSweep = static_cast<std::uint32_t>(sweeps_);
    const std::size_t count = reader.countOf(2);
    std::uint64_t least = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint64_t sweep = reader.count(sweeps - 1);
        std::string time = reader.text();
        reader.require(sweep >= least && isStamp(time));
        least = sweep + 1;
        times_.push_back({firstSweep + static_cast<std::uint32_t>(sweep), std::move(time)});
    }
    for (const PointHistogram& histogram : histograms_) {
        histogram.forEachSweep([&](std::uint32_t sweep) {
            const auto stamp = stampOf(sweep);
            reader.require(stamp != times_.end() && stamp->sweep == sweep);
        });
    }
}

void LevelHistory::merge(StatePart& part, std::size_t points) {
    StateReader& reader = part.statistics;
    if (points > kMaxPoints) {
        throw InputError(part.file, "has " + std::to_string(part.head.points) +
                                        " points; the levels of more than " +
                                        std::to_string(kMaxPoints) + " cannot be merged");
    }
    const auto sweeps = static_cast<std::uint32_t>(part.head.sweeps);
    const auto width = static_cast<int>(reader.count(kCoarsest));
    int known = PointHistogram::kFinest;
    while (known < width) {
        known *= 2;
    }
    reader.require(known == width);
    if (points_ == 0) {
        begin(points);
    }
    if (histograms_.empty() || sweepsHeld_ > 0) {
        drain();
    }
    while (binWidth_ < width) {
        coarsen();
    }
    std::size_t bytes = bytesOfHistograms();
    for (const std::size_t place : part.places) {
        PointHistogram& own = histograms_[place];
        bytes -= own.bytes();
        own.merge(readHistogram(reader, width, sweeps), static_cast<std::uint32_t>(sweeps_));
        bytes += own.bytes();
        while (bytes > maxBytesOf(maxBytes_) && binWidth_ < kCoarsest) {
            coarsen();
            bytes = bytesOfHistograms();
        }
    }
    readTimes(reader, sweeps);
    sweeps_ += sweeps;
    dropUnusedTimes();
}

bool LevelHistory::agreesWith(const PointStatistics& statistics, std::size_t point) const {
    const PointHistogram& histogram = histograms_[point];
    if (statistics.count != histogram.measured() || statistics.count == 0) {
        return statistics.count == histogram.measured();
    }
    PackedLevel highest = kNotMeasured;
    packLevels(&*statistics.maximum, nullptr, 1, &highest);
    const int bin = histogram.highestBin();
    return (bin - 1) * binWidth_ < highest && highest <= bin * binWidth_;
}

}  // namespace rfu
