#include "analysis/recordings/recording.h"

#include <rfUtils/trace/traceRssiBuffer.h>
#include <algorithm>
#include <utility>

#include "analysis/recordings/timeStamp.h"

namespace rfu {

namespace {

/// Of each point of some hops its place among those of an axis.
/// @return nothing where a hop is not one of the axis
std::optional<std::vector<std::size_t>> placesOf(const FrequencyAxis& part,
                                                 const FrequencyAxis& axis) {
    std::vector<std::size_t> places;
    places.reserve(part.points.size());
    std::size_t first = 0;
    auto hop = axis.hops.begin();
    for (const Hop& wanted : part.hops) {
        for (; hop != axis.hops.end() && !(*hop == wanted); ++hop) {
            first += hop->points();
        }
        if (hop == axis.hops.end()) {
            return std::nullopt;
        }
        for (std::size_t i = 0; i < wanted.points(); ++i) {
            places.push_back(first + i);
        }
    }
    return places;
}

/// The first hop of an axis that another one lacks.
const Hop& hopBeyond(const FrequencyAxis& axis, const FrequencyAxis& other) {
    return *std::find_if(axis.hops.begin(), axis.hops.end(), [&other](const Hop& hop) {
        return std::find(other.hops.begin(), other.hops.end(), hop) == other.hops.end();
    });
}

}  // namespace

Recording::Recording(RecordingSource source) : source_(std::move(source)) {
    if (source_.files.size() > 1) {
        look();
    } else {
        reader_ = open(files().first(), true);
    }
}

/// @param isTold whether broken lines count; the others are those of a file that is looked into
std::unique_ptr<SweepReader> Recording::open(const QString& file, bool isTold) {
    std::function<void(const InputError&)> onBrokenLine;
    if (!source_.isStrict) {
        onBrokenLine = [this, isTold](const InputError& error) {
            if (isTold) {
                tellBrokenLine(error);
            }
        };
    }
    return std::make_unique<SweepReader>(file, source_.isLive ? 1 : kLearnedSweeps, source_.waiting,
                                         std::move(onBrokenLine), source_.isLive);
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
    if (sweeps_ == 0 && !reader_->isStopped()) {
        throw firstBrokenLine_.value_or(InputError(file, "holds no sweep"));
    }
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
    requireOneSetting();
    std::stable_sort(parts_.begin(), parts_.end(), [](const Part& a, const Part& b) {
        return !a.time.empty() && microsecondsOf(a.time) < microsecondsOf(b.time);
    });
}

/// @return nothing where reading is stopped
std::optional<Recording::Part> Recording::lookInto(const QString& file) {
    const bool isOpenedOnce = file == kStandardInput;
    auto reader = open(file, isOpenedOnce);
    Sweep sweep;
    if (!reader->next(sweep)) {
        reader_ = std::move(reader);
        finishFile();
        reader_.reset();
        return std::nullopt;
    }
    Part part{file, nullptr, std::nullopt, sweep.time, sweep.levels.size(), reader->axis()};
    if (isOpenedOnce) {
        part.reader = std::move(reader);
        part.first = std::move(sweep);
    }
    return part;
}

void Recording::requireOneSetting() {
    const Part& most = *std::max_element(
        parts_.begin(), parts_.end(),
        [](const Part& a, const Part& b) { return a.axis.hops.size() < b.axis.hops.size(); });
    for (const Part& part : parts_) {
        const std::string other = most.file.toStdString();
        if (part.time.empty() != most.time.empty()) {
            throw InputError(part.file,
                             "holds traces without frequencies, while " + other + " holds sweeps");
        }
        if (part.time.empty() && part.levels != most.levels) {
            throw InputError(part.file, "has traces of " + std::to_string(part.levels) +
                                            " levels, while " + other + " has traces of " +
                                            std::to_string(most.levels));
        }
        if (!placesOf(part.axis, most.axis)) {
            throw InputError(part.file, "is of another receiver setting than " + other +
                                            ", which lacks the hop " +
                                            describe(hopBeyond(part.axis, most.axis)));
        }
    }
    axis_ = most.axis;
}

/// Opens the next of several files.
/// @return false behind the last
bool Recording::openNext() {
    if (part_ == parts_.size()) {
        return false;
    }
    Part& part = parts_[part_++];
    const bool isOpen = part.reader != nullptr;
    reader_ = isOpen ? std::move(part.reader) : open(part.file, true);
    firstSweep_ = std::move(part.first);
    if (!isOpen) {
        brokenLines_ = 0;
    }
    sweeps_ = 0;
    return true;
}

/// A file's first sweep may not be earlier than the last one of the file before.
void Recording::requireOrder(const std::string& time) const {
    if (!lastTime_.empty() && microsecondsOf(time) < microsecondsOf(lastTime_)) {
        throw InputError(reader_->file(), "begins at " + time + ", before " +
                                              parts_[part_ - 2].file.toStdString() + " ends at " +
                                              lastTime_);
    }
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

/// Puts the levels where the axis of all files has them.
void Recording::arrange(Sweep& sweep) const {
    if (places_.empty()) {
        return;
    }
    std::vector<double> levels(axis_.points.size(), traceRssiBuffer::kNoMeasurement);
    for (std::size_t i = 0; i < places_.size(); ++i) {
        levels[places_[i]] = sweep.levels[i];
    }
    sweep.levels = std::move(levels);
}

/// Learns where the points of a file lie in the recording from its first sweep.
void Recording::beginFile(const Sweep& sweep) {
    if (parts_.empty()) {
        axis_ = reader_->axis();
        return;
    }
    requireOrder(sweep.time);
    const auto places = placesOf(reader_->axis(), axis_);
    if (!places || sweep.time.empty() != axis_.points.empty() ||
        sweep.levels.size() != parts_[part_ - 1].levels) {
        throw InputError(reader_->file(), "changed while it was read");
    }
    places_ = places->size() == axis_.points.size() ? std::vector<std::size_t>() : *places;
}

bool Recording::next(Sweep& sweep) {
    while (reader_ || openNext()) {
        if (nextOfFile(sweep)) {
            if (sweeps_ == 1) {
                beginFile(sweep);
            } else if (reader_->hasGrown()) {
                axis_ = reader_->axis();
            }
            if (!parts_.empty()) {
                lastTime_ = sweep.time;
                arrange(sweep);
            }
            return true;
        }
        finishFile();
        if (parts_.empty() || reader_->isStopped() || part_ == parts_.size()) {
            return false;
        }
        reader_.reset();
    }
    return false;
}

}  // namespace rfu
