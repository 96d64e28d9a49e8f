#include <rfUtils/units/calculateUnit.h>

#include <iterator>

#include "analysis/support/numbers.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/kinds.h"
#include "support/output.h"
#include "support/tableWriter.h"
#include "support/units.h"
#include "support/values.h"

namespace rfu::command {

namespace {

const rfu::Scale& scaleAt(int index) {
    const rfu::Scale* const scale = rfu::findScale(index);
    if (scale == nullptr) {
        throw Failure{"there is no scale " + std::to_string(index) + "; scales are 0 to " +
                      std::to_string(std::size(rfu::kScales) - 1)};
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

    const auto convert = [&](double value) {
        if (!toDbm) {
            return presenter.value(value);
        }
        requireLevel(unit, value);
        double dBm = 0.0;
        actOtherScale2dBm(value, antenna.center.value_or(kUnusedCenter), index, antenna.gain, dBm);
        return dBm;
    };
    const std::string unitShown = toDbm ? "dBm" : presenter.unitName();

    if (line.format() == Format::Text) {
        Output& output = standardOutput();
        forEachValue(line.texts("VALUE"), [&](std::string_view text) {
            output.write(ShortestText(convert(readNumber(text))).view());
            output.write(' ');
            output.write(unitShown);
            output.write('\n');
        });
        return;
    }
    TableWriter table(standardOutput(), line.format(), {"input", "scale", "value", "unit"});
    forEachValue(line.texts("VALUE"), [&](std::string_view text) {
        const double value = convert(readNumber(text));
        table.text(trimmed(text)).integer(index).number(value).text(unitShown);
    });
    table.finish();
}

}  // namespace

// clang-format off
constexpr Subcommand kScale = {
    "scale", "Convert between dBm and a numeric scale",
    "Convert levels in dBm to one of the sixteen numeric scales or, with --to-dbm, back, at full "
    "precision. Without VALUE, values are read from standard input, one per line.\n"
    "  0 dBm      4 V        8 dBV/m    12 dBW/m^2\n"
    "  1 dBV      5 W        9 V/m      13 A/m\n"
    "  2 dBmV     6 dBuV/m  10 W/m^2    14 dBA/m\n"
    "  3 dBuV     7 dBmV/m  11 dBm/m^2  15 W/cm^2\n"
    "Scales from 6 refer to an antenna; its correction is rounded to single precision. Scale 5 "
    "comes back by the formula of the volt, so that 0 dBm gives 0.001 W and 0.001 W gives "
    "-46.9897 dBm. Scale 9 has no way back.",
    {{"INDEX", Kind::Integer}, {"VALUE", Kind::Text, 0, kAnyCount}},
    {{"to-dbm", "", Kind::Flag, "From the scale to dBm."},
     kCenterOption,
     kGainOption},
    {"rfutils scale 3 -30",
     "rfutils scale 4 1 --to-dbm",
     "rfutils scale 6 -30 --center 1GHz --gain 2",
     "rfutils scale 5 0 30 --format json"},
    runScale};
// clang-format on

}  // namespace rfu::command
