#include "python/units/levels.h"

#include <pybind11/numpy.h>
#include <pybind11/stl.h>
#include <rfUtils/units/HMath.h>
#include <rfUtils/units/calculateUnit.h>

#include <cmath>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "analysis/recordings/recordingLine.h"
#include "analysis/units/levels.h"
#include "analysis/units/prefixMeaning.h"
#include "analysis/units/unitNames.h"
#include "python/support/arrays.h"
#include "python/support/errors.h"
#include "python/support/texts.h"
#include "python/units/namedUnits.h"

namespace rfu::python {

namespace {

using Numbers = py::array_t<double, 0>;
using Singles = py::array_t<float, 0>;

/// Of each element its centre frequency, where the antenna has one.
Antenna antennaAt(const char* hertz, double gain) {
    return {numberAt<double>(hertz) / kHertzPerMegahertz, gain};
}

/// Values in a unit as levels; NaN stays NaN.
class LevelReader {
public:
    explicit LevelReader(const Unit& unit) : unit_(unit), isLevel_(nameOf(unit) == "dBm") {}

    double operator()(double value, const Antenna& antenna) {
        if (isLevel_ || std::isnan(value)) {
            return value;
        }
        const std::string problem = whyNoLevel(unit_, value);
        require(problem.empty(), problem);
        return entryLevel(math_, unit_, value, antenna);
    }

private:
    const Unit& unit_;
    bool isLevel_;
    HMath math_;
};

/// Calls use(level, antenna) with the level of each value.
/// @param centers Hz, of the same shape; of no effect where `isField` is false
template <typename Number, typename Use>
void forEachLevel(const ReadArray& values, const ReadArray& centers, const Unit& from, bool isField,
                  double gain, Use use) {
    LevelReader read(from);
    forEachPair(values, centers, [&](const char* value, const char* center) {
        const Antenna antenna = isField ? antennaAt(center, gain) : Antenna{std::nullopt, gain};
        use(read(static_cast<double>(numberAt<Number>(value)), antenna), antenna);
    });
}

/// What happens to each level; without the lock of the interpreter.
template <typename Use>
void forEachLevel(const py::array& values, const Numbers& centers, const Unit& from, bool isField,
                  double gain, Use use) {
    if (py::isinstance<Singles>(values)) {
        const Singles singles(values);
        const ReadArray read(singles);
        const py::gil_scoped_release unlocked;
        forEachLevel<float>(read, ReadArray(centers), from, isField, gain, use);
    } else {
        const Numbers numbers(values);
        const ReadArray read(numbers);
        const py::gil_scoped_release unlocked;
        forEachLevel<double>(read, ReadArray(centers), from, isField, gain, use);
    }
}

/// Where levels are shown in a unit. A presenter is made anew only where the antenna changes.
class Presenters {
public:
    explicit Presenters(const Unit& unit) : unit_(unit) {}

    LevelPresenter& at(const Antenna& antenna) {
        if (!presenter_ || antenna.center != antenna_.center) {
            presenter_.emplace(unit_, antenna);
            antenna_ = antenna;
        }
        return *presenter_;
    }

private:
    const Unit& unit_;
    Antenna antenna_;
    std::optional<LevelPresenter> presenter_;
};

Numbers converted(const py::array& values, const Numbers& centers, bool isField,
                  const std::string& to, const std::string& from, double gain) {
    const Unit& source = readUnit(from);
    const Unit& target = shownUnit(to);
    py::array_t<double> result(
        std::vector<py::ssize_t>(values.shape(), values.shape() + values.ndim()));
    double* out = result.mutable_data();
    Presenters presenters(target);
    forEachLevel(values, centers, source, isField, gain, [&](double level, const Antenna& antenna) {
        *out++ = presenters.at(antenna).value(level);
    });
    return result;
}

Numbers levels(const py::array& values, const Numbers& centers, bool isField,
               const std::string& from, double gain) {
    const Unit& source = readUnit(from);
    py::array_t<double> result(
        std::vector<py::ssize_t>(values.shape(), values.shape() + values.ndim()));
    double* out = result.mutable_data();
    forEachLevel(values, centers, source, isField, gain,
                 [&](double level, const Antenna&) { *out++ = level; });
    return result;
}

/// The texts, and the meaning of the first one that leaves out a large prefix.
py::tuple texts(const py::array& values, const Numbers& centers, bool isField,
                const std::string& unit, double gain) {
    const Unit& target = shownUnit(unit);
    std::vector<std::string> shown;
    std::string meaning;
    Presenters presenters(target);
    forEachLevel(values, centers, *unitToRead("dBm").unit, isField, gain,
                 [&](double level, const Antenna& antenna) {
                     LevelPresenter& presenter = presenters.at(antenna);
                     shown.push_back(presenter.text(level));
                     if (meaning.empty()) {
                         meaning = prefixMeaning(presenter, level, shown.back());
                     }
                 });
    return py::make_tuple(std::move(shown), std::move(meaning));
}

/// A text such as "2.5 mV": its number and unit.
py::tuple entry(const std::string& text) {
    const Entry read = splitEntry(text);
    require(read.refusal.empty(), read.refusal);
    return py::make_tuple(read.value, std::string(read.unit.empty() ? "dBm" : read.unit));
}

const Scale& scaleAt(int index) {
    const Scale* const scale = findScale(index);
    require(scale != nullptr, "there is no scale " + std::to_string(index) + "; scales are 0 to " +
                                  std::to_string(std::size(kScales) - 1));
    return *scale;
}

py::tuple unitOfScale(int index) {
    const Scale& scale = scaleAt(index);
    return py::make_tuple(nameOf(*scale.unit), scale.unit->needsAntenna(),
                          scale.toDbm.formula != ToDbm::None);
}

Numbers fromScale(const py::array& values, const Numbers& centers, int index, double gain) {
    const Unit& unit = *scaleAt(index).unit;
    py::array_t<double> result(
        std::vector<py::ssize_t>(values.shape(), values.shape() + values.ndim()));
    double* out = result.mutable_data();
    const Numbers numbers(values);
    const ReadArray read(numbers);
    const py::gil_scoped_release unlocked;
    forEachPair(read, ReadArray(centers), [&](const char* place, const char* center) {
        const auto value = numberAt<double>(place);
        const std::string problem = whyNoLevel(unit, value);
        require(problem.empty(), problem);
        actOtherScale2dBm(value, numberAt<double>(center) / kHertzPerMegahertz, index, gain,
                          *out++);
    });
    return result;
}

const char* shownBy(const ListedUnit& unit) {
    if (unit.row == nullptr || unit.row->isPrefixed()) {
        return "prefix";
    }
    return unit.row->canBeShown() ? "name" : "no";
}

py::list listedUnits() {
    py::list units;
    for (const ListedUnit& unit : allUnits()) {
        units.append(py::make_tuple(textOf(unit.name), textOf(unit.like.traits().name.toString()),
                                    shownBy(unit), unit.row != nullptr && unit.row->canBeRead(),
                                    unit.like.needsAntenna()));
    }
    return units;
}

}  // namespace

void addLevels(py::module_& module) {
    module.def("convert", &converted);
    module.def("levels", &levels);
    module.def("texts", &texts);
    module.def("entry", &entry);
    module.def("scale_unit", &unitOfScale);
    module.def("from_scale", &fromScale);
    module.def("units", &listedUnits);
    module.def("needs_antenna_to_show",
               [](const std::string& name) { return shownUnit(name).needsAntenna(); });
    module.def("needs_antenna_to_read",
               [](const std::string& name) { return readUnit(name).needsAntenna(); });
}

}  // namespace rfu::python
