#include "analysis/recordings/recording.h"

#include <rfUtils/trace/traceRssiBuffer.h>
#include <algorithm>
#include <utility>

#include "analysis/recordings/bins.h"
#include "analysis/recordings/timeStamp.h"
#include "analysis/support/files.h"

namespace rfu {

namespace {

/// Memory of a sweep that is held.
std::size_t bytesOf(const Sweep& sweep) {
    std::size_t bytes = sizeof sweep + kBytesOfTime + sweep.levels.size() * sizeof(double);
    for (const SweepLine& line : sweep.lines) {
        bytes += sizeof line + line.text.size();
    }
    return bytes;
}

}  // namespace

QStringList RecordingSource::inputs() const {
    return correction.file().isEmpty() ? files : files + QStringList(correction.file());
}

Recording::Recording(RecordingSource source) : source_(std::move(source)), window_(source_.window) {
    if (source_.files.size() == 1) {
        reader_ = openToRead(files().first());
    }
}

std::unique_ptr<SweepReader> Recording::open(const QString& file, Reading reading,
                                             SweepChoice* choice) {
    std::function<void(const InputError&)> onBrokenLine;
    if (!source_.isStrict) {
        onBrokenLine = [this, isTold = reading == Reading::Whole](const InputError& error) {
            if (isTold) {
                tellBrokenLine(error);
            }
        };
    }
    Waiting waiting = source_.waiting;
    if (source_.onRead && reading != Reading::Beginning) {
        waiting.after = [this](std::size_t bytes) {
            read_ += static_cast<std::int64_t>(bytes);
            source_.onRead(read_, all_);
        };
    }
    auto reader =
        std::make_unique<SweepReader>(file, source_.isLive ? 1 : kLearnedSweeps, std::move(waiting),
                                      std::move(onBrokenLine), source_.isLive, choice);
    if (source_.keepsLines && reading == Reading::Whole) {
        reader->keepLines();
    }
    return reader;
}

/// Opens a file whose sweeps come next.
std::unique_ptr<SweepReader> Recording::openToRead(const QString& file) {
    isChosen_ = !source_.isLive && !window_.options().takesAll();
    return open(file, Reading::Whole, isChosen_ ? &window_ : nullptr);
}

void Recording::tellBrokenLine(const InputError& error) {
    if (++brokenLines_ == 1) {
        firstBrokenLine_ = error;
    }
    if (source_.isLive) {
        tellFirstBrokenLine();
    }
}

/// Not before the file is known to hold a sweep: else the line is the error.
void Recording::tellFirstBrokenLine() {
    if (const auto error = std::exchange(firstBrokenLine_, std::nullopt)) {
        source_.onNote({error->file(), error->line(), error->problem() + "; the line is skipped"});
    }
}

void Recording::finishFile() {
    const QString& file = reader_->file();
    if (reader_->hasSweeps()) {
        tellFirstBrokenLine();
    }
    if (brokenLines_ > 1 && !firstBrokenLine_) {
        source_.onNote(
            {file, std::to_string(brokenLines_) + " lines in all made no sense and were skipped"});
    }
    if (reader_->cutLine() > 0) {
        source_.onNote({file, reader_->cutLine(),
                        "the last line has no line end and may be cut; it is left out"});
    }
    if (reader_->endsEarly()) {
        source_.onNote({file, "the compressed data ends early; a line that it cuts is left out"});
    }
    isStopped_ = reader_->isStopped();
    if (!reader_->hasSweeps() && !isStopped_) {
        throw firstBrokenLine_.value_or(InputError(file, "holds no sweep"));
    }
    if (firstTime_.empty()) {
        firstTime_ = reader_->firstTime();
    }
    lastTime_ = reader_->lastTime();
}

/// Reads the beginning of each of several files.
void Recording::look() {
    for (const QString& file : files()) {
        auto part = lookInto(file);
        if (!part) {
            parts_.clear();
            return;
        }
        parts_.push_back(std::move(*part));
    }
    chooseAxis();
    std::stable_sort(parts_.begin(), parts_.end(), [](const Part& a, const Part& b) {
        return !a.time.empty() && microsecondsOf(a.time) < microsecondsOf(b.time);
    });
}

/// @return nothing where reading is stopped
std::optional<Recording::Part> Recording::lookInto(const QString& file) {
    const bool isOpenedOnce = file == kStandardInput;
    auto reader = open(file, isOpenedOnce ? Reading::Whole : Reading::Beginning, nullptr);
    Sweep sweep;
    if (!reader->next(sweep)) {
        reader_ = std::move(reader);
        finishFile();
        reader_.reset();
        return std::nullopt;
    }
    Part part{{file, sweep.time, sweep.levels.size(), reader->axis()}, nullptr, std::nullopt};
    if (isOpenedOnce) {
        part.reader = std::move(reader);
        part.first = std::move(sweep);
    }
    return part;
}

void Recording::chooseAxis() {
    const Part& most = *std::max_element(
        parts_.begin(), parts_.end(),
        [](const Part& a, const Part& b) { return a.axis.hops.size() < b.axis.hops.size(); });
    for (const Part& part : parts_) {
        requireOneSetting(part, most);
    }
    whole_ = most.axis;
}

/// Opens the next of several files.
/// @return false behind the last
bool Recording::openNext() {
    if (part_ == parts_.size()) {
        return false;
    }
    Part& part = parts_[part_++];
    if (part_ > 1) {
        requireOrder(part, parts_[part_ - 2].file, lastTime_);
    }
    const bool isOpen = part.reader != nullptr;
    isChosen_ = false;
    reader_ = isOpen ? std::move(part.reader) : openToRead(part.file);
    firstSweep_ = std::move(part.first);
    if (!isOpen) {
        brokenLines_ = 0;
    }
    sweeps_ = 0;
    return true;
}

bool Recording::nextOfFile(Sweep& sweep) {
    if (firstSweep_) {
        sweep = *std::exchange(firstSweep_, std::nullopt);
    } else if (!reader_->next(sweep)) {
        return false;
    }
    ++sweeps_;
    tellFirstBrokenLine();
    return true;
}

/// Puts the levels where the axis has them.
void Recording::arrange(Sweep& sweep) const {
    if (!places_.empty()) {
        std::vector<double> levels(whole_.points.size(), traceRssiBuffer::kNoMeasurement);
        for (std::size_t i = 0; i < places_.size(); ++i) {
            levels[places_[i]] = sweep.levels[i];
        }
        sweep.levels = std::move(levels);
    }
    if (!points_.empty()) {
        for (std::size_t i = 0; i < points_.size(); ++i) {
            sweep.levels[i] = sweep.levels[points_[i]];  // points_[i] >= i
        }
        sweep.levels.resize(points_.size());
    }
}

void Recording::correctLevels(Sweep& sweep) {
    const LevelCorrection& correction = source_.correction;
    if (correction.isNone()) {
        return;
    }
    if (correction.needsFrequencies() && axis_.points.empty()) {
        throw InputError(reader_->file(), "holds no frequencies to correct levels by");
    }
    if (corrections_.size() != sweep.levels.size()) {
        corrections_ = correction.ofPoints(axis_.points, sweep.levels.size());
    }
    correct(sweep.levels, corrections_);
}

/// Makes the axis that of the window, which may have no point of a live source yet.
void Recording::setAxis() {
    if (window_.options().bands.empty() || whole_.points.empty()) {
        axis_ = whole_;
        return;
    }
    points_ = window_.pointsOf(whole_);
    if (points_.empty() && !source_.isLive) {
        throw error("has no point in the band; it reaches " + describe(whole_.bands));
    }
    axis_ = axisOf(whole_, points_);
}

/// Learns where the points of a file lie in the recording from its first sweep.
void Recording::beginFile(const Sweep& sweep) {
    if (parts_.empty()) {
        whole_ = reader_->axis();
        shown_.assign(whole_.points.size(), SweepReader::kNewPoint);
    } else {
        const auto places = placesOf(reader_->axis(), whole_);
        if (!places || sweep.time.empty() != whole_.points.empty() ||
            sweep.levels.size() != parts_[part_ - 1].levels) {
            throw InputError(reader_->file(), "changed while it was read");
        }
        places_ = places->size() == whole_.points.size() ? std::vector<std::size_t>() : *places;
    }
    if (handedOut_ == 0) {
        setAxis();
    }
}

/// Follows a live source that has new points.
void Recording::grow() {
    std::vector<std::size_t> shown;
    for (const std::size_t former : reader_->formerPoints()) {
        shown.push_back(former == SweepReader::kNewPoint ? former : shown_[former]);
    }
    shown_ = std::move(shown);
    whole_ = reader_->axis();
    isGrown_ = true;
}

/// Makes the axis that of a sweep of a live source that is about to be handed out.
/// @return false where it has no point
bool Recording::followAxis() {
    if (handedOut_ > 0 && !isGrown_) {
        return true;
    }
    isGrown_ = false;
    setAxis();
    if (axis_.points.empty() && !whole_.points.empty()) {
        return false;
    }
    const auto wholePoint = [this](std::size_t point) {
        return points_.empty() ? point : points_[point];
    };
    std::vector<std::size_t> former(axis_.points.size());
    for (std::size_t i = 0; i < former.size(); ++i) {
        former[i] = std::exchange(shown_[wholePoint(i)], i);
    }
    if (handedOut_ > 0 &&
        std::find(former.begin(), former.end(), SweepReader::kNewPoint) != former.end()) {
        formerPoints_ = std::move(former);
    }
    return true;
}

/// The next sweep of the files that the readers hand out.
bool Recording::nextOfAll(Sweep& sweep) {
    while (reader_ || openNext()) {
        if (nextOfFile(sweep)) {
            if (sweeps_ == 1) {
                beginFile(sweep);
            } else if (reader_->hasGrown()) {
                grow();
            }
            return true;
        }
        finishFile();
        if (parts_.empty() || isStopped_ || part_ == parts_.size()) {
            return false;
        }
        reader_.reset();
    }
    return false;
}

bool Recording::isWanted(const Sweep& sweep) {
    const WindowOptions& options = window_.options();
    const bool isTrace = sweep.time.empty();
    if (isTrace && options.limitsTime()) {
        throw InputError(reader_->file(), "holds no times to choose sweeps by");
    }
    if (isTrace && !options.bands.empty()) {
        throw InputError(reader_->file(), "holds no frequencies to choose points by");
    }
    if (isChosen_ && !isTrace) {
        return true;  // the reader has asked
    }
    const std::int64_t time = isTrace ? 0 : microsecondsOf(sweep.time);
    const bool isWanted = window_.wantsSweep(time);
    window_.begin(time);
    return isWanted;
}

bool Recording::nextOfWindow(Sweep& sweep) {
    while (nextOfAll(sweep)) {
        if (isWanted(sweep) && (!source_.isLive || followAxis())) {
            arrange(sweep);
            correctLevels(sweep);
            ++handedOut_;
            return true;
        }
    }
    if (!isStopped_) {
        requireSweep();
    }
    return false;
}

/// @throw InputError where the window has left nothing
void Recording::requireSweep() const {
    if (handedOut_ > 0) {
        return;
    }
    if (source_.isLive && !window_.options().bands.empty() && window_.pointsOf(whole_).empty()) {
        throw error("has no point in the band; it reaches " + describe(whole_.bands));
    }
    if (window_.options().limitsTime()) {
        throw error("has no sweep between these times; it reaches from " + firstTime_ + " to " +
                    lastTime_);
    }
}

/// Reads the heads of the lines of a file.
/// @param lastTime of its last sweep
/// @return false where reading is stopped
bool Recording::readHeads(const QString& file, Window& window, std::string& lastTime) {
    const auto reader = open(file, Reading::Heads, &window);
    Sweep sweep;
    while (reader->next(sweep) && sweep.time.empty()) {  // else it is behind what is counted
        window.begin(0);  // of a trace; those without times are handed out
    }
    lastTime = reader->lastTime();
    isStopped_ = reader->isStopped();
    return !isStopped_;
}

/// Tells the window when the recording ends.
/// @return false where reading is stopped
bool Recording::findEnd(const QString& lastFile) {
    if (!sizeOfRegular(lastFile)) {
        throw InputError(lastFile,
                         "a time before the end needs a regular file, which is read twice");
    }
    Window none = window_;
    none.skipAll();
    std::string time;
    if (!readHeads(lastFile, none, time)) {
        return false;
    }
    if (!time.empty()) {
        window_.setEnd(microsecondsOf(time));
    }
    return true;
}

/// Lets the window skip all but the last sweeps.
/// @return false where reading is stopped
bool Recording::countSweeps(const QStringList& inOrder) {
    Window none = window_;
    none.skipAll();
    std::string time;
    for (const QString& file : inOrder) {
        if (!readHeads(file, none, time)) {
            return false;
        }
    }
    window_.skip(std::max(0LL, none.sweeps() - window_.options().last));
    if (window_.options().goesOn) {
        read_ = 0;  // nobody knows beforehand how much is counted
    }
    return true;
}

/// @return 0 where that is not known
std::int64_t Recording::bytesToRead(const QStringList& inOrder) const {
    const WindowOptions& options = window_.options();
    std::int64_t bytes = 0;
    for (const QString& file : inOrder) {
        const auto size = sizeOfRegular(file);
        if (!size) {
            return 0;
        }
        const bool isReadForEnd = options.countsFromEnd() && file == inOrder.last();
        bytes += *size * (1 + int{options.last > 0 && !options.goesOn} + int{isReadForEnd});
    }
    return bytes;
}

/// Looks into several files, and finds what the window counts from the end.
/// @return false where reading is stopped
bool Recording::begin() {
    if (files().size() > 1) {
        look();
        if (isStopped_) {
            return false;
        }
    }
    QStringList inOrder = files();
    if (!parts_.empty()) {
        std::transform(parts_.begin(), parts_.end(), inOrder.begin(),
                       [](const Part& part) { return part.file; });
    }
    all_ = bytesToRead(inOrder);
    if (window_.options().countsFromEnd() && !findEnd(inOrder.last())) {
        return false;
    }
    const auto isRegular = [](const QString& file) { return sizeOfRegular(file).has_value(); };
    holdsLast_ =
        window_.options().last > 0 && !std::all_of(inOrder.begin(), inOrder.end(), isRegular);
    return window_.options().last == 0 || holdsLast_ || countSweeps(inOrder);
}

/// The next of the last sweeps, which are held from the first call on.
bool Recording::nextOfLast(Sweep& sweep) {
    std::size_t bytes = 0;
    while (!areHeld_ && nextOfWindow(sweep)) {
        bytes += bytesOf(sweep);
        last_.push_back(std::move(sweep));
        if (last_.size() > static_cast<std::size_t>(window_.options().last)) {
            bytes -= bytesOf(last_.front());
            last_.pop_front();
        }
        if (bytes > kMostHeld) {
            throw error("that many sweeps at the end take more than " +
                        std::to_string(kMostHeld >> 20) +
                        " MB; give a regular file, which is read twice");
        }
    }
    areHeld_ = true;
    if (last_.empty()) {
        return false;
    }
    sweep = std::move(last_.front());
    last_.pop_front();
    return true;
}

bool Recording::next(Sweep& sweep) {
    formerPoints_.clear();
    if (!std::exchange(isBegun_, true) && !begin()) {
        return false;
    }
    return holdsLast_ ? nextOfLast(sweep) : nextOfWindow(sweep);
}

std::vector<Hop> Recording::hopsInOrder() const {
    std::vector<Hop> hops = reader_->hopsInOrder();
    if (hops.size() < whole_.hops.size()) {  // most receivers go up
        hops.assign(whole_.hops.begin(), whole_.hops.end());
    }
    return hops;
}

}  // namespace rfu
