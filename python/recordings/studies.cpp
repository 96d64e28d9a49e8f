#include "python/recordings/studies.h"

#include <pybind11/stl.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "analysis/recordings/markers.h"
#include "analysis/recordings/stateFile.h"
#include "analysis/statistics/noiseFloor.h"
#include "analysis/statistics/sweepStore.h"
#include "analysis/studies/occupancyStudy.h"
#include "analysis/studies/powerStudy.h"
#include "analysis/studies/signalStudy.h"
#include "analysis/studies/stateSettings.h"
#include "python/recordings/source.h"
#include "python/support/arrays.h"
#include "python/support/errors.h"
#include "python/support/texts.h"
#include "python/units/namedUnits.h"

namespace rfu::python {

namespace {

using Files = std::vector<py::bytes>;
using Notes = std::vector<std::string>;

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

StateSet statesOf(const Files& files) {
    QStringList names;
    for (const py::bytes& file : files) {
        names.push_back(fileOf(file));
    }
    require(!files.empty(), "there is no state to merge");
    return StateSet(names);
}

/// Columns of a table, each under its name.
class Columns {
public:
    std::vector<double>& numbers(const char* name) { return numbers_[name]; }
    std::vector<std::int64_t>& integers(const char* name) { return integers_[name]; }
    std::vector<std::int64_t>& times(const char* name) { return times_[name]; }

    /// Number of names to arrays; times are datetime64 later.
    py::dict taken() {
        py::dict columns;
        for (auto& [name, column] : numbers_) {
            columns[name.c_str()] = arrayOf(std::move(column));
        }
        for (auto& [name, column] : integers_) {
            columns[name.c_str()] = arrayOf(std::move(column));
        }
        for (auto& [name, column] : times_) {
            columns[name.c_str()] = arrayOf(std::move(column)).attr("view")("M8[us]");
        }
        return columns;
    }

private:
    std::map<std::string, std::vector<double>> numbers_;
    std::map<std::string, std::vector<std::int64_t>> integers_;
    std::map<std::string, std::vector<std::int64_t>> times_;
};

/// A state while it is made.
class StateBytes {
public:
    StateBytes() { beginState(writer_); }

    StateWriter& writer() { return writer_; }
    py::bytes finish(const StateHead& head) {
        finishState(writer_, head);
        return py::bytes(bytes_);
    }

private:
    std::string bytes_;
    StateWriter writer_{[this](std::string_view bytes) { bytes_ += bytes; }};
};

py::dict headOf(const StateHead& head) {
    py::dict facts;
    facts["command"] = textOf(head.command);
    py::list settings;
    for (const StateSetting& setting : head.settings) {
        settings.append(py::make_tuple(textOf(setting.name), textOf(setting.value)));
    }
    facts["settings"] = settings;
    facts["points"] = head.points;
    facts["sweeps"] = head.sweeps;
    facts["first_time"] = unixTimeOf(head.firstTime);
    facts["last_time"] = unixTimeOf(head.lastTime);
    return facts;
}

double orNone(const std::optional<double>& number) {
    return number.value_or(kNone);
}

/// The signals of a recording or of states.
class Signals {
public:
    Notes read(const Source& source) {
        Notes notes;
        const py::gil_scoped_release unlocked;
        Recording recording(source.noting(notes));
        study_.read(recording);
        return notes;
    }
    void merge(const Files& files) {
        const StateSet states = statesOf(files);
        const py::gil_scoped_release unlocked;
        study_.merge(states);
    }

    py::dict find(std::optional<double> above, double widthAt, long long window,
                  const std::vector<std::pair<std::optional<double>, double>>& spursHz) {
        require(above.value_or(1.0) > 0.0 && widthAt > 0.0,
                "above_db and width_at_db are above zero");
        require(window >= static_cast<long long>(kMinWindow) && window <= 1000000,
                "window takes 5 to 1000000 points");
        std::vector<NamedSpur> spurs;
        for (const auto& [frequency, width] : spursHz) {
            require(width > 0.0, "the width of a spur is above zero");
            const auto megahertz =
                frequency ? std::optional(*frequency / kHertzPerMegahertz) : std::nullopt;
            spurs.push_back({{megahertz, width / kHertzPerMegahertz},
                             (megahertz ? shortest(*megahertz) + "MHz" : "hops") + ":" +
                                 shortest(width / kHertzPerMegahertz) + "MHz"});
        }
        Columns columns;
        {
            const py::gil_scoped_release unlocked;
            addSignals(study_.find(spurs, {above, widthAt, static_cast<std::size_t>(window)}),
                       columns);
        }
        return columns.taken();
    }

