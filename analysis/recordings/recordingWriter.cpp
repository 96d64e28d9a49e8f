#include "analysis/recordings/recordingWriter.h"

#include <rfUtils/trace/traceRssiBuffer.h>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include "analysis/recordings/levelCorrection.h"
#include "analysis/recordings/recordingLine.h"
#include "analysis/recordings/timeStamp.h"
#include "analysis/support/csvLine.h"
#include "analysis/support/numbers.h"

namespace rfu {

namespace {

constexpr std::string_view kBetween = ", ";
constexpr std::string_view kNoLevel = "nan";
constexpr std::size_t kLeastDecimals = 2;
constexpr std::size_t kMostDecimals = 6;

bool isMissing(double level) {
    return level == traceRssiBuffer::kNoMeasurement;
}

/// The shortest text that reads back to the same number, without exponent.
std::string plainText(double hertz) {
    std::array<char, 400> buffer;  // the largest double has 309 digits
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), hertz,
                                      std::chars_format::fixed);
    return {buffer.data(), result.ptr};
}

/// The field of a line, counted from 0.
std::string_view fieldOf(std::string_view line, int number) {
    CsvFields fields(line);
    std::string_view field;
    for (int i = 0; i <= number; ++i) {
        fields.next(field);
    }
    return field;
}

std::size_t decimalsToWrite(std::string_view fields) {
    CsvFields levels(fields);
    std::string_view level;
    std::optional<std::size_t> decimals;
    while (!decimals && levels.next(level)) {
        decimals = decimalsOf(level);
    }
    const std::size_t withPoint = decimals.value_or(0);
    return std::clamp(withPoint == 0 ? 0 : withPoint - 1, kLeastDecimals, kMostDecimals);
}

/// A level of two decimals, which nearly all have.
/// @return false near a tie, where rounding takes more care
bool appendHundredths(double level, std::string& text) {
    const double hundredths = level * 100.0;
    const double nearest = std::nearbyint(hundredths);
    if (std::abs(hundredths - nearest) > 0.499 || nearest == 0.0) {
        return false;
    }
    const auto number = static_cast<unsigned>(std::abs(nearest));
    std::array<char, 8> buffer;  // "-998.99"
    char* at = buffer.data();
    if (nearest < 0.0) {
        *at++ = '-';
    }
    at = std::to_chars(at, buffer.data() + buffer.size(), number / 100).ptr;
    *at++ = '.';
    *at++ = static_cast<char>('0' + number / 10 % 10);
    *at++ = static_cast<char>('0' + number % 10);
    text.append(buffer.data(), at);
    return true;
}

/// A level within those that can be read again.
void appendLevel(double level, std::size_t decimals, std::string& text) {
    constexpr double kLargest = 998.99;
    const double bounded = std::clamp(level, -kLargest, kLargest);
    if (decimals == kLeastDecimals && appendHundredths(bounded, text)) {
        return;
    }
    std::array<char, 16> buffer;  // "-998.990000"
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), bounded,
                                      std::chars_format::fixed, static_cast<int>(decimals));
    text.append(buffer.data(), result.ptr);
}

/// Date and time of a line as its sweep has them.
std::string stampOf(std::string_view line) {
    return std::string(fieldOf(line, 0)) + ' ' + std::string(fieldOf(line, 1));
}

/// "2024-05-04, 21:15:00"
std::string stampFields(std::string_view stamp) {
    const std::size_t blank = stamp.find(' ');
    return std::string(stamp.substr(0, blank)) + std::string(kBetween) +
           std::string(stamp.substr(blank + 1));
}

/// Where the field behind date and time begins.
std::size_t behindStamp(std::string_view line) {
    return line.find(',', line.find(',') + 1);
}

/// The line of a hop that was not measured, but for its stamp.
SweepLine lineWithoutMeasurement(const Hop& hop) {
    SweepLine line = {hop, "-, -, ", 0};
    for (const double number : {hop.low, hop.high, hop.step}) {
        line.text += plainText(number) + std::string(kBetween);
    }
    line.text += "0,";
    line.levels = line.text.size();
    for (std::size_t i = 0; i < hop.points(); ++i) {
        line.text += i == 0 ? " " : kBetween;
        line.text += kNoLevel;
    }
    return line;
}

