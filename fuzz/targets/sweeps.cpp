// The reader of recordings behind `rfutils trace`. Holds for any bytes:
// - reading ends, at the end of the file or with a failure of status 1 that names the file;
// - every level is -999, for none, or lies between -999 and 999;
// - the sweeps of a recording have as many levels each as its frequency axis has points, or as its
//   first trace has levels; the axis is finite and ends above its first point;
// - a recording without frequencies gives one trace for each line that is not blank, with the
// numbers
//   that strtod reads;
// - one with frequencies gives the sweeps that its lines make by a plain restatement of the rules:
//   the hops up to the first that comes again or a pause, in order of frequency;
// - reading again gives the same.
#include "support/input.h"
#include "support/mapText.h"
#include "support/require.h"
#include "support/scratchFile.h"

#include "support/errors.h"
#include "trace/sweepReader.h"

#include <cmath>
#include <map>
#include <optional>
#include <set>

using namespace rfu::fuzz;

namespace {

struct Recording {
    std::vector<Sweep> sweeps;
    std::vector<double> points;
    double end = 0.0;
    std::optional<std::string> failure;
};

bool isLevel(double level) {
    return level == -999.0 || (level > -999.0 && level < 999.0);
}

void require(const Sweep& sweep, const SweepReader& reader, std::size_t levels) {
    REQUIRE(sweep.levels.size() == levels);
    REQUIRE(!sweep.levels.empty());
    REQUIRE(sweep.time.empty() != reader.hasFrequencies());
    REQUIRE(std::all_of(sweep.levels.begin(), sweep.levels.end(), isLevel));
}

Recording read(const QString& file) {
    Recording recording;
    try {
        SweepReader reader(file);
        Sweep sweep;
        while (reader.next(sweep)) {
            const std::vector<double>& points = reader.axis().points;
            require(sweep, reader,
                    reader.hasFrequencies()    ? points.size()
                    : recording.sweeps.empty() ? sweep.levels.size()
                                               : recording.sweeps[0].levels.size());
            recording.sweeps.push_back(sweep);
        }
        recording.points = reader.axis().points;
        recording.end = reader.axis().end;
    } catch (const Failure& failure) {
        REQUIRE(failure.exitStatus == kExitBadInput);
        REQUIRE(failure.message.rfind(file.toStdString() + ':', 0) == 0);
        recording.failure = failure.message;
    }
    return recording;
}

void requireAxis(const Recording& recording) {
    for (const double point : recording.points) {
        REQUIRE(std::isfinite(point) && point >= 0.0);
    }
    REQUIRE(recording.points.empty() || recording.end > recording.points.front());
}

std::string trimmedText(const std::string& text) {
    constexpr char kBlanks[] = " \t\v\f\r";
    const std::size_t begin = text.find_first_not_of(kBlanks);
    return begin == std::string::npos
               ? std::string()
               : text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

std::vector<std::string> fieldsOf(const std::string& line) {
    std::vector<std::string> fields(1);
    for (const char c : line) {
        if (c == ',') {
            fields.emplace_back();
        } else {
            fields.back() += c;
        }
    }
    std::transform(fields.begin(), fields.end(), fields.begin(), trimmedText);
    return fields;
}

double levelOf(const std::string& field) {
    const double level = field.empty() ? -999.0 : std::strtod(field.c_str(), nullptr);
    return std::isfinite(level) ? level : -999.0;
}

std::vector<double> levelsOf(const std::string& line) {
    std::vector<double> levels;
    for (const std::string& field : fieldsOf(line)) {
        levels.push_back(levelOf(field));
    }
    return levels;
}

/// Of a recording without frequencies that has been read to its end.
void requireTraces(const Recording& recording, std::string_view file) {
    std::size_t count = 0;
    for (const std::string& line : linesOf(file, file.size())) {
        if (!trimmedText(line).empty()) {
            REQUIRE(count < recording.sweeps.size());
            REQUIRE(recording.sweeps[count].levels == levelsOf(line));
            ++count;
        }
    }
    REQUIRE(count == recording.sweeps.size());
}

/// One line of a recording with frequencies, as far as the sweeps depend on it.
struct HopLine {
    std::string date;
    std::int64_t microseconds;  // of the day
    double low;
    double step;
    std::vector<double> levels;
};

std::int64_t microsecondsOf(const std::string& time) {
    const auto at = [&](std::size_t begin) { return std::stoi(time.substr(begin, 2)); };
    std::string fraction = time.size() > 9 ? time.substr(9, 6) : "";
    fraction.resize(6, '0');
    return (at(0) * 3600 + at(3) * 60 + at(6)) * std::int64_t{1000000} + std::stoi(fraction);
}

std::vector<HopLine> hopLinesOf(std::string_view file) {
    constexpr std::size_t kHead = 6;  // fields before the levels
    std::vector<HopLine> hops;
    for (const std::string& line : linesOf(file, file.size())) {
        if (trimmedText(line).empty()) {
            continue;
        }
        const std::vector<std::string> fields = fieldsOf(line);
        const auto number = [&](std::size_t i) { return std::strtod(fields[i].c_str(), nullptr); };
        const auto count =
            static_cast<std::size_t>(std::llround((number(3) - number(2)) / number(4)));
        REQUIRE(fields.size() >= kHead + count);
        HopLine hop = {fields[0], microsecondsOf(fields[1]), number(2), number(4), {}};
        for (std::size_t i = 0; i < count; ++i) {
            hop.levels.push_back(levelOf(fields[kHead + i]));
        }
        hops.push_back(hop);
    }
    return hops;
}

/// A sweep being put together: the levels of each hop, by its lowest frequency.
using Parts = std::map<double, std::vector<double>>;

std::vector<double> joined(const Parts& parts) {
    std::vector<double> whole;
    for (const auto& [low, part] : parts) {
        whole.insert(whole.end(), part.begin(), part.end());
    }
    return whole;
}

std::int64_t pause(const HopLine& a, const HopLine& b) {
    return std::abs(a.microseconds - b.microseconds);
}

/// Of a recording with frequencies that has been read to its end. Sweeps behind the first are
/// foretold where the whole recording is of one day.
void requireHops(const Recording& recording, std::string_view file) {
    const std::vector<HopLine> hops = hopLinesOf(file);
    Parts levels;
    Parts points;
    std::int64_t longestPause = 1000000;
    std::size_t next = 0;
    for (; next < hops.size() && levels.count(hops[next].low) == 0; ++next) {
        const HopLine& hop = hops[next];
        levels[hop.low] = hop.levels;
        for (std::size_t i = 0; i < hop.levels.size(); ++i) {
            points[hop.low].push_back((hop.low + static_cast<double>(i) * hop.step) / 1e6);
        }
        longestPause = std::max(longestPause, next > 0 ? pause(hop, hops[next - 1]) : 0);
    }
    REQUIRE(recording.points == joined(points));
    REQUIRE(recording.sweeps.at(0).levels == joined(levels));
    if (std::any_of(hops.begin(), hops.end(),
                    [&](const HopLine& hop) { return hop.date != hops[0].date; })) {
        return;
    }
    std::size_t sweep = 1;
    for (; next < hops.size(); ++sweep) {
        Parts parts;
        for (const auto& [low, part] : levels) {
            parts[low].assign(part.size(), -999.0);
        }
        std::set<double> seen;
        for (; next < hops.size() && seen.count(hops[next].low) == 0; ++next) {
            if (!seen.empty() && pause(hops[next], hops[next - 1]) > longestPause) {
                break;
            }
            seen.insert(hops[next].low);
            parts[hops[next].low] = hops[next].levels;
        }
        REQUIRE(sweep < recording.sweeps.size());
        REQUIRE(recording.sweeps[sweep].levels == joined(parts));
    }
    REQUIRE(sweep == recording.sweeps.size());
}

void requireSame(const Recording& a, const Recording& b) {
    REQUIRE(a.failure == b.failure && a.points == b.points && same(a.end, b.end));
    REQUIRE(std::equal(
        a.sweeps.begin(), a.sweeps.end(), b.sweeps.begin(), b.sweeps.end(),
        [](const Sweep& x, const Sweep& y) { return x.time == y.time && x.levels == y.levels; }));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ScratchFile file("sweeps.csv");
    file.write(data, size);
    const Recording recording = read(file.path());
    requireAxis(recording);
    if (!recording.failure) {
        const std::string_view text(reinterpret_cast<const char*>(data), size);
        recording.points.empty() ? requireTraces(recording, text) : requireHops(recording, text);
    }
    requireSame(recording, read(file.path()));
    return 0;
}