    double resolution() const { return study_.resolution(); }
    FrequencyAxis axis() const { return study_.head().axis; }
    py::dict head() const { return headOf(study_.head()); }
    py::bytes state() const {
        StateBytes state;
        study_.write(state.writer());
        return state.finish(study_.head());
    }

private:
    static void addSignals(const std::vector<Signal>& signals, Columns& columns) {
        auto& frequencies = columns.numbers("frequency_hz");
        auto& widths = columns.numbers("width_hz");
        auto& points = columns.integers("point");
        auto& maxima = columns.numbers("maximum");
        auto& averages = columns.numbers("average");
        auto& floors = columns.numbers("floor");
        auto& above = columns.numbers("above");
        auto& present = columns.numbers("present");
        auto& first = columns.times("first");
        auto& last = columns.times("last");
        for (const Signal& signal : signals) {
            frequencies.push_back(signal.frequency * kHertzPerMegahertz);
            widths.push_back(signal.width * kHertzPerMegahertz);
            points.push_back(static_cast<std::int64_t>(signal.point));
            maxima.push_back(signal.maximum);
            averages.push_back(signal.average);
            floors.push_back(signal.floor);
            above.push_back(signal.maximum - signal.floor);
            present.push_back(signal.present);
            first.push_back(unixTimeOf(signal.first));
            last.push_back(unixTimeOf(signal.last));
        }
    }

    SignalStudy study_;
};

/// How busy channels are.
class Occupancies {
public:
    /// @param channels low and step in Hz, and how many
    Occupancies(std::optional<std::pair<double, std::string>> limit,
                const std::optional<double>& centerHz, const std::optional<double>& gain,
                double above, long long window,
                const std::optional<std::tuple<double, double, int>>& channelsHz,
                const std::optional<double>& widthHz, bool isByHour)
        : study_(questionOf(std::move(limit), centerHz, gain, above, window, channelsHz, widthHz,
                            isByHour)) {}
    explicit Occupancies(const Files& files) : Occupancies(statesOf(files), std::nullopt) {}

    Notes read(const Source& source) {
        Notes notes;
        const py::gil_scoped_release unlocked;
        Recording recording(source.noting(notes));
        study_.read(recording);
        return notes;
    }

    py::dict channels() const {
        Columns columns;
        auto& hours = columns.integers("hour");
        auto& low = columns.numbers("from_hz");
        auto& high = columns.numbers("to_hz");
        auto& samples = columns.integers("samples");
        auto& occupied = columns.integers("occupied");
        auto& shares = columns.numbers("occupancy");
        auto& lowShares = columns.numbers("low");
        auto& highShares = columns.numbers("high");
        for (const auto& [hour, counts] : study_.counts()) {
            for (std::size_t i = 0; i < counts.channels.size(); ++i) {
                const OccupancyCount& count = counts.channels[i];
                const FrequencyRange& range = study_.channels()[i].range;
                const bool isKnown = count.samples > 0;
                const ShareInterval interval =
                    isKnown ? wilsonInterval(count) : ShareInterval{kNone, kNone};
                hours.push_back(hour);
                low.push_back(range.low * kHertzPerMegahertz);
                high.push_back(range.high * kHertzPerMegahertz);
                samples.push_back(count.samples);
                occupied.push_back(count.occupied);
                shares.push_back(isKnown ? count.share() : kNone);
                lowShares.push_back(interval.low);
                highShares.push_back(interval.high);
            }
        }
        return columns.taken();
    }

    py::dict band() const {
        Columns columns;
        for (const auto& [hour, counts] : study_.counts()) {
            columns.integers("hour").push_back(hour);
            columns.numbers("from_hz").push_back(study_.band().low * kHertzPerMegahertz);
            columns.numbers("to_hz").push_back(study_.band().high * kHertzPerMegahertz);
            columns.integers("channels")
                .push_back(static_cast<std::int64_t>(counts.measuredChannels()));
            columns.integers("samples").push_back(counts.cells.samples);
            columns.numbers("fbo").push_back(counts.cells.samples > 0 ? counts.cells.share()
                                                                      : kNone);
            columns.numbers("sro").push_back(counts.measuredChannels() > 0 ? counts.resourceShare()
                                                                           : kNone);
            columns.numbers("threshold").push_back(counts.meanThreshold());
        }
        return columns.taken();
    }

    std::vector<std::string> remarks() const {
        std::vector<std::string> texts;
        for (const ChannelRemark& remark : study_.remarks()) {
            for (const FrequencyRange& range : remark.channels) {
                texts.push_back(rangeText(range) + ": " + remark.what);
            }
        }
        return texts;
    }