/// Hz high of the last bins of a hop, which may end within the last one.
double highOfEnd(const Hop& hop, double low, std::size_t bins) {
    const double width = static_cast<double>(bins);
    const double asRead = (hop.high - low) / hop.step;
    return std::abs(asRead - width) < 0.25 ? hop.high : low + width * hop.step;
}

}  // namespace

RecordingWriter::RecordingWriter(const Recording& recording, bool isChanged)
    : isChanged_(isChanged) {
    std::size_t point = 0;
    for (const AxisHop& hop : recording.axis().hops) {
        const double low = hop.low + static_cast<double>(hop.firstBin) * hop.step;
        const std::size_t end = hop.firstBin + hop.bins;
        const double high = end == hop.points() ? highOfEnd(hop, low, hop.bins)
                                                : hop.low + static_cast<double>(end) * hop.step;
        WrittenHop& written = hops_[hop.low];
        written.hop = hop;
        written.runs.push_back({hop.firstBin, hop.bins, point, hop.bins == hop.points(),
                                plainText(low) + std::string(kBetween) + plainText(high)});
        point += hop.bins;
    }
    for (const Hop& hop : recording.hopsInOrder()) {
        const auto written = hops_.find(hop.low);
        if (written != hops_.end()) {
            written->second.turn = order_.size();
            order_.push_back(&written->second);
        }
    }
}

void RecordingWriter::setOffsets(std::vector<double> offsets) {
    offsets_ = std::move(offsets);
    isChanged_ = true;
}

void RecordingWriter::write(Sweep& sweep, std::string& text) {
    if (!hops_.empty()) {
        if (std::exchange(isFirst_, false)) {
            held_ = std::move(sweep);
            sweep = {};
            return;
        }
        if (held_) {
            writeHeld(sweep, text);
        }
        writeHops(sweep, text);
        return;
    }
    for (const SweepLine& trace : sweep.lines) {
        writeRun(trace, {}, {0, sweep.levels.size(), 0, true, {}}, sweep.levels, text);
    }
}

void RecordingWriter::finish(std::string& text) {
    if (held_) {
        writeHops(*std::exchange(held_, std::nullopt), text);
    }
}

/// Writes the first sweep so that its reader does not end it where it pauses.
void RecordingWriter::writeHeld(const Sweep& next, std::string& text) {
    const Sweep first = *std::exchange(held_, std::nullopt);
    std::int64_t longest = 0;
    std::int64_t before = microsecondsOf(first.time);
    for (const SweepLine& line : first.lines) {
        const std::int64_t time = microsecondsOf(stampOf(line.text));
        longest = std::max(longest, std::abs(time - before));
        before = time;
    }
    const std::int64_t toNext = std::abs(microsecondsOf(next.time) - before);
    // A longer pause has to stay, for others in later sweeps.
    writeHops(first, text, longest > toNext && longest <= kMicrosecondsPerSecond);
}

/// The hops that a sweep has to have and lacks, in the order of the receiver.
std::vector<const RecordingWriter::WrittenHop*> RecordingWriter::missingHops(
    const std::vector<const WrittenHop*>& there) const {
    if (firstHop_ != nullptr) {
        const bool isThere = std::find(there.begin(), there.end(), firstHop_) != there.end();
        return isThere ? std::vector<const WrittenHop*>() : std::vector{firstHop_};
    }
    std::vector<bool> isThere(order_.size());
    for (const WrittenHop* hop : there) {
        isThere[hop->turn] = true;
    }
    std::vector<const WrittenHop*> missing;
    std::copy_if(order_.begin(), order_.end(), std::back_inserter(missing),
                 [&isThere](const WrittenHop* hop) { return !isThere[hop->turn]; });
    return missing;
}

