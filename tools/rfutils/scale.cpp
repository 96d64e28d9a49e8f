#include <rfUtils/units/calculateUnit.h>

#include <iterator>

#include "analysis/support/inputError.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/units.h"
#include "support/values.h"

namespace rfu::command {

namespace {

// clang-format off
const Usage kUsage = {
    "Convert levels in dBm to one of the sixteen numeric scales or, with --to-dbm, back, at full\n"
    "precision. Without VALUE, values are read from standard input, one per line.\n"
    "  0 dBm      4 V        8 dBV/m    12 dBW/m^2\n"
    "  1 dBV      5 W        9 V/m      13 A/m\n"
    "  2 dBmV     6 dBuV/m  10 W/m^2    14 dBA/m\n"
    "  3 dBuV     7 dBmV/m  11 dBm/m^2  15 W/cm^2\n"
    "Scales from 6 refer to an antenna; its correction is rounded to single precision. Scale 5 comes\n"
    "back by the formula of the volt, so that 0 dBm gives 0.001 W and 0.001 W gives -46.9897 dBm.\n"
    "Scale 9 has no way back.",
    "INDEX VALUE...",
    {"rfutils scale 3 -30",
     "rfutils scale 4 1 --to-dbm",
     "rfutils scale 6 -30 --center 1GHz --gain 2",
     "rfutils scale 5 0 30 --format json"}};
// clang-format on

const rfu::Scale& scaleAt(int index) {
    const rfu::Scale* const scale = rfu::findScale(index);
    if (scale == nullptr) {
        throw inputError("there is no scale " + std::to_string(index) + "; scales are 0 to " +
                         std::to_string(std::size(rfu::kScales) - 1));
    }
    return *scale;
}

int scaleIndex(const QStringList& values) {
    if (values.isEmpty()) {
        throw usageError("INDEX is missing");
    }
    const auto scale = parseInteger(values.first().toStdString());
    if (!scale) {
        throw usageError("INDEX " + quoted(values.first().toStdString()) +
                         ": a whole number is expected");
    }
    return *scale;
}

}  // namespace

void runScale(const QStringList& arguments) {
    CommandLine line(kUsage);
    line.addFlag("to-dbm", "From the scale to dBm.");
    line.addAntenna();
    line.addFormat();
    if (!line.parse(arguments)) {
        return;
    }
    const int index = scaleIndex(line.values());
    const rfu::Scale& scale = scaleAt(index);
    const rfu::Unit& unit = *scale.unit;
    const bool toDbm = line.isSet("to-dbm");
    if (toDbm && scale.toDbm.formula == rfu::ToDbm::None) {
        throw inputError("scale " + std::to_string(index) + " (" + nameOf(unit) +
                         ") has no way back to dBm; rfutils convert reads " + nameOf(unit));
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
        forEachValue(line.values().mid(1), [&](std::string_view text) {
            output.write(ShortestText(convert(requireNumber(text))).view());
            output.write(' ');
            output.write(unitShown);
            output.write('\n');
        });
        return;
    }
    TableWriter table(standardOutput(), line.format(), {"input", "scale", "value", "unit"});
    forEachValue(line.values().mid(1), [&](std::string_view text) {
        const double value = convert(requireNumber(text));
        table.text(trimmed(text)).integer(index).number(value).text(unitShown);
    });
    table.finish();
}

}  // namespace rfu::command
