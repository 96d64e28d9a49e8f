#include "analysis/recordings/sweepReader.h"

#include <rfUtils/trace/traceRssiBuffer.h>
#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "analysis/recordings/timeStamp.h"
#include "analysis/support/csvLine.h"
#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"

namespace rfu {

namespace {

constexpr std::size_t kMaxPoints = 4000000;

/// @param source of each level
void arrangeLevels(std::vector<double>& levels, const std::vector<std::size_t>& source) {
    levels.resize(source.size(), traceRssiBuffer::kNoMeasurement);
    std::vector<double> arranged(source.size());
    std::transform(source.begin(), source.end(), arranged.begin(),
                   [&levels](std::size_t i) { return levels[i]; });
    levels.swap(arranged);
}

}  // namespace

SweepReader::SweepReader(const QString& file, std::size_t learned, Waiting waiting,
                         std::function<void(const InputError&)> onBrokenLine, bool isLive,
                         SweepChoice* choice)
    : lines_(file, std::move(waiting)),
      onBrokenLine_(std::move(onBrokenLine)),
      isLive_(isLive),
      choice_(choice),
      learned_(learned) {}

void SweepReader::fail(const std::string& what) const {
    throw InputError(lines_.file(), lines_.number(), what);
}

/// Tells of a line that makes no sense.
void SweepReader::passOver(const InputError& error) {
    if (!onBrokenLine_) {
        throw error;
    }
    onBrokenLine_(error);
}

/// The next line with data that is not cut.
bool SweepReader::nextLine(std::string_view& line) {
    if (firstLine_) {
        line = *firstLine_;
        firstLine_.reset();
        return true;
    }
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

/// What is wrong with a line of neither shape.
std::string SweepReader::problemOf(std::string_view line) const {
    const std::size_t comma = line.find(',');
    if (comma != std::string_view::npos &&
        !problemOfHop("2024-05-04" + std::string(line.substr(comma)))) {
        return *problemOfHop(line);
    }
    std::string separated(line);
    std::replace(separated.begin(), separated.end(), ',', '.');
    std::replace(separated.begin(), separated.end(), ';', ',');
    if (!problemOfHop(separated)) {
        return comma == std::string_view::npos
                   ? "semicolons separate the fields of the sweep, where commas have to"
                   : "semicolons separate the fields of the sweep, where commas have to, and "
                     "numbers have decimal commas in place of points";
    }
    return "neither a line of a sweep (date, time, Hz low, Hz high, Hz step, samples, dB, ...) nor "
           "a trace of levels in dBm";
}

/// Nothing for the line of a hop.
std::optional<std::string> SweepReader::problemOfHop(std::string_view line) const {
    try {
        readLevels(readHopLine(line, lines_).levels, nullptr, 0, lines_);
        return std::nullopt;
    } catch (const InputError& error) {
        return error.problem();
    }
}

/// Learns the shape from the first line.
/// @return false at the end
bool SweepReader::start() {
    std::string_view line;
    while (shape_ == Shape::Unknown && nextLine(line)) {
        shape_ = looksLikeHop(line)     ? Shape::Hops
                 : looksLikeTrace(line) ? Shape::Traces
                                        : Shape::Unknown;
        if (shape_ != Shape::Unknown) {
            firstLine_ = line;
        } else {
            passOver(InputError(lines_.file(), lines_.number(), problemOf(line)));
        }
    }
    return shape_ != Shape::Unknown;
}

bool SweepReader::next(Sweep& sweep) {
    formerPoints_.clear();
    if (!start()) {
        return false;
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
    bool isWanted = false;
    while (!isWanted) {
        if (!readSweep()) {
            return false;
        }
        isWanted = isOpenWanted_;
        closeSweep(sweep);
    }
    if (axis_.points.size() < points_) {
        grow(sweep);
    }
    return true;
}

bool SweepReader::nextTrace(Sweep& sweep) {
    std::string_view line;
    while (nextLine(line)) {
        try {
            readTrace(line, sweep);
            return true;
        } catch (const InputError& error) {
            passOver(error);
        }
    }
    return false;
}

void SweepReader::readTrace(std::string_view line, Sweep& sweep) {
    const std::size_t expected = traceLength_ == 0 ? countFields(line) : traceLength_;
    sweep.time.clear();
    sweep.lines.clear();
    sweep.levels.resize(expected);
    const std::size_t levels = readLevels(line, sweep.levels.data(), expected, lines_);
    if (levels != expected) {
        fail("a trace of " + std::to_string(levels) + " levels, while the first has " +
             std::to_string(expected));
    }
    traceLength_ = expected;
    if (keepsLines_) {
        sweep.lines.push_back({{}, std::string(line), 0});
    }
}

/// Makes pending_ hold the next line of hops that makes sense.
bool SweepReader::nextHopLine() {
    std::string_view line;
    while (!pending_ && nextLine(line)) {
        try {
            readHop(line);
        } catch (const InputError& error) {
            pending_.reset();
            passOver(error);
        }
    }
    return pending_.has_value();
}

/// Reads a line as far as it is wanted; one that makes no sense changes nothing else.
void SweepReader::readHop(std::string_view line) {
    pending_ = readHopLine(line, lines_);
    requirePlace(pending_->hop);
    pendingText_ = line;
    pendingBins_ = wantedBins();
    if (!pendingBins_.isEmpty()) {
        readWantedLevels();
    }
}

void SweepReader::readWantedLevels() {
    const std::size_t points = pending_->hop.points();
    std::string_view fields = pending_->levels;
    std::size_t found = pendingBins_.first;
    if (pendingBins_.first > 0) {
        const std::size_t comma = endOfFields(fields, pendingBins_.first);
        if (comma == std::string_view::npos) {
            found = countFields(fields);
            fields = {};
        } else {
            fields.remove_prefix(comma + 1);
        }
    }
    if (pendingBins_.end < points) {
        fields = fields.substr(0, endOfFields(fields, pendingBins_.end - pendingBins_.first));
    }
    if (found == pendingBins_.first) {
        pendingLevels_.resize(std::max(pendingLevels_.size(), points));
        found += readLevels(fields, pendingLevels_.data() + pendingBins_.first,
                            pendingBins_.end - pendingBins_.first, lines_);
    }
    if (found < pendingBins_.end) {
        fail(std::to_string(found) + " levels, while " + std::to_string(points) +
             " fit between Hz low and Hz high");
    }
}

/// Of the pending line.
BinRange SweepReader::wantedBins() {
    const BinRange all = {0, pending_->hop.points()};
    if (choice_ == nullptr || isLearning_) {
        return all;
    }
    const bool begins = openHops_ == 0 || beginsSweep(find(pending_->hop));
    const bool isWanted = begins ? choice_->wantsSweep(pending_->microseconds) : isOpenWanted_;
    return isWanted ? choice_->binsOf(pending_->hop) : BinRange();
}

/// Of the open sweep, which begins.
void SweepReader::choose(std::int64_t time) {
    if (choice_ != nullptr && !isLearning_) {
        isOpenWanted_ = choice_->wantsSweep(time);
        choice_->begin(time);
    }
}

void SweepReader::chooseLearned() {
    if (choice_ == nullptr) {
        return;
    }
    std::deque<Sweep> wanted;
    for (Sweep& sweep : learnedSweeps_) {
        choose(microsecondsOf(sweep.time));
        if (isOpenWanted_) {
            wanted.push_back(std::move(sweep));
        }
    }
    learnedSweeps_ = std::move(wanted);
    if (openHops_ > 0) {
        choose(microsecondsOf(open_.time));
    }
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

/// Refuses a new hop that cannot be added.
void SweepReader::requirePlace(const Hop& hop) {
    if (find(hop) != nullptr) {
        return;
    }
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
}

/// Adds a place for a new hop; its levels come after all others until arrangePlaces().
SweepReader::Place* SweepReader::add(const Hop& hop) {
    Place* const place = &places_.emplace(hop.low, Place{hop, points_, lastTurn_, 0}).first->second;
    points_ += hop.points();
    order_.push_back(place);
    return place;
}

/// Takes the pending line into the open sweep.
void SweepReader::take(Place& place) {
    if (openHops_ == 0) {
        choose(pending_->microseconds);
        open_.time = pending_->time;
        open_.lines.clear();
        open_.levels.assign(isOpenWanted_ ? points_ : 0, traceRssiBuffer::kNoMeasurement);
    }
    if (isOpenWanted_) {
        open_.levels.resize(points_, traceRssiBuffer::kNoMeasurement);
        std::copy(pendingLevels_.begin() + static_cast<std::ptrdiff_t>(pendingBins_.first),
                  pendingLevels_.begin() + static_cast<std::ptrdiff_t>(pendingBins_.end),
                  open_.levels.begin() +
                      static_cast<std::ptrdiff_t>(place.firstLevel + pendingBins_.first));
        if (keepsLines_ && !pendingBins_.isEmpty()) {
            open_.lines.push_back(
                {place.hop, std::string(pendingText_),
                 static_cast<std::size_t>(pending_->levels.data() - pendingText_.data())});
        }
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
    lastSweepTime_ = sweep.time;
    if (firstTime_.empty()) {
        firstTime_ = sweep.time;
    }
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
        if (place == nullptr && !isLearning_ && !isLive_) {
            passOver({lines_.file(), lines_.number(),
                      "the hop " + describe(pending_->hop) + " is not one of the first " +
                          (learned_ == 1 ? "sweep" : std::to_string(learned_) + " sweeps")});
            pending_.reset();
            continue;
        }
        if (openHops_ > 0 && beginsSweep(place)) {
            return true;
        }
        if (place == nullptr && openHops_ == 0 && last_ != nullptr && !beginsSweep(nullptr)) {
            lastTurn_ = last_->turn;  // it belongs to the sweep that seemed complete
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
    learnPlaces();
    isLearning_ = false;
    chooseLearned();
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
    if (times.empty()) {
        return;
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
        if (keepsLines_) {
            const auto firstLine = first.lines.begin() + static_cast<std::ptrdiff_t>(bound);
            open_.lines.assign(std::make_move_iterator(firstLine),
                               std::make_move_iterator(first.lines.end()));
            first.lines.erase(firstLine, first.lines.end());
        }
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
    axis_.hops.push_back({hop, 0, hop.points()});
    for (std::size_t i = 0; i < hop.points(); ++i) {
        axis_.points.push_back((hop.low + static_cast<double>(i) * hop.step) / kHertzPerMegahertz);
    }
}

/// Sorts the places, new ones of which are in order of arrival, by frequency.
/// @return of each point its number so far
std::vector<std::size_t> SweepReader::arrangePlaces() {
    axis_ = {};
    axis_.points.reserve(points_);
    std::vector<std::size_t> source;
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
    return source;
}

void SweepReader::learnPlaces() {
    const std::vector<std::size_t> source = arrangePlaces();
    for (Sweep& sweep : learnedSweeps_) {
        arrangeLevels(sweep.levels, source);
    }
    if (openHops_ > 0) {
        arrangeLevels(open_.levels, source);
    }
}

/// Gives the axis the new hops of a sweep that has just been closed.
void SweepReader::grow(Sweep& sweep) {
    const std::size_t before = axis_.points.size();
    numberTurns();
    formerPoints_ = arrangePlaces();
    arrangeLevels(sweep.levels, formerPoints_);
    std::replace_if(
        formerPoints_.begin(), formerPoints_.end(),
        [before](std::size_t point) { return point >= before; }, kNewPoint);
}

std::vector<Hop> SweepReader::hopsInOrder() const {
    std::vector<Hop> hops;
    std::transform(order_.begin(), order_.end(), std::back_inserter(hops),
                   [](const Place* place) { return place->hop; });
    return hops;
}

}  // namespace rfu