    int parts() const { return study_.parts(); }
    FrequencyAxis axis() const { return study_.head().axis; }
    py::dict head() const { return headOf(study_.head()); }
    py::bytes state() const {
        StateBytes state;
        study_.write(state.writer());
        return state.finish(study_.head());
    }

private:
    Occupancies(const StateSet& states, std::nullopt_t)
        : study_(OccupancyQuestion::of(states.head(), states.files().first())) {
        const py::gil_scoped_release unlocked;
        study_.merge(states);
    }

    static OccupancyQuestion questionOf(
        std::optional<std::pair<double, std::string>> limit, const std::optional<double>& centerHz,
        const std::optional<double>& gain, double above, long long window,
        const std::optional<std::tuple<double, double, int>>& channelsHz,
        const std::optional<double>& widthHz, bool isByHour) {
        OccupancyQuestion question;
        if (limit) {
            const Unit& unit = readUnit(limit->second);
            const std::string problem = whyNoLevel(unit, limit->first);
            require(problem.empty(), problem);
            question.limit = {
                limit->first, &unit,
                centerHz ? std::optional(*centerHz / kHertzPerMegahertz) : std::nullopt, gain};
        }
        if (channelsHz) {
            const auto& [low, step, count] = *channelsHz;
            require(low >= 0.0 && step > 0.0 && count >= 1 && count <= 1000000,
                    "channels are where the first one begins, a distance above zero, and 1 to "
                    "1000000 of them");
            question.channels = {low / kHertzPerMegahertz, step / kHertzPerMegahertz, count};
        }
        if (widthHz) {
            require(*widthHz > 0.0, "channel_width_hz is above zero");
            question.channelWidth = *widthHz / kHertzPerMegahertz;
        }
        require(window >= static_cast<long long>(kMinWindow) && window <= 1000000,
                "window takes 5 to 1000000 points");
        question.counting.above = above;
        question.counting.window = static_cast<std::size_t>(window);
        question.counting.isByHour = isByHour;
        return question;
    }

    OccupancyStudy study_;
};

/// Powers in channels, the mean or sweep by sweep.
class Powers {
public:
    Powers(const std::vector<std::pair<double, double>>& channelsHz,
           const std::optional<double>& spacingHz, double percent, double enbw, bool isSeries)
        : study_(questionOf(channelsHz, spacingHz, percent, enbw)), isSeries_(isSeries) {}
    explicit Powers(const Files& files) : Powers(statesOf(files), std::nullopt) {}

    Notes read(const Source& source) {
        Notes notes;
        const py::gil_scoped_release unlocked;
        Recording recording(source.noting(notes));
        const auto add = [this](long long sweep, const std::string& time,
                                const SweepFigures& figures) {
            writeSweep(state_.writer(), time, figures);
            addRows(sweep, time, figures);
        };
        study_.read(
            recording, [] {}, isSeries_ ? add : PowerStudy::OnSweep());
        if (!isSeries_) {
            addRows(0, {}, study_.means());
        }
        finish();
        return notes;
    }

    /// To be called once.
    py::dict rows() { return columns_.taken(); }
    std::vector<std::string> remarks() const {
        std::vector<std::string> texts;
        const std::vector<ChannelNotes> notes = study_.notes();
        for (std::size_t i = 0; i < notes.size(); ++i) {
            const char* const what = !notes[i].isCovered    ? "lies beyond the recording"
                                     : !notes[i].isMeasured ? "no sweep measured all points there"
                                     : notes[i].hasHopBorder
                                         ? "the receiver's hops meet within, and its roll-off "
                                           "there is not corrected"
                                         : nullptr;
            if (what != nullptr) {
                texts.push_back(rangeText(study_.channels()[i].range) + ": " + what);
            }
        }
        return texts;
    }
    py::bytes state() const { return stateBytes_; }
    py::dict head() const { return headOf(study_.head()); }

private:
    Powers(const StateSet& states, std::nullopt_t)
        : study_(PowerQuestion::of(states.head(), states.files().first())), isSeries_(true) {
        study_.merge(states,
                     [this](long long sweep, const std::string& time, const SweepFigures& figures) {
                         writeSweep(state_.writer(), time, figures);
                         addRows(sweep, time, figures);
                     });
        finish();
    }

