#include <rfUtils/units/calculateUnit.h>

#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/support/numbers.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/kinds.h"
#include "support/output.h"
#include "support/table.h"
#include "support/units.h"
#include "support/values.h"

namespace rfu::command {

namespace {

const rfu::Scale& scaleAt(int index) {
    const rfu::Scale* const scale = rfu::findScale(index);
    if (scale == nullptr) {
        throw UsageError("there is no scale " + std::to_string(index) + "; scales are 0 to " +
                         std::to_string(std::size(rfu::kScales) - 1));
    }
    return *scale;
}

void runScale(const CommandLine& line) {
    const int index = line.value<int>("INDEX");
    const rfu::Scale& scale = scaleAt(index);
    const rfu::Unit& unit = *scale.unit;
    const bool toDbm = line.isSet("to-dbm");
    if (toDbm && scale.toDbm.formula == rfu::ToDbm::None) {
        throw Failure{"scale " + std::to_string(index) + " (" + nameOf(unit) +
                      ") has no way back to dBm; rfutils convert reads " + nameOf(unit)};
    }
    const Antenna antenna = antennaOf(line);
    const LevelPresenter presenter(unit, antenna);

    const std::string unitShown = toDbm ? "dBm" : presenter.unitName();

    struct Converted {
        std::string_view input;
        double value;
    };
    const auto convert = [&](std::string_view text) {
        const double value = readNumber(text);
        if (!toDbm) {
            return Converted{trimmed(text), presenter.value(value)};
        }
        requireLevel(unit, value);
        double dBm = 0.0;
        actOtherScale2dBm(value, antenna.center.value_or(kUnusedCenter), index, antenna.gain, dBm);
        return Converted{trimmed(text), dBm};
    };
    const auto show = [&](const Converted& converted) {
        standardOutput().write(ShortestText(converted.value).view());
        standardOutput().write(" " + unitShown + "\n");
    };
    answerValues<Converted>(line.texts("VALUE"), line.format(), convert, show,
                            {{"input", [](const Converted& c) { return c.input; }},
                             {"scale", [&](const Converted&) { return index; }},
                             {"value", [](const Converted& c) { return c.value; }},
                             {"unit", [&](const Converted&) { return Cell(unitShown); }}});
}

std::vector<std::string> scales() {
    std::vector<std::string> names;
    for (const rfu::Scale& scale : rfu::kScales) {
        names.push_back((names.size() < 10 ? " " : "") + std::to_string(names.size()) + ' ' +
                        nameOf(*scale.unit));
    }
    return names;
}

}  // namespace

// clang-format off
constexpr Subcommand kScale = {
    "scale", "Convert between dBm and a numeric scale",
    "Convert levels in dBm to a numeric scale or, with --to-dbm, back, at full precision. Without "
    "VALUE, values are read from standard input, one per line.\n"
    "Fields refer to an antenna; its correction is rounded to single precision. Scale 5 comes back "
    "by the formula of the volt, so that 0 dBm gives 0.001 W and 0.001 W gives -46.9897 dBm. Scale "
    "9 has no way back. The scales:",
    {{"INDEX", Kind::Code}, {"VALUE", Kind::Text, 0, kAnyCount}},
    {{"to-dbm", "", Kind::Flag, "From the scale to dBm."},
     kCenterOption,
     kGainOption},
    {"rfutils scale 3 -30",
     "rfutils scale 4 1 --to-dbm",
     "rfutils scale 6 -30 --center 1GHz --gain 2",
     "rfutils scale 5 0 30 --format json"},
    runScale,
    scales};
// clang-format on

}  // namespace rfu::command
