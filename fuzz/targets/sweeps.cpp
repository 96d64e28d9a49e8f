// The reader of recordings behind `rfutils trace`. Holds for any bytes that are not compressed:
// - reading ends, at the end of the file or with an InputError that names the file;
// - every level is -999, for none, or lies between -999 and 999;
// - the sweeps of a recording have as many levels each as its frequency axis has points, or as its
//   first trace has levels; the axis is finite, its bands ascend without touching and each begins
//   at a point;
// - a recording without frequencies gives one trace for each line with data, with the numbers that
//   strtod reads; the other lines are blank, comments or a header before all others;
// - one with frequencies gives the sweeps that its lines make by a plain restatement of the rules:
//   the hops up to the first that comes again or comes too early or a pause, in order of frequency;
// - only a last line without line end is left out;
// - a live source never fails but for a line that is too long. Where nothing is
//   skipped and no hop is new it gives the sweeps of the recording; where its axis grows, every point
//   keeps its frequency;
// - reading again gives the same.
#include "support/input.h"
#include "support/require.h"
#include "support/scratchFile.h"

#include "analysis/recordings/sweepReader.h"
#include "analysis/support/compression.h"
#include "analysis/support/inputError.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using namespace rfu;
using namespace rfu::fuzz;

namespace {

struct Recording {
    std::vector<Sweep> sweeps;
    FrequencyAxis axis;
    long long cutLine = 0;
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

Recording read(const QString& file, std::size_t learned) {
    Recording recording;
    try {
        SweepReader reader(file, learned);
        Sweep sweep;
        while (reader.next(sweep)) {
            const std::vector<double>& points = reader.axis().points;
            require(sweep, reader,
                    reader.hasFrequencies()    ? points.size()
                    : recording.sweeps.empty() ? sweep.levels.size()
                                               : recording.sweeps[0].levels.size());
            recording.sweeps.push_back(sweep);
        }
        recording.axis = reader.axis();
        recording.cutLine = reader.cutLine();
    } catch (const rfu::InputError& error) {
        REQUIRE(error.file() == file);
        recording.failure = error.message();
    }
    return recording;
}

void requireAxis(const Recording& recording) {
    const std::vector<double>& points = recording.axis.points;
    const std::vector<FrequencyAxis::Band>& bands = recording.axis.bands;
    for (const double point : points) {
        REQUIRE(std::isfinite(point) && point >= 0.0);
    }
    REQUIRE(points.empty() == bands.empty());
    for (std::size_t i = 0; i < bands.size(); ++i) {
        REQUIRE(i == 0 ? bands[i].firstPoint == 0 : bands[i].firstPoint > bands[i - 1].firstPoint);
        REQUIRE(bands[i].firstPoint < points.size());
        REQUIRE(same(bands[i].low, points[bands[i].firstPoint]) && bands[i].high > bands[i].low);
        REQUIRE(i == 0 || bands[i].low > bands[i - 1].high);
    }
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

/// Without blank lines, comments and a header.
std::vector<std::string> dataLinesOf(std::string_view file) {
    std::vector<std::string> lines;
    const bool isMarked = file.substr(0, 3) == "\xEF\xBB\xBF";
    bool isFirst = true;
    file.remove_prefix(isMarked ? 3 : 0);
    while (!file.empty()) {
        const std::size_t length = std::min(file.find('\n'), file.size());
        const std::string line(file.substr(0, length));
        file.remove_prefix(std::min(length + 1, file.size()));
        const std::string text = trimmedText(line);
        if (text.empty() || text[0] == '#') {
            continue;
        }
        // In a recording that can be read, only a header begins like a word that is no level.
        const std::string first = fieldsOf(line)[0];
        char* end = nullptr;
        std::strtod(first.c_str(), &end);
        const bool isHeader = isFirst &&
                              first.size() != static_cast<std::size_t>(end - first.c_str()) &&
                              !(first[0] >= '0' && first[0] <= '9');
        isFirst = false;
        if (!isHeader) {
            lines.push_back(line);
        }
    }
    return lines;
}

/// Of a recording without frequencies that has been read to its end.
void requireTraces(const Recording& recording, std::string_view file) {
    std::size_t count = 0;
    for (const std::string& line : dataLinesOf(file)) {
        REQUIRE(count < recording.sweeps.size());
        REQUIRE(recording.sweeps[count].levels == levelsOf(line));
        ++count;
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
    for (const std::string& line : dataLinesOf(file)) {
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

/// Lines that make a sweep.
struct Bounds {
    std::size_t begin;
    std::size_t end;
};

/// Where the sweeps of a recording of one day end.
std::vector<Bounds> boundsOf(const std::vector<HopLine>& hops, std::size_t learned) {
    std::set<double> seen;
    std::size_t again = 0;  // line of the first hop that comes again
    while (again < hops.size() && seen.insert(hops[again].low).second) {
        ++again;
    }
    std::size_t bound = again;
    std::int64_t farthest = again < hops.size() ? pause(hops[again], hops[again - 1]) : INT64_MAX;
    for (std::size_t i = 1; i < again; ++i) {
        if (pause(hops[i], hops[i - 1]) > farthest) {
            farthest = pause(hops[i], hops[i - 1]);
            bound = i;
        }
    }
    std::int64_t longestPause = 1000000;
    std::vector<double> order;
    for (std::size_t i = 0; i < again; ++i) {
        const std::size_t line = (bound + i) % again;
        order.push_back(hops[line].low);
        if (line > 0 && line != bound) {
            longestPause = std::max(longestPause, pause(hops[line], hops[line - 1]));
        }
    }
    std::vector<Bounds> sweeps = {{0, bound}};
    while (sweeps.back().end < hops.size()) {
        const std::size_t begin = sweeps.back().end;
        std::vector<std::pair<int, double>> news;  // hops behind the turn of a known one
        int lastTurn = -1;
        seen.clear();
        std::size_t i = begin;
        for (; i < hops.size(); ++i) {
            const double low = hops[i].low;
            const auto known = std::find(order.begin(), order.end(), low);
            const int turn = known == order.end() ? -1 : static_cast<int>(known - order.begin());
            if (i > begin) {
                const std::int64_t step = pause(hops[i], hops[i - 1]);
                const bool isBack = turn < 0 ? low < hops[i - 1].low : turn <= lastTurn;
                if (seen.count(low) > 0 || (step > 0 && isBack) || step > longestPause) {
                    break;
                }
            }
            seen.insert(low);
            if (turn < 0) {
                REQUIRE(sweeps.size() < learned);
                news.emplace_back(lastTurn, low);
            } else {
                lastTurn = turn;
            }
        }
        sweeps.push_back({begin, i});
        std::vector<double> merged;
        for (int turn = -1; turn < static_cast<int>(order.size()); ++turn) {
            if (turn >= 0) {
                merged.push_back(order[static_cast<std::size_t>(turn)]);
            }
            for (const auto& [behind, low] : news) {
                if (behind == turn) {
                    merged.push_back(low);
                }
            }
        }
        order = merged;
    }
    return sweeps;
}

/// Of a recording with frequencies that has been read to its end. The sweeps are foretold where the
/// whole recording is of one day.
void requireHops(const Recording& recording, std::string_view file, std::size_t learned) {
    const std::vector<HopLine> hops = hopLinesOf(file);
    Parts none;
    Parts points;
    for (const HopLine& hop : hops) {
        if (points.count(hop.low) == 0) {
            none[hop.low].assign(hop.levels.size(), -999.0);
            for (std::size_t i = 0; i < hop.levels.size(); ++i) {
                points[hop.low].push_back((hop.low + static_cast<double>(i) * hop.step) / 1e6);
            }
        }
    }
    REQUIRE(recording.axis.points == joined(points));
    if (std::any_of(hops.begin(), hops.end(),
                    [&](const HopLine& hop) { return hop.date != hops[0].date; })) {
        return;
    }
    const std::vector<Bounds> sweeps = boundsOf(hops, learned);
    REQUIRE(sweeps.size() == recording.sweeps.size());
    for (std::size_t i = 0; i < sweeps.size(); ++i) {
        Parts parts = none;
        for (std::size_t line = sweeps[i].begin; line < sweeps[i].end; ++line) {
            parts[hops[line].low] = hops[line].levels;
        }
        REQUIRE(recording.sweeps[i].levels == joined(parts));
    }
}

void requireSame(const Recording& a, const Recording& b) {
    REQUIRE(a.failure == b.failure && a.axis.points == b.axis.points);
    REQUIRE(std::equal(
        a.sweeps.begin(), a.sweeps.end(), b.sweeps.begin(), b.sweeps.end(),
        [](const Sweep& x, const Sweep& y) { return x.time == y.time && x.levels == y.levels; }));
}

void requireFormerPoints(const SweepReader& reader, const std::vector<double>& before) {
    const std::vector<double>& points = reader.axis().points;
    const std::vector<std::size_t>& former = reader.formerPoints();
    REQUIRE(former.size() == points.size());
    std::size_t old = 0;
    for (std::size_t i = 0; i < former.size(); ++i) {
        if (former[i] != SweepReader::kNewPoint) {
            REQUIRE(former[i] == old && same(points[i], before[old]));
            ++old;
        }
    }
    REQUIRE(old == before.size() && old < points.size());
}

/// @param recording what the same file is as a recording whose first sweep has all hops
void requireLive(const QString& file, const Recording& recording) {
    bool isSpecial = false;
    Recording live;
    try {
        SweepReader reader(
            file, 1, {},
            [&](const rfu::InputError& error) {
                REQUIRE(error.file() == file && error.line() > 0);
                isSpecial = true;
            },
            true);
        std::vector<double> points;
        for (Sweep sweep; reader.next(sweep); points = reader.axis().points) {
            require(sweep, reader,
                    reader.hasFrequencies() ? reader.axis().points.size() : sweep.levels.size());
            if (reader.hasGrown()) {
                requireFormerPoints(reader, points);
                isSpecial = true;
            }
            live.sweeps.push_back(sweep);
        }
        live.axis = reader.axis();
    } catch (const rfu::InputError& error) {
        REQUIRE(isSpecial || recording.failure == error.message());
        return;
    }
    requireAxis(live);
    REQUIRE(isSpecial == recording.failure.has_value());
    if (!isSpecial) {
        requireSame(recording, live);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (packingOf({reinterpret_cast<const char*>(data), size}) != nullptr) {
        return 0;  // see compression.cpp
    }
    static ScratchFile file("sweeps.csv");
    file.write(data, size);
    for (const std::size_t learned : {1U, 4U}) {
        const Recording recording = read(file.path(), learned);
        requireAxis(recording);
        if (!recording.failure) {
            std::string_view text(reinterpret_cast<const char*>(data), size);
            if (recording.cutLine > 0) {
                REQUIRE(text.back() != '\n');
                text = text.substr(0, text.rfind('\n') + 1);
            }
            recording.axis.points.empty() ? requireTraces(recording, text)
                                          : requireHops(recording, text, learned);
        }
        requireSame(recording, read(file.path(), learned));
        if (learned == 1) {
            requireLive(file.path(), recording);
        }
    }
    return 0;
}
