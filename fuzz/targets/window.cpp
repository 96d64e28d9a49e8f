// The texts of a window and what a recording hands out through it. The first five lines are --from, --to,
// --every, --last and --band, the rest is the recording. Holds for any bytes:
// - a time that is read is within its bounds, and one of a day reads the same as it is written;
// - a recording that reads without an error hands out through the window what a plain restatement chooses
//   from all its sweeps and points, or an error where that is nothing;
// - what is written of it reads as as many points, and writing that again gives the same
//   bytes, unless lines of one sweep lie more than a second apart, and through the same window unless that thins or depends on the first day or the end.
#include "support/input.h"
#include "support/require.h"
#include "support/scratchFile.h"

#include "analysis/recordings/recording.h"
#include "analysis/recordings/recordingWriter.h"
#include "analysis/recordings/timeStamp.h"
#include "analysis/recordings/window.h"
#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

using namespace rfu;
using namespace rfu::fuzz;

namespace {

constexpr std::int64_t kDay = 86400000000;

struct Reading {
    std::vector<Sweep> sweeps;
    FrequencyAxis axis;
};

std::optional<Reading> read(const QString& file, const WindowOptions& window) {
    RecordingSource source;
    source.files = QStringList(file);
    source.isStrict = true;
    source.window = window;
    try {
        Recording recording(source);
        Reading reading;
        for (Sweep sweep; recording.next(sweep);) {
            reading.sweeps.push_back(sweep);
            REQUIRE(sweep.time.empty() || sweep.levels.size() == recording.axis().points.size());
        }
        reading.axis = recording.axis();
        return reading;
    } catch (const InputError& error) {
        REQUIRE(error.file() == file);
        return std::nullopt;
    }
}

std::string_view nextLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

std::optional<WindowTime> timeOf(std::string_view text) {
    const auto time = parseWindowTime(text);
    if (!time) {
        return time;
    }
    switch (time->origin) {
        case WindowTime::Origin::FixedDay: {
            const std::string written =
                dateText(time->microseconds) + ' ' + timeText(time->microseconds, 6);
            REQUIRE(parseWindowTime(written)->microseconds == time->microseconds);
            break;
        }
        case WindowTime::Origin::FirstDay:  // with a leap second
            REQUIRE(time->microseconds >= 0 && time->microseconds < kDay + 1000000);
            break;
        case WindowTime::Origin::End:
            REQUIRE(time->microseconds <= 0 && trimmed(text).front() == '-');
            break;
    }
    return time;
}

long long countOf(std::string_view text, long long fallback) {
    const int count = parseInteger(text).value_or(0);
    return count > 0 ? count : fallback;
}

/// The numbers of the sweeps that a window has.
std::vector<std::size_t> chosenSweeps(const std::vector<Sweep>& sweeps,
                                      const WindowOptions& window) {
    const std::int64_t first = microsecondsOf(sweeps.front().time);
    const std::int64_t last = microsecondsOf(sweeps.back().time);
    const auto absolute = [&](const WindowTime& time) {
        return time.microseconds + (time.origin == WindowTime::Origin::FixedDay ? 0
                                    : time.origin == WindowTime::Origin::FirstDay
                                        ? first / kDay * kDay
                                        : last);
    };
    std::vector<std::size_t> chosen;
    long long between = 0;
    for (std::size_t i = 0; i < sweeps.size(); ++i) {
        const std::int64_t time = microsecondsOf(sweeps[i].time);
        if ((window.from && time < absolute(*window.from)) ||
            (window.to && time > absolute(*window.to))) {
            continue;
        }
        if (between++ % window.every == 0) {
            chosen.push_back(i);
        }
    }
    const auto all = static_cast<long long>(chosen.size());
    if (window.last > 0 && all > window.last) {
        chosen.erase(chosen.begin(),
                     chosen.begin() + static_cast<std::ptrdiff_t>(all - window.last));
    }
    return chosen;
}

std::vector<std::size_t> chosenPoints(const FrequencyAxis& axis, const WindowOptions& window) {
    std::vector<std::size_t> chosen;
    std::size_t point = 0;
    for (const AxisHop& hop : axis.hops) {
        for (std::size_t bin = 0; bin < hop.points(); ++bin, ++point) {
            const double middle = (hop.low + (static_cast<double>(bin) + 0.5) * hop.step) / 1e6;
            if (window.bands.empty() ||
                (middle >= window.bands[0].low && middle < window.bands[0].high)) {
                chosen.push_back(point);
            }
        }
    }
    return chosen;
}

/// The longest step in time between two lines of a sweep.
std::int64_t longestPause(const Sweep& sweep) {
    std::int64_t longest = 0;
    std::int64_t before = microsecondsOf(sweep.time);
    for (const SweepLine& line : sweep.lines) {
        std::string date(line.text.substr(0, line.text.find(',')));
        std::string_view rest = std::string_view(line.text).substr(date.size() + 1);
        const std::string time(trimmed(rest.substr(0, rest.find(','))));
        const std::int64_t now = microsecondsOf(trimmed(date), time);
        longest = std::max(longest, std::abs(now - before));
        before = now;
    }
    return longest;
}

/// The lines of a part of a recording; where that is nothing, none.
/// @param pauses the longest step in time between two lines of a sweep
std::string write(const QString& file, const WindowOptions& window, std::int64_t& pauses) {
    pauses = 0;
    RecordingSource source;
    source.files = QStringList(file);
    source.isStrict = true;
    source.window = window;
    source.keepsLines = true;
    std::string text;
    try {
        Recording recording(source);
        std::optional<RecordingWriter> writer;
        for (Sweep sweep; recording.next(sweep);) {
            if (!writer) {
                writer.emplace(recording, false);
            }
            pauses = std::max(pauses, longestPause(sweep));
            writer->write(sweep, text);
        }
        if (writer) {
            writer->finish(text);
        }
    } catch (const InputError& error) {
        REQUIRE(error.file() == file);
        text.clear();
    }
    return text;
}

void requireWritten(const QString& file, WindowOptions window, const Reading& chosen) {
    static ScratchFile part("part.csv");
    std::int64_t ofPart = 0;
    const std::string text = write(file, window, ofPart);
    std::int64_t pauses = 0;
    write(file, {}, pauses);
    part.write(text.data(), text.size());
    const auto reading = read(part.path(), {});
    REQUIRE(reading.has_value());
    REQUIRE(reading->axis.points.size() == chosen.axis.points.size());
    if (pauses > 1000000) {
        return;
    }
    REQUIRE(write(part.path(), {}, ofPart) == text);
    REQUIRE(reading->sweeps.size() == chosen.sweeps.size());
    for (std::size_t i = 0; i < chosen.sweeps.size(); ++i) {
        REQUIRE(reading->sweeps[i].time == chosen.sweeps[i].time);
        REQUIRE(reading->sweeps[i].levels == chosen.sweeps[i].levels);
    }
    // Of the part, the first day and the end may be others.
    const auto isOf = [](const std::optional<WindowTime>& time, WindowTime::Origin origin) {
        return time && time->origin == origin;
    };
    if (window.every == 1 && !isOf(window.to, WindowTime::Origin::End) &&
        !isOf(window.from, WindowTime::Origin::FirstDay) &&
        !isOf(window.to, WindowTime::Origin::FirstDay)) {
        REQUIRE(write(part.path(), window, ofPart) == text);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ScratchFile file("sweeps.csv");
    std::string_view text(reinterpret_cast<const char*>(data), size);
    WindowOptions window;
    window.from = timeOf(nextLine(text));
    window.to = timeOf(nextLine(text));
    window.every = countOf(nextLine(text), 1);
    window.last = countOf(nextLine(text), 0);
    if (const auto band = parseFrequencyRange(nextLine(text))) {
        window.bands = {*band};
    }
    file.write(text.data(), text.size());
    const auto all = read(file.path(), {});
    const auto chosen = read(file.path(), window);
    if (!all || all->axis.points.empty()) {
        return 0;
    }
    const std::vector<std::size_t> sweeps = chosenSweeps(all->sweeps, window);
    const std::vector<std::size_t> points = chosenPoints(all->axis, window);
    REQUIRE(chosen.has_value() == (!sweeps.empty() && !points.empty()));
    if (!chosen) {
        return 0;
    }
    REQUIRE(chosen->sweeps.size() == sweeps.size());
    REQUIRE(chosen->axis.points.size() == points.size());
    for (std::size_t i = 0; i < sweeps.size(); ++i) {
        const Sweep& whole = all->sweeps[sweeps[i]];
        REQUIRE(chosen->sweeps[i].time == whole.time);
        for (std::size_t k = 0; k < points.size(); ++k) {
            REQUIRE(chosen->sweeps[i].levels[k] == whole.levels[points[k]]);
            REQUIRE(chosen->axis.points[k] == all->axis.points[points[k]]);
        }
    }
    requireWritten(file.path(), window, *chosen);
    return 0;
}
