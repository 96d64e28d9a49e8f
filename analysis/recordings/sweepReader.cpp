#include "analysis/recordings/sweepReader.h"

#include <rfUtils/trace/traceRssiBuffer.h>
#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"

namespace rfu {

namespace {

constexpr double kHertzPerMegahertz = 1e6;
constexpr std::size_t kMaxPoints = 4000000;

}  // namespace

SweepReader::SweepReader(const QString& file, std::size_t learned, std::function<void()> beforeRead)
    : lines_(file, std::move(beforeRead)), learned_(learned) {}

void SweepReader::fail(const std::string& what) const {
    throw InputError(lines_.file(), lines_.number(), what);
}

/// The next line with data that is not cut.
bool SweepReader::nextLine(std::string_view& line) {
    while (lines_.next(line)) {
        if (isBlankOrComment(line) ||
            (std::exchange(mayBeHeader_, false) && looksLikeHeader(line))) {
            continue;
        }
        if (!lines_.hasLineEnd() && !isWhole(line)) {
            cutLine_ = lines_.number();
            return false;
        }
        if (const auto decimals = decimalsOf(trimmed(line.substr(line.rfind(',') + 1)))) {
            decimals_ = decimals;
        }
        return true;
    }
    return false;
}

/// Whether a line without line end is as whole as the others. A first line that is none of a
/// recording counts as whole: it is an error.
bool SweepReader::isWhole(std::string_view line) const {
    const bool isHop = shape_ == Shape::Hops || (shape_ == Shape::Unknown && looksLikeHop(line));
    if (shape_ == Shape::Unknown && !isHop && !looksLikeTrace(line)) {
        return true;
    }
    try {
        std::size_t points = traceLength_;
        if (isHop) {
            const HopLine hop = readHopLine(line, lines_);
            line = hop.levels;
            points = hop.hop.points();
        }
        const std::size_t levels = readLevels(line, nullptr, 0, lines_);
        return (isHop || traceLength_ == 0 ? levels >= points : levels == points) &&
               haveSameDecimals(line, decimals_);
    } catch (const InputError&) {
        return false;
    }
}

bool SweepReader::next(Sweep& sweep) {
    if (shape_ == Shape::Unknown) {
        if (!nextLine(firstLine_)) {
            return false;
        }
        shape_ = looksLikeHop(firstLine_) ? Shape::Hops : Shape::Traces;
        if (shape_ == Shape::Hops) {
            pending_ = readHopLine(firstLine_, lines_);
        }
    }
    if (shape_ == Shape::Traces) {
        return nextTrace(sweep);
    }
    if (isLearning_) {
        learn();
    }
    if (!learnedSweeps_.empty()) {
        sweep = std::move(learnedSweeps_.front());
        learnedSweeps_.pop_front();
        return true;
    }
    if (!readSweep()) {
        return false;
    }
    closeSweep(sweep);
    return true;
}

bool SweepReader::nextTrace(Sweep& sweep) {
    std::string_view line = firstLine_;
    const bool isFirst = traceLength_ == 0;
    if (isFirst) {
        if (!looksLikeTrace(line)) {
            fail(
                "neither a line of a sweep (date, time, Hz low, Hz high, Hz step, samples, dB, "
                "...) "
                "nor a trace of levels in dBm");
        }
        traceLength_ = countFields(line);
    } else if (!nextLine(line)) {
        return false;
    }
    sweep.time.clear();
    sweep.levels.resize(traceLength_);
    const std::size_t levels = readLevels(line, sweep.levels.data(), traceLength_, lines_);
    if (levels != traceLength_) {
        fail("a trace of " + std::to_string(levels) + " levels, while the first has " +
             std::to_string(traceLength_));
    }
    return true;
}

/// Makes pending_ hold the next line of hops.
bool SweepReader::nextHopLine() {
    std::string_view line;
    if (!pending_ && nextLine(line)) {
        pending_ = readHopLine(line, lines_);
    }
    return pending_.has_value();
}

/// Time from the last line of the open sweep to the pending one.
std::int64_t SweepReader::timeStep() const {
    return std::abs(pending_->microseconds - lastTime_);
}

/// The place of a hop; null for one that is not known.
SweepReader::Place* SweepReader::find(const Hop& hop) {
    const auto found = places_.find(hop.low);
    return found != places_.end() && found->second.hop == hop ? &found->second : nullptr;
}

/// Adds a place for a new hop; its levels come after all others until arrange().
SweepReader::Place* SweepReader::add(const Hop& hop) {
    const auto above = places_.lower_bound(hop.low);
    // Neighbours may share a bin: rounding of their bounds does that.
    const bool entersAbove =
        above != places_.end() && (above->second.hop.low == hop.low ||
                                   hop.high > above->second.hop.low + above->second.hop.step);
    const bool entersBelow =
        above != places_.begin() && std::prev(above)->second.hop.high > hop.low + hop.step;
    if (entersAbove || entersBelow) {
        const Hop& other = entersAbove ? above->second.hop : std::prev(above)->second.hop;
        fail("the hop " + describe(hop) + " overlaps the hop " + describe(other));
    }
    if (hop.points() > kMaxPoints - points_) {
        fail("more than " + std::to_string(kMaxPoints) + " points in a sweep");
    }
    Place* const place = &places_.emplace(hop.low, Place{hop, points_, lastTurn_, 0}).first->second;
    points_ += hop.points();
    order_.push_back(place);
    return place;
}

/// Takes the pending line into the open sweep.
void SweepReader::take(Place& place) {
    if (openHops_ == 0) {
        open_.time = pending_->time;
        open_.levels.assign(points_, traceRssiBuffer::kNoMeasurement);
    }
    open_.levels.resize(points_, traceRssiBuffer::kNoMeasurement);
    const std::size_t points = place.hop.points();
    const std::size_t found =
        readLevels(pending_->levels, open_.levels.data() + place.firstLevel, points, lines_);
    if (found < points) {
        fail(std::to_string(found) + " levels, while " + std::to_string(points) +
             " fit between Hz low and Hz high");
    }
    place.sweep = sweep_;
    last_ = &place;
    lastTurn_ = place.turn;
    lastTime_ = pending_->microseconds;
    ++openHops_;
    pending_.reset();
}

/// Hands the open sweep out and opens the next.
void SweepReader::closeSweep(Sweep& sweep) {
    std::swap(sweep, open_);
    ++sweep_;
    openHops_ = 0;
    lastTurn_ = -1;
}

/// Whether the pending line begins another sweep than the open one, which has hops.
/// @param place of the line's hop; null where that is new
bool SweepReader::beginsSweep(const Place* place) const {
    const std::int64_t step = timeStep();
    // Most receivers go up.
    const bool goesBack =
        place != nullptr ? place->turn <= lastTurn_ : pending_->hop.low < last_->hop.low;
    return (place != nullptr && place->sweep == sweep_) || (step != 0 && goesBack) ||
           step > longestPause_;
}

/// Reads the open sweep to its end.
/// @return false at the end of the recording
bool SweepReader::readSweep() {
    while (nextHopLine()) {
        Place* place = find(pending_->hop);
        if (place == nullptr && !isLearning_) {
            fail("the hop " + describe(pending_->hop) + " is not one of the first " +
                 (learned_ == 1 ? "sweep" : std::to_string(learned_) + " sweeps"));
        }
        if (openHops_ > 0 && beginsSweep(place)) {
            return true;
        }
        take(place != nullptr ? *place : *add(pending_->hop));
        if (!isLearning_ && openHops_ == places_.size()) {
            return true;
        }
    }
    return openHops_ > 0;
}

/// Reads the first sweeps, from which hops, order and pauses are learned.
void SweepReader::learn() {
    learnFirstLines();
    while (learnedSweeps_.size() < learned_ && readSweep()) {
        closeSweep(learnedSweeps_.emplace_back());
        numberTurns();
    }
    arrange();
    isLearning_ = false;
}

/// Puts new hops behind those that they followed.
void SweepReader::numberTurns() {
    std::stable_sort(order_.begin(), order_.end(),
                     [](const Place* a, const Place* b) { return a->turn < b->turn; });
    for (std::size_t i = 0; i < order_.size(); ++i) {
        order_[i]->turn = static_cast<long long>(i);
    }
}

/// Reads until a hop comes again: one sweep or, if the recording began in the middle of one, the
/// rest of it and the beginning of the next, which stays open.
void SweepReader::learnFirstLines() {
    std::vector<std::int64_t> times;
    std::size_t bound = 0;  // line to which the time moved farthest
    std::int64_t farthest = 0;
    std::string boundTime;
    bool isCut = false;
    while (nextHopLine()) {
        const std::int64_t step = times.empty() ? 0 : timeStep();
        if (find(pending_->hop) != nullptr) {
            isCut = step < farthest;
            break;
        }
        if (step > farthest) {
            farthest = step;
            bound = times.size();
            boundTime = pending_->time;
        }
        times.push_back(pending_->microseconds);
        take(*add(pending_->hop));
    }
    for (std::size_t i = 1; i < times.size(); ++i) {
        if (!(isCut && i == bound)) {
            longestPause_ = std::max(longestPause_, std::abs(times[i] - times[i - 1]));
        }
    }
    Sweep& first = learnedSweeps_.emplace_back();
    closeSweep(first);
    if (isCut) {
        const auto firstPlace = order_.begin() + static_cast<std::ptrdiff_t>(bound);
        const auto firstLevel = static_cast<std::ptrdiff_t>((*firstPlace)->firstLevel);
        open_.time = boundTime;
        open_.levels.assign(points_, traceRssiBuffer::kNoMeasurement);
        std::swap_ranges(first.levels.begin() + firstLevel, first.levels.end(),
                         open_.levels.begin() + firstLevel);
        openHops_ = order_.size() - bound;
        std::for_each(firstPlace, order_.end(), [this](Place* place) { place->sweep = sweep_; });
        std::rotate(order_.begin(), firstPlace, order_.end());
    }
    numberTurns();
}

/// Adds the points of the next hop by frequency.
/// @param lastStep of the hop before
void SweepReader::addToAxis(const Hop& hop, double lastStep) {
    const double low = hop.low / kHertzPerMegahertz;
    const double high = hop.high / kHertzPerMegahertz;
    const double minGap = std::min(hop.step, lastStep) / 2.0 / kHertzPerMegahertz;
    // Smaller gaps come from rounded bounds.
    if (axis_.bands.empty() || low - axis_.bands.back().high >= minGap) {
        axis_.bands.push_back({axis_.points.size(), low, high});
    }
    axis_.bands.back().high = std::max(axis_.bands.back().high, high);
    for (std::size_t i = 0; i < hop.points(); ++i) {
        axis_.points.push_back((hop.low + static_cast<double>(i) * hop.step) / kHertzPerMegahertz);
    }
}

/// Sorts places and levels, which are in order of arrival, by frequency.
void SweepReader::arrange() {
    axis_.points.reserve(points_);
    std::vector<std::size_t> source;  // of each level
    source.reserve(points_);
    double lastStep = 0.0;
    for (auto& [low, place] : places_) {
        const std::size_t came = place.firstLevel;
        place.firstLevel = source.size();
        for (std::size_t i = 0; i < place.hop.points(); ++i) {
            source.push_back(came + i);
        }
        addToAxis(place.hop, lastStep);
        lastStep = place.hop.step;
    }
    const auto arrangeLevels = [&](std::vector<double>& levels) {
        levels.resize(points_, traceRssiBuffer::kNoMeasurement);
        std::vector<double> arranged(points_);
        std::transform(source.begin(), source.end(), arranged.begin(),
                       [&](std::size_t i) { return levels[i]; });
        levels.swap(arranged);
    };
    for (Sweep& sweep : learnedSweeps_) {
        arrangeLevels(sweep.levels);
    }
    if (openHops_ > 0) {
        arrangeLevels(open_.levels);
    }
}

}  // namespace rfu
