#include "trace/sweepReader.h"

#include <rfUtils/trace/traceRssiBuffer.h>
#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "support/errors.h"
#include "support/numbers.h"

namespace {

constexpr double kHertzPerMegahertz = 1e6;
constexpr std::size_t kMostPoints = 4000000;

}  // namespace

SweepReader::SweepReader(const QString& file) : lines_(file) {}

void SweepReader::fail(const std::string& what) const {
    throw lineError(lines_.file(), lines_.number(), what);
}

bool SweepReader::nextLine(std::string_view& line) {
    while (lines_.next(line)) {
        if (!trimmed(line).empty()) {
            return true;
        }
    }
    return false;
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
    ++sweep_;
    return sweep_ == 1 ? firstHops(sweep) : laterHops(sweep);
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

void SweepReader::storeLevels(double* levels) {
    const std::size_t points = pending_->hop.points();
    const std::size_t found = readLevels(pending_->levels, levels, points, lines_);
    if (found < points) {
        fail(std::to_string(found) + " levels, while " + std::to_string(points) +
             " fit between Hz low and Hz high");
    }
}

/// A place for a hop of the first sweep; nothing for a hop that it already has.
SweepReader::Place* SweepReader::addPlace(const Hop& hop, std::size_t levels) {
    const auto above = places_.lower_bound(hop.low);
    if (above != places_.end() && above->second.hop.low == hop.low &&
        above->second.hop.high == hop.high) {
        return nullptr;
    }
    // Neighbours may share a bin: rounding of their bounds does that.
    const bool entersAbove =
        above != places_.end() && (hop.low == above->second.hop.low ||
                                   hop.high > above->second.hop.low + above->second.hop.step);
    const bool entersBelow =
        above != places_.begin() && std::prev(above)->second.hop.high > hop.low + hop.step;
    if (entersAbove || entersBelow) {
        const Hop& other = entersAbove ? above->second.hop : std::prev(above)->second.hop;
        fail("the hop " + describe(hop) + " overlaps the hop " + describe(other));
    }
    if (hop.points() > kMostPoints - levels) {
        fail("more than " + std::to_string(kMostPoints) + " points in a sweep");
    }
    return &places_.emplace(hop.low, Place{hop, levels, sweep_}).first->second;
}

bool SweepReader::firstHops(Sweep& sweep) {
    sweep.time = pending_->time;
    sweep.levels.clear();
    std::optional<std::int64_t> previousTime;
    while (nextHopLine()) {
        const Place* const place = addPlace(pending_->hop, sweep.levels.size());
        if (place == nullptr) {
            break;
        }
        if (previousTime) {
            longestPause_ =
                std::max(longestPause_, std::abs(pending_->microseconds - *previousTime));
        }
        sweep.levels.resize(place->firstLevel + place->hop.points());
        storeLevels(sweep.levels.data() + place->firstLevel);
        previousTime = pending_->microseconds;
        pending_.reset();
    }
    arrange(sweep.levels);
    return true;
}

/// Puts the levels of the first sweep, which stand as they came, in order of frequency.
void SweepReader::arrange(std::vector<double>& levels) {
    std::vector<double> arranged;
    arranged.reserve(levels.size());
    axis_.points.reserve(levels.size());
    for (auto& [low, place] : places_) {
        const auto begin = levels.begin() + static_cast<std::ptrdiff_t>(place.firstLevel);
        const std::size_t points = place.hop.points();
        place.firstLevel = arranged.size();
        arranged.insert(arranged.end(), begin, begin + static_cast<std::ptrdiff_t>(points));
        for (std::size_t i = 0; i < points; ++i) {
            axis_.points.push_back((low + static_cast<double>(i) * place.hop.step) /
                                   kHertzPerMegahertz);
        }
        axis_.end = place.hop.high / kHertzPerMegahertz;
    }
    levels.swap(arranged);
}

bool SweepReader::laterHops(Sweep& sweep) {
    if (!nextHopLine()) {
        return false;
    }
    sweep.time = pending_->time;
    sweep.levels.assign(axis_.points.size(), traceRssiBuffer::kNoMeasurement);
    std::optional<std::int64_t> previousTime;
    for (std::size_t hops = 0; hops < places_.size() && nextHopLine(); ++hops) {
        const auto found = places_.find(pending_->hop.low);
        if (found == places_.end() || !(found->second.hop == pending_->hop)) {
            fail("the hop " + describe(pending_->hop) + " is not one of the first sweep");
        }
        Place& place = found->second;
        const bool movedOn =
            previousTime && std::abs(pending_->microseconds - *previousTime) > longestPause_;
        if (place.sweep == sweep_ || movedOn) {
            break;
        }
        place.sweep = sweep_;
        storeLevels(sweep.levels.data() + place.firstLevel);
        previousTime = pending_->microseconds;
        pending_.reset();
    }
    return true;
}
