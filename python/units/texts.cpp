#include "python/units/texts.h"

#include <pybind11/numpy.h>
#include <pybind11/stl.h>
#include <rfUtils/presentation/rangeTypes.h>
#include <rfUtils/presentation/rfUtils.h>

#include <optional>
#include <string>
#include <vector>

#include "analysis/recordings/recordingLine.h"
#include "analysis/support/inputError.h"
#include "analysis/support/numbers.h"
#include "python/support/arrays.h"
#include "python/support/errors.h"
#include "python/support/texts.h"

namespace rfu::python {

namespace {

using Numbers = py::array_t<double, 0>;

/// The text of each frequency, in the order of C.
/// @param textOf of a number of MHz
template <typename Text>
std::vector<std::string> textOfEach(const Numbers& hertz, Text textOf) {
    const ReadArray numbers(hertz);
    std::vector<std::string> texts;
    const py::gil_scoped_release unlocked;
    forEachPair(numbers, numbers, [&](const char* number, const char*) {
        texts.push_back(textOf(numberAt<double>(number) / kHertzPerMegahertz));
    });
    return texts;
}

std::vector<std::string> frequencyTexts(const Numbers& hertz) {
    rfUtils presentation;
    return textOfEach(hertz,
                      [&](double frequency) { return presentation.makeFrequencyUnit(frequency); });
}

std::vector<std::string> widthTexts(const Numbers& hertz) {
    rfUtils presentation;
    return textOfEach(hertz, [&](double width) {
        return presentation.convertFreqWidthUnit(width).toStdString();
    });
}

double frequency(const std::string& text) {
    const auto megahertz = parseFrequency(text);
    require(megahertz.has_value(), rfu::quoted(text) + " is not a frequency such as 88.1MHz");
    return *megahertz * kHertzPerMegahertz;
}

/// @param megahertz of the antenna, where it is needed
std::string rangeText(double min, double max, int type, std::optional<double> megahertz,
                      double gain) {
    rfUtils presentation;
    presentation.fCenter = megahertz.value_or(0.0);
    presentation.fGain = gain;
    return presentation.makeBoundaryMsg(max, min, type);
}

std::string limitsText(double min, double max, int type, std::optional<double> centerHz,
                       double gain) {
    require(min <= max, "the lower limit is above the upper one");
    const RangeType row = rangeType(kDoubleRangeTypes, type);
    require(row.text != LimitText::Frequency,
            "limits of type " + std::to_string(type) + " are frequencies: frequency_range_text");
    const Unit* const unit = row.convertedUnit();
    require(
        unit == nullptr || !unit->needsAntenna() || centerHz,
        "type " + std::to_string(type) + " needs the centre frequency of the antenna: center_hz");
    return rangeText(min, max, type,
                     centerHz ? std::optional(*centerHz / kHertzPerMegahertz) : std::nullopt, gain);
}

std::string wholeLimitsText(int min, int max, int type) {
    require(min <= max, "the lower limit is above the upper one");
    return rfUtils().makeBoundaryMsg(max, min, type);
}

std::string frequencyLimitsText(double minHz, double maxHz) {
    require(minHz <= maxHz, "the lower limit is above the upper one");
    constexpr int kFrequencies = 0;
    return rangeText(minHz / kHertzPerMegahertz, maxHz / kHertzPerMegahertz, kFrequencies,
                     std::nullopt, 0.0);
}

py::tuple toDms(double degrees) {
    short sign = 0;
    double whole = 0.0;
    double minutes = 0.0;
    double seconds = 0.0;
    rfUtils::convertDmsFromDd(degrees, sign, whole, minutes, seconds);
    return py::make_tuple(sign, static_cast<long long>(whole), static_cast<long long>(minutes),
                          static_cast<long long>(seconds));
}

double fromDms(int sign, double degrees, double minutes, double seconds) {
    double result = 0.0;
    rfUtils::convertDdFromDms(static_cast<short>(sign), degrees, minutes, seconds, result);
    return result;
}

}  // namespace

void addTexts(py::module_& module) {
    module.def("frequency_texts", &frequencyTexts);
    module.def("width_texts", &widthTexts);
    module.def("frequency", &frequency);
    module.def("range_text", &limitsText);
    module.def("whole_range_text", &wholeLimitsText);
    module.def("frequency_range_text", &frequencyLimitsText);
    module.def("to_dms", &toDms);
    module.def("from_dms", &fromDms);
}

}  // namespace rfu::python
