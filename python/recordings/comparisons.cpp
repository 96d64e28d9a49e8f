#include "python/recordings/comparisons.h"

#include <pybind11/functional.h>
#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "analysis/recordings/bins.h"
#include "analysis/recordings/recordingWriter.h"
#include "analysis/statistics/comparison.h"
#include "analysis/studies/maskFile.h"
#include "analysis/studies/recordedTrace.h"
#include "analysis/support/inputError.h"
#include "python/recordings/source.h"
#include "python/support/arrays.h"
#include "python/support/errors.h"
#include "python/support/texts.h"
#include "python/units/namedUnits.h"

namespace rfu::python {

namespace {

PointStatistic statisticOf(const std::string& name) {
    for (const NamedStatistic& known : kComparedStatistics) {
        if (name == known.name) {
            return known.statistic;
        }
    }
    throw std::invalid_argument(rfu::quoted(name) + " is not average, maximum, minimum or median");
}

/// A statistic of each point of a recording, and how exact it is.
class PointTrace {
public:
    PointTrace(const Source& source, const std::string& statistic) {
        const PointStatistic wanted = statisticOf(statistic);
        const py::gil_scoped_release unlocked;
        Recording recording(source.noting(notes_));
        PointLevels levels(wanted);
        for (Sweep sweep; recording.next(sweep);) {
            levels.add(sweep);
        }
        file_ = recording.files().first();
        trace_ = {recording.axis(), levels.levels()};
        resolution_ = levels.resolution();
    }

    std::vector<std::string> notes() const { return notes_; }
    FrequencyAxis axis() const { return trace_.axis; }
    py::array_t<double> levels() const { return arrayOf(trace_.levels); }
    double resolution() const { return resolution_; }

    /// The levels of another recording at the points of this one.
    py::array_t<double> bring(const PointTrace& other, bool mayResample) const {
        return arrayOf(levelsAtPointsOf({file_, trace_}, {other.file_, other.trace_}, mayResample,
                                        "resample"));
    }

    /// First, last and largest point of each change.
    std::vector<std::tuple<std::size_t, std::size_t, std::size_t>> changes(
        const std::vector<double>& differences, double above) const {
        require(above > 0.0, "above_db is above zero");
        std::vector<std::tuple<std::size_t, std::size_t, std::size_t>> found;
        for (const LevelChange& change :
             changesAbove(above, differences, firstPointsOf(trace_.axis))) {
            found.emplace_back(change.first, change.last, change.largest);
        }
        return found;
    }

private:
    std::vector<std::string> notes_;
    QString file_;
    LevelTrace trace_;
    double resolution_ = 0.0;
};

/// First, last and worst point of each violation, whether it is of the upper limit, the limit and the margin.
py::list violations(const FrequencyAxis& axis, const std::vector<double>& levels,
                    const py::bytes& maskFile, const std::string& unitName) {
    const MaskFile mask(fileOf(maskFile), shownUnit(unitName));
    const MaskResult result = mask.judge(axis, levels);
    py::list found;
    for (const Violation& violation : result.violations) {
        found.append(py::make_tuple(violation.first, violation.last, violation.worst,
                                    violation.isUpper, violation.limit, violation.margin));
    }
    return found;
}

/// Calls write(bytes) with the lines of a recording, some sweeps at a time.
std::vector<std::string> cut(const Source& source,
                             const std::function<void(const py::bytes& lines)>& write) {
    constexpr std::size_t kBytesAtOnce = 1U << 20U;
    std::vector<std::string> notes;
    RecordingSource used = source.noting(notes);
    used.keepsLines = true;
    const py::gil_scoped_release unlocked;
    Recording recording(used);
    std::optional<RecordingWriter> writer;
    std::string text;
    const auto hand = [&](std::size_t most) {
        if (text.size() > most) {
            const py::gil_scoped_acquire locked;
            write(py::bytes(text));
            text.clear();
        }
    };
    for (Sweep sweep; recording.next(sweep);) {
        if (!writer) {
            writer.emplace(recording, !used.correction.isNone());
        }
        writer->write(sweep, text);
        hand(kBytesAtOnce);
    }
    if (writer) {
        writer->finish(text);
    }
    hand(0);
    return notes;
}

}  // namespace

void addComparisons(py::module_& module) {
    py::class_<PointTrace>(module, "PointTrace")
        .def(py::init<const Source&, const std::string&>())
        .def("notes", &PointTrace::notes)
        .def("axis", &PointTrace::axis)
        .def("levels", &PointTrace::levels)
        .def("resolution", &PointTrace::resolution)
        .def("bring", &PointTrace::bring)
        .def("changes", &PointTrace::changes);
    module.def("require_frequencies", [](const FrequencyAxis& axis, const py::bytes& file) {
        requireFrequencies(axis, fileOf(file));
    });
    module.def("violations", &violations);
    module.def("cut", &cut);
}

}  // namespace rfu::python
