// The reader of recordings behind `rfutils trace`. Holds for any bytes:
// - reading ends, at the end of the file or with a failure of status 1 that names the file;
// - every level is -999, for none, or lies between -999 and 999;
// - the sweeps of a recording have as many levels each as its frequency axis has points, or as its
//   first trace has levels; the axis is finite and ends above its first point;
// - a recording without frequencies gives one trace for each line that is not blank, with the
// numbers
//   that strtod reads;
// - reading again gives the same.
#include "support/input.h"
#include "support/mapText.h"
#include "support/require.h"
#include "support/scratchFile.h"

#include "support/errors.h"
#include "trace/sweepReader.h"

#include <cmath>
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

std::vector<double> levelsOf(const std::string& line) {
    std::vector<double> levels;
    std::string rest = line + ',';
    while (!rest.empty()) {
        const std::size_t comma = rest.find(',');
        const std::string field = trimmedText(rest.substr(0, comma));
        rest.erase(0, comma + 1);
        const double level = field.empty() ? -999.0 : std::strtod(field.c_str(), nullptr);
        levels.push_back(std::isfinite(level) ? level : -999.0);
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
    if (recording.points.empty() && !recording.failure) {
        requireTraces(recording, {reinterpret_cast<const char*>(data), size});
    }
    requireSame(recording, read(file.path()));
    return 0;
}
