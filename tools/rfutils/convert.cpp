#include <optional>

#include "analysis/support/inputError.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/prefixNote.h"
#include "support/units.h"
#include "support/values.h"

namespace rfu::command {

namespace {

// clang-format off
const Usage kUsage = {
    "Convert levels, voltages, powers and field values into another unit, by the level in dBm and\n"
    "with the text that the instrument shows. A value is a number with or without a unit; a bare\n"
    "number is in dBm. Without VALUE, values are read from standard input, one per line. Field units\n"
    "refer to an antenna: --center and --gain. rfutils units lists the units; micro may be written\n"
    "u, \u00B5 or \u03BC. The instrument chooses the prefix of linear units itself: ask for V, not mV.\n"
    "\n"
    "Caution: above 100 V it shows kilovolts and keeps the label V; from 1 kW it shows kilowatts, from\n"
    "1 MW megawatts, and keeps the label W: 1.00 W of 60 dBm is 1 kW. A note on standard error says\n"
    "so. The value of CSV and JSON is always in volts or watts.\n"
    "\n"
    "CSV and JSON: input, the level in dBm, the value in the unit (unrounded and without prefix), the\n"
    "unit and the text. For field units the value is computed with an antenna correction that is\n"
    "rounded to single precision.",
    "VALUE...",
    {"rfutils convert -30 --to dBuV",
     "rfutils convert -30dBm \"7 dBuV\" 2.5mV --to W",
     "rfutils convert 87.2dBuV/m --to dBm --center 100MHz --gain 0",
     "rfutils convert -30dBm --to V/m --center 1GHz",
     "rfutils convert 10 0 -10 --to V --format csv"}};
// clang-format on

/// The unit of each value in turn; neighbouring values mostly have the same.
class SourceUnit {
public:
    const rfu::Unit& of(std::string_view name) {
        if (unit_ == nullptr || name != name_) {
            unit_ = &unitToRead(name.empty() ? "dBm" : name);
            name_ = name;
        }
        return *unit_;
    }

private:
    std::string name_;
    const rfu::Unit* unit_ = nullptr;
};

/// @throw BadValue that tells numbers in another notation from wrong units
SplitValue quantityOf(std::string_view text) {
    const auto quantity = splitValue(text);
    if (!quantity) {
        throw BadValue{quoted(text) + " is not a number with or without a unit"};
    }
    const std::string_view rest = quantity->unit;
    if (!rest.empty() && rest[0] == ',') {
        throw BadValue{quoted(text) + " is not understood: numbers have a decimal point, no comma"};
    }
    if (!rest.empty() && quantity->value == 0.0 && (rest[0] == 'x' || rest[0] == 'X')) {
        throw BadValue{quoted(text) + " is not understood: hexadecimal numbers are not read"};
    }
    return *quantity;
}

const rfu::Unit& targetUnit(const CommandLine& line) {
    if (!line.isSet("to")) {
        throw usageError("--to UNIT is missing");
    }
    try {
        return unitToShow(line.option("to").toStdString());
    } catch (const BadValue& bad) {
        throw inputError(bad.what);
    }
}

}  // namespace

void runConvert(const QStringList& arguments) {
    CommandLine line(kUsage);
    line.addOption("to", "UNIT", "The unit to show the values in.");
    line.addAntenna();
    line.addFormat();
    if (!line.parse(arguments)) {
        return;
    }
    const Antenna antenna = antennaOf(line);
    const rfu::Unit& unit = targetUnit(line);
    LevelPresenter target(unit, antenna);
    HMath math;
    SourceUnit source;
    const auto toLevel = [&](std::string_view text) {
        const SplitValue quantity = quantityOf(text);
        return levelOf(math, source.of(quantity.unit), quantity.value, antenna);
    };

    if (line.format() == Format::Text) {
        Output& output = standardOutput();
        PrefixNote note(unit, true);
        forEachValue(line.values(), [&](std::string_view text) {
            const double level = toLevel(text);
            const std::string shown = target.text(level);
            output.write(shown.empty() ? kMissingText : shown);
            output.write('\n');
            note.check(level, shown, target);
            note.print();
        });
        return;
    }
    TableWriter table(standardOutput(), line.format(), {"input", "dBm", "value", "unit", "text"});
    forEachValue(line.values(), [&](std::string_view text) {
        const double level = toLevel(text);
        table.text(trimmed(text)).number(level).number(target.value(level));
        table.text(target.unitName());
        table.textOrNone(target.text(level));
    });
    table.finish();
}

}  // namespace rfu::command