    static PowerQuestion questionOf(const std::vector<std::pair<double, double>>& channelsHz,
                                    const std::optional<double>& spacingHz, double percent,
                                    double enbw) {
        PowerQuestion question;
        for (const auto& [low, high] : channelsHz) {
            require(low >= 0.0 && high > low, "a channel is two frequencies, the lower one first");
            question.asked.push_back({low / kHertzPerMegahertz, high / kHertzPerMegahertz});
        }
        require(!channelsHz.empty(), "a channel is missing");
        if (spacingHz) {
            require(*spacingHz > 0.0, "spacing_hz is above zero");
            question.spacing = *spacingHz / kHertzPerMegahertz;
        }
        require(percent >= 50.0 && percent < 100.0, "percent takes 50 to less than 100");
        require(enbw > 0.0, "enbw_bins is above zero");
        question.percent = percent;
        question.enbw = enbw;
        return question;
    }

    void addRows(long long sweep, const std::string& time, const SweepFigures& figures) {
        for (std::size_t i = 0; i < figures.size(); ++i) {
            const StudiedChannel& channel = study_.channels()[i];
            const auto& own = figures[i];
            const auto& asked = figures[channel.asked];
            columns_.integers("sweep").push_back(sweep);
            columns_.times("time").push_back(unixTimeOf(time));
            columns_.numbers("from_hz").push_back(channel.range.low * kHertzPerMegahertz);
            columns_.numbers("to_hz").push_back(channel.range.high * kHertzPerMegahertz);
            columns_.numbers("power").push_back(own ? own->power : kNone);
            columns_.numbers("occupied_from_hz")
                .push_back(own ? own->occupied.low * kHertzPerMegahertz : kNone);
            columns_.numbers("occupied_to_hz")
                .push_back(own ? own->occupied.high * kHertzPerMegahertz : kNone);
            columns_.numbers("relative_db")
                .push_back(own && asked ? own->power - asked->power : kNone);
        }
    }

    void finish() {
        const py::gil_scoped_acquire locked;
        if (isSeries_) {
            writeNotes(state_.writer(), study_.notes());
            stateBytes_ = state_.finish(study_.head());
        }
    }

    PowerStudy study_;
    bool isSeries_;
    Columns columns_;
    StateBytes state_;
    py::bytes stateBytes_;
};

/// Markers as they are asked for: frequencies in Hz, then numbers of points.
using Marks = std::pair<std::vector<double>, std::vector<int>>;

std::vector<MarkerRequest> requestsOf(const Marks& marks) {
    std::vector<MarkerRequest> requests;
    for (const double frequencyHz : marks.first) {
        const double megahertz = frequencyHz / kHertzPerMegahertz;
        requests.push_back({shortest(megahertz) + "MHz", megahertz, std::nullopt});
    }
    for (const int point : marks.second) {
        requests.push_back({"at point " + std::to_string(point), std::nullopt, point});
    }
    return requests;
}

/// The statistics of points: of all, or of markers.
class Points {
public:
    /// @param limit dBm
    /// @param keep how many recent sweeps count; none for all
    /// @param marks where only these points are kept
    Points(std::optional<double> limit, std::optional<std::size_t> keep, bool hasDistributions,
           const std::optional<Marks>& marks)
        : limit_(limit),
          hasDistributions_(hasDistributions),
          requests_(requestsOf(marks.value_or(Marks()))),
          store_(keep.value_or(SweepStore::kAll), hasDistributions, limit.value_or(0.0)) {}
    explicit Points(const Files& files) : Points(statesOf(files), std::nullopt) {}

    Notes read(const Source& source) {
        Notes notes;
        const py::gil_scoped_release unlocked;
        Recording recording(source.noting(notes));
        for (Sweep sweep; recording.next(sweep);) {
            if (head_.sweeps == 0) {
                place(requests_, recording.axis(), sweep.levels.size(), recording.files().first());
            }
            if (!store_.add(sweep.time, keptOf(sweep))) {
                throw recording.error("the levels of " + std::to_string(store_.kept()) +
                                      " sweeps take 1 GiB, the most that is held; keep fewer");
            }
            count(sweep, head_);
        }
        setAxis(recording, head_);
        head_.command = "trace";
        if (limit_) {
            head_.settings = {{"limit", shortest(*limit_)}};
        }
        return notes;
    }

    /// Puts markers on the points of a state.
    /// @param name of the state, for messages
    void mark(const Marks& marks, const py::bytes& name) {
        place(requestsOf(marks), head_.axis, head_.points, fileOf(name));
    }

