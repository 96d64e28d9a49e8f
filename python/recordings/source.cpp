#include "python/recordings/source.h"

#include <pybind11/stl.h>
#include <rfUtils/trace/traceRssiBuffer.h>

#include <algorithm>
#include <chrono>
#include <limits>
#include <memory>

#include "analysis/recordings/bins.h"
#include "analysis/recordings/timeStamp.h"
#include "analysis/support/inputError.h"
#include "python/support/arrays.h"
#include "python/support/errors.h"
#include "python/support/texts.h"

namespace rfu::python {

namespace {

constexpr std::int64_t kUnixDay = 2440588;  // from the fixed day of stamps

/// Lets Python interrupt a long reading, without asking for its lock too often.
class SignalCheck {
public:
    void operator()(std::size_t) {
        const auto now = std::chrono::steady_clock::now();
        if (now - last_ < std::chrono::milliseconds(100)) {
            return;
        }
        last_ = now;
        const py::gil_scoped_acquire locked;
        if (PyErr_CheckSignals() != 0) {
            throw py::error_already_set();
        }
    }

private:
    std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
};

std::optional<WindowTime> timeOf(const std::optional<std::string>& text) {
    if (!text) {
        return std::nullopt;
    }
    const auto time = parseWindowTime(*text);
    require(time.has_value(), rfu::quoted(*text) +
                                  " is not a time such as \"2024-05-04 21:15\", "
                                  "21:15:30 or, before the end, -10m");
    return time;
}

Source sourceOf(const std::vector<py::bytes>& files,
                const std::vector<std::pair<double, double>>& bandsHz,
                const std::optional<std::string>& start, const std::optional<std::string>& stop,
                long long every, long long last, double offset,
                const std::optional<py::bytes>& correction, bool isStrict) {
    Source source;
    for (const py::bytes& file : files) {
        source.source.files.push_back(fileOf(file));
    }
    require(!files.empty(), "a recording has a file at least");
    for (const auto& [low, high] : bandsHz) {
        require(low >= 0.0 && high > low, "a band is two frequencies, the lower one first");
        source.source.window.bands.push_back({low / kHertzPerMegahertz, high / kHertzPerMegahertz});
    }
    source.source.window.from = timeOf(start);
    source.source.window.to = timeOf(stop);
    require(every >= 1 && last >= 0, "every is 1 or more, last is 0 or more");
    source.source.window.every = every;
    source.source.window.last = last;
    source.source.isStrict = isStrict;
    source.source.correction =
        correction ? LevelCorrection(offset, fileOf(*correction)) : LevelCorrection(offset);
    return source;
}

/// Hands out the sweeps of a recording in pieces.
class Reader {
public:
    explicit Reader(const Source& source) : recording_(source.noting(notes_)) {}
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    /// Times and levels of the next sweeps, None at the end.
    /// @param most sweeps
    template <typename Level>
    py::object read(std::size_t most) {
        std::vector<std::int64_t> times;
        GrowingArray<Level> levels;
        {
            const py::gil_scoped_release unlocked;
            for (Sweep sweep; times.size() < most && recording_.next(sweep);) {
                times.push_back(unixTimeOf(sweep.time));
                std::transform(sweep.levels.begin(), sweep.levels.end(),
                               levels.append(sweep.levels.size()), [](double level) {
                                   return level == traceRssiBuffer::kNoMeasurement
                                              ? std::numeric_limits<Level>::quiet_NaN()
                                              : static_cast<Level>(level);
                               });
            }
        }
        if (times.empty()) {
            return py::none();
        }
        const auto sweeps = static_cast<py::ssize_t>(times.size());
        const auto points = static_cast<py::ssize_t>(levels.size()) / sweeps;
        return py::make_tuple(arrayOf(std::move(times)),
                              levels.release().reshape({sweeps, points}));
    }

    FrequencyAxis axis() const { return recording_.axis(); }
    std::vector<std::string> takeNotes() { return std::exchange(notes_, {}); }

private:
    std::vector<std::string> notes_;
    Recording recording_;
};

std::vector<double> binEndsInHertz(const FrequencyAxis& axis) {
    std::vector<double> ends = binEnds(axis);
    for (double& end : ends) {
        end *= kHertzPerMegahertz;
    }
    return ends;
}

std::vector<std::tuple<std::size_t, double, double>> bandsOf(const FrequencyAxis& axis) {
    std::vector<std::tuple<std::size_t, double, double>> bands;
    for (const FrequencyAxis::Band& band : axis.bands) {
        bands.emplace_back(band.firstPoint, band.low * kHertzPerMegahertz,
                           band.high * kHertzPerMegahertz);
    }
    return bands;
}

}  // namespace

RecordingSource Source::noting(std::vector<std::string>& notes) const {
    RecordingSource used = source;
    used.onNote = [&notes](const InputError& note) { notes.push_back(note.message()); };
    used.waiting.after = SignalCheck();
    return used;
}

std::vector<double> hertzOf(const FrequencyAxis& axis) {
    std::vector<double> frequencies;
    frequencies.reserve(axis.points.size());
    for (const AxisHop& hop : axis.hops) {
        for (std::size_t i = 0; i < hop.bins; ++i) {
            frequencies.push_back(hop.low + static_cast<double>(hop.firstBin + i) * hop.step);
        }
    }
    return frequencies;
}

std::int64_t unixTimeOf(std::string_view stamp) {
    return stamp.empty() ? kNotATime : microsecondsOf(stamp) - kUnixDay * kMicrosecondsPerDay;
}

void addSources(py::module_& module) {
    py::class_<Source>(module, "Source").def(py::init(&sourceOf));
    py::class_<FrequencyAxis>(module, "Axis")
        .def("frequencies_hz", [](const FrequencyAxis& axis) { return arrayOf(hertzOf(axis)); })
        .def("bin_ends_hz", [](const FrequencyAxis& axis) { return arrayOf(binEndsInHertz(axis)); })
        .def("bands_hz", &bandsOf);
    py::class_<Reader>(module, "Reader")
        .def(py::init<const Source&>())
        .def("read", &Reader::read<double>)
        .def("read_singles", &Reader::read<float>)
        .def("axis", &Reader::axis)
        .def("take_notes", &Reader::takeNotes);
}

}  // namespace rfu::python
