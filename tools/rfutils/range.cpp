#include <rfUtils/presentation/rfUtils.h>

#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/prefixNote.h"
#include "support/units.h"

namespace rfu::command {

namespace {

// clang-format off
const Usage kUsage = {
    "Show the text that names the limits of an entry, in the unit of a type code. The text opens and\n"
    "ends with a blank.\n"
    "  0 frequency (limits in MHz)  9 dBi           16 dBuV/m\n"
    "  1 dB                        11 dBV           17 dBmV/m\n"
    "  2 dBm                       12 dBmV          18 dBV/m\n"
    "  4 \u00B5s                        13 dBuV          19 V/m\n"
    "  6 Sec (integers only)       14 V             20 W/m^2\n"
    "  7 ns                        15 W             21 dBm/m^2\n"
    "  8 %                         22 ppm           23 empty text\n"
    "Any other code shows no unit. The limits of codes 11 to 21 are levels in dBm; codes 16 to 21\n"
    "refer to an antenna. Above 100 V code 14 shows kilovolts and keeps the label V; from 1 kW code 15\n"
    "shows kilowatts, from 1 MW megawatts, and keeps the label W; a note on standard error says so.\n"
    "Of the codes, 1, 4, 6, 7, 8 and 23 are those of integer entries.",
    "",
    {"rfutils range --type 2 --min -10 --max 20",
     "rfutils range --type 16 --min -30 --max -10 --center 100MHz",
     "rfutils range --type 6 --min 0 --max 100 --integer",
     "rfutils range --type 0 --min 0.009 --max 6000 --format json"}};
// clang-format on

constexpr int kVoltType = 14;
constexpr int kWattType = 15;
constexpr int kFirstFieldType = 16;
constexpr int kLastFieldType = 21;

template <typename Number>
Number require(const std::optional<Number>& value, const char* option) {
    if (!value) {
        throw usageError(std::string("--") + option + " is missing");
    }
    return *value;
}

/// Notes where the text of a limit leaves out a large prefix.
void notePrefixes(int type, double min, double max) {
    if (type != kVoltType && type != kWattType) {
        return;
    }
    const rfu::Unit& unit = unitToShow(type == kVoltType ? "V" : "W");
    LevelPresenter presenter(unit, {});
    PrefixNote note(unit, false);
    for (const double limit : {min, max}) {
        note.check(limit, presenter.text(limit), presenter);
    }
    note.print();
}

}  // namespace

void runRange(const QStringList& arguments) {
    CommandLine line(kUsage);
    line.addOption("type", "CODE", "What is limited, see above.");
    line.addOption("min", "V", "Lower limit.");
    line.addOption("max", "V", "Upper limit.");
    line.addFlag("integer", "The text of an entry of whole numbers.");
    line.addAntenna();
    line.addFormat();
    if (!line.parse(arguments)) {
        return;
    }
    line.requireAtMost(0);
    const int type = require(line.integer("type"), "type");
    const Antenna antenna = antennaOf(line);

    rfUtils presentation;
    presentation.fCenter = antenna.center.value_or(0.0);
    presentation.fGain = antenna.gain;
    std::string text;
    double min = 0.0;
    double max = 0.0;
    if (line.isSet("integer")) {
        const int lower = require(line.integer("min"), "min");
        const int upper = require(line.integer("max"), "max");
        text = presentation.makeBoundaryMsg(upper, lower, type);
        min = lower;
        max = upper;
    } else {
        min = require(line.number("min"), "min");
        max = require(line.number("max"), "max");
        if (type >= kFirstFieldType && type <= kLastFieldType && !antenna.center) {
            throw usageError("type " + std::to_string(type) +
                             " needs the centre frequency of the antenna: --center");
        }
        text = presentation.makeBoundaryMsg(max, min, type);
    }

    if (line.format() == Format::Text) {
        standardOutput().write(text + '\n');
        if (!line.isSet("integer")) {
            notePrefixes(type, min, max);
        }
        return;
    }
    TableWriter table(standardOutput(), line.format(), {"type", "min", "max", "text"},
                      TableWriter::Shape::Object);
    table.integer(type).number(min).number(max).text(text);
    table.finish();
}

}  // namespace rfu::command