    /// A row for each marker, without markers for each point.
    py::dict rows() const {
        Columns columns;
        const std::size_t count = markers_.empty() ? head_.points : markers_.size();
        for (std::size_t row = 0; row < count; ++row) {
            const std::size_t number = markers_.empty() ? row : markers_[row];
            const std::size_t column = requests_.empty() ? number : row;
            columns.integers("point").push_back(static_cast<std::int64_t>(number));
            const PointStatistics point = store_.statistics(column);
            columns.integers("count").push_back(point.count);
            columns.integers("above").push_back(point.above);
            columns.numbers("average").push_back(orNone(point.average));
            columns.numbers("maximum").push_back(orNone(point.maximum));
            columns.numbers("minimum").push_back(orNone(point.minimum));
            if (hasDistributions_) {
                const LevelDistribution distribution = store_.distribution(column);
                const auto strongest = distribution.strongest;
                columns.numbers("power_mean").push_back(orNone(distribution.powerMean));
                columns.numbers("median").push_back(orNone(distribution.median));
                columns.numbers("deviation_db").push_back(orNone(distribution.deviation));
                columns.integers("maximum_sweep")
                    .push_back(strongest ? store_.number(*strongest) : 0);
                columns.times("maximum_time")
                    .push_back(strongest ? unixTimeOf(store_.time(*strongest)) : kNotATime);
            }
        }
        return columns.taken();
    }

    FrequencyAxis axis() const { return head_.axis; }
    py::dict head() const { return headOf(head_); }
    py::bytes state() const {
        StateBytes state;
        store_.write(state.writer());
        return state.finish(head_);
    }

private:
    Points(const StateSet& states, std::nullopt_t)
        : Points(SettingReader(states.head(), states.files().first()).number("limit"), std::nullopt,
                 false, std::nullopt) {
        head_ = states.head();
        states.forEach([this](StatePart& part) { store_.merge(part, head_.points); });
    }

    void place(const std::vector<MarkerRequest>& requests, const FrequencyAxis& axis,
               std::size_t points, const QString& file) {
        for (const Marker& marker : placeMarkers(requests, axis, points, file)) {
            markers_.push_back(static_cast<std::size_t>(marker.point));
        }
    }

    const std::vector<double>& keptOf(const Sweep& sweep) {
        if (requests_.empty()) {
            return sweep.levels;
        }
        levelsOfMarkers_.resize(markers_.size());
        std::transform(markers_.begin(), markers_.end(), levelsOfMarkers_.begin(),
                       [&](std::size_t point) { return sweep.levels[point]; });
        return levelsOfMarkers_;
    }

    std::optional<double> limit_;
    bool hasDistributions_;
    std::vector<MarkerRequest> requests_;  // where only markers are kept
    std::vector<std::size_t> markers_;     // their points
    std::vector<double> levelsOfMarkers_;  // of a sweep
    StateHead head_;
    SweepStore store_;
};

/// What is known of a state without its statistics.
py::dict stateHead(const py::bytes& file) {
    return headOf(statesOf({file}).head());
}

}  // namespace

void addStudies(py::module_& module) {
    module.def("state_head", &stateHead);
    py::class_<Signals>(module, "Signals")
        .def(py::init<>())
        .def("read", &Signals::read)
        .def("merge", &Signals::merge)
        .def("find", &Signals::find)
        .def("resolution", &Signals::resolution)
        .def("axis", &Signals::axis)
        .def("head", &Signals::head)
        .def("state", &Signals::state);
    py::class_<Occupancies>(module, "Occupancies")
        .def(py::init<std::optional<std::pair<double, std::string>>, const std::optional<double>&,
                      const std::optional<double>&, double, long long,
                      const std::optional<std::tuple<double, double, int>>&,
                      const std::optional<double>&, bool>())
        .def(py::init<const Files&>())
        .def("read", &Occupancies::read)
        .def("channels", &Occupancies::channels)
        .def("band", &Occupancies::band)
        .def("remarks", &Occupancies::remarks)
        .def("parts", &Occupancies::parts)
        .def("axis", &Occupancies::axis)
        .def("head", &Occupancies::head)
        .def("state", &Occupancies::state);
    py::class_<Powers>(module, "Powers")
        .def(py::init<const std::vector<std::pair<double, double>>&, const std::optional<double>&,
                      double, double, bool>())
        .def(py::init<const Files&>())
        .def("read", &Powers::read)
        .def("rows", &Powers::rows)
        .def("remarks", &Powers::remarks)
        .def("head", &Powers::head)
        .def("state", &Powers::state);
    py::class_<Points>(module, "Points")
        .def(py::init<std::optional<double>, std::optional<std::size_t>, bool,
                      const std::optional<Marks>&>())
        .def(py::init<const Files&>())
        .def("read", &Points::read)
        .def("mark", &Points::mark)
        .def("rows", &Points::rows)
        .def("axis", &Points::axis)
        .def("head", &Points::head)
        .def("state", &Points::state);
}

}  // namespace rfu::python