/// @param hasOneStamp whether all lines get the time of the sweep
void RecordingWriter::writeHops(const Sweep& sweep, std::string& text, bool hasOneStamp) {
    std::vector<const SweepLine*> lines;
    std::vector<const WrittenHop*> hops;  // of the lines
    for (const SweepLine& line : sweep.lines) {
        const auto hop = hops_.find(line.hop.low);
        if (hop != hops_.end()) {
            lines.push_back(&line);
            hops.push_back(&hop->second);
        }
    }
    const bool keepsStamps =
        !hasOneStamp && !lines.empty() && stampOf(lines.front()->text) == sweep.time;
    const std::string sweepStamp = stampFields(sweep.time);
    const auto write = [&](const SweepLine& line, std::string_view stamp, const WrittenHop& hop) {
        for (const Run& run : hop.runs) {
            writeRun(line, stamp, run, sweep.levels, text);
        }
        if (firstHop_ == nullptr) {
            firstHop_ = &hop;
        }
    };
    const bool isFirstSweep = firstHop_ == nullptr;
    const std::vector<const WrittenHop*> missing = missingHops(hops);
    auto next = missing.begin();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        for (; next != missing.end() && (!isFirstSweep || (*next)->turn < hops[i]->turn); ++next) {
            const std::string stamp =
                i > 0 && keepsStamps ? stampFields(stampOf(lines[i - 1]->text)) : sweepStamp;
            write(lineWithoutMeasurement((*next)->hop), stamp, **next);
        }
        write(*lines[i], keepsStamps ? std::string_view() : sweepStamp, *hops[i]);
    }
    for (; next != missing.end(); ++next) {
        const std::string stamp =
            keepsStamps ? stampFields(stampOf(lines.back()->text)) : sweepStamp;
        write(lineWithoutMeasurement((*next)->hop), stamp, **next);
    }
}

/// @param stamp in place of that of the line; empty for none
void RecordingWriter::writeRun(const SweepLine& line, std::string_view stamp, const Run& run,
                               const std::vector<double>& levels, std::string& text) const {
    const auto first = levels.begin() + static_cast<std::ptrdiff_t>(run.firstPoint);
    const auto last = first + static_cast<std::ptrdiff_t>(run.bins);
    const bool keepsLevels =
        !isChanged_ && std::find(first, last, traceRssiBuffer::kNoMeasurement) == last;
    const std::string_view whole = line.text;
    const std::size_t from = stamp.empty() ? 0 : behindStamp(whole);
    text.append(stamp);
    if (run.isWholeHop && keepsLevels) {
        text.append(whole.substr(from)) += '\n';
        return;
    }
    std::string_view fields = whole.substr(line.levels);
    if (run.isWholeHop) {
        text.append(whole.substr(from, line.levels - from));
    } else {
        if (stamp.empty()) {
            text.append(stampFields(stampOf(whole)));
        }
        for (const std::string_view field :
             {std::string_view(run.range), fieldOf(whole, 4), fieldOf(whole, 5)}) {
            text.append(kBetween).append(field);
        }
        text += ',';
        if (run.firstBin > 0) {
            fields.remove_prefix(endOfFields(fields, run.firstBin) + 1);
        }
    }
    if (isChanged_ || !run.isWholeHop) {  // else what stands at Hz high and above stays, too
        fields = fields.substr(0, endOfFields(fields, run.bins));
    }
    if (keepsLevels) {
        text.append(fields);
    } else {
        writeLevels(fields, run, levels, text);
    }
    text += '\n';
}

/// Field by field; the blanks before a level stay.
void RecordingWriter::writeLevels(std::string_view fields, const Run& run,
                                  const std::vector<double>& levels, std::string& text) const {
    const std::size_t decimals = isChanged_ ? decimalsToWrite(fields) : 0;
    for (std::size_t i = 0; i < run.bins; ++i) {
        const std::size_t comma = std::min(fields.find(','), fields.size());
        const std::string_view field = fields.substr(0, comma);
        const std::size_t blanks = std::min(field.find_first_not_of(' '), field.size());
        const std::size_t point = run.firstPoint + i;
        text += i == 0 ? "" : ",";
        text.append(field.substr(0, blanks));
        if (isMissing(levels[point])) {
            text.append(kNoLevel);
        } else if (isChanged_) {
            appendLevel(levels[point] + (offsets_.empty() ? 0.0 : offsets_[point]), decimals, text);
        } else {
            text.append(field.substr(blanks));
        }
        fields.remove_prefix(comma);
        if (!fields.empty() && i + 1 < run.bins) {
            fields.remove_prefix(1);
        }
    }
    text.append(fields);
}

}  // namespace rfu
