// The reader of recordings behind `rfutils trace`. Holds for any bytes:
// - reading ends, at the end of the file or with a failure of status 1 that names the file;
// - every level is -999, for none, or lies between -999 and 999;
// - the sweeps of a recording have as many levels each as its frequency axis has points, or as its
//   first trace has levels; the axis is finite and ends above its first point;
// - a recording without frequencies gives one trace for each line that is not blank, with the
// numbers
//   that strtod reads;
// - the first sweep of one with frequencies is what stands in its lines up to the first hop that
//   comes again, in order of frequency;
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

std::vector<double> joined(const std::map<double, std::vector<double>>& parts) {
    std::vector<double> whole;
    for (const auto& [low, part] : parts) {
        whole.insert(whole.end(), part.begin(), part.end());
    }
    return whole;
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

/// Of a recording with frequencies that has been read to its end.
void requireFirstSweep(const Recording& recording, std::string_view file) {
    constexpr std::size_t kHead = 6;  // fields before the levels
    std::map<double, std::vector<double>> levels;
    std::map<double, std::vector<double>> points;
    for (const std::string& line : linesOf(file, file.size())) {
        if (trimmedText(line).empty()) {
            continue;
        }
        const std::vector<std::string> fields = fieldsOf(line);
        const double low = std::strtod(fields[2].c_str(), nullptr);
        const double high = std::strtod(fields[3].c_str(), nullptr);
        const double step = std::strtod(fields[4].c_str(), nullptr);
        if (levels.count(low) > 0) {
            break;
        }
        const auto count = static_cast<std::size_t>(std::llround((high - low) / step));
        REQUIRE(fields.size() >= kHead + count);
        for (std::size_t i = 0; i < count; ++i) {
            levels[low].push_back(levelOf(fields[kHead + i]));
            points[low].push_back((low + static_cast<double>(i) * step) / 1e6);
        }
    }
    REQUIRE(recording.sweeps.at(0).levels == joined(levels));
    REQUIRE(recording.points == joined(points));
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
        recording.points.empty() ? requireTraces(recording, text)
                                 : requireFirstSweep(recording, text);
    }
    requireSame(recording, read(file.path()));
    return 0;
}
