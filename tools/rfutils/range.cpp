#include <rfUtils/presentation/rfUtils.h>

#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/kinds.h"
#include "support/output.h"
#include "support/prefixNote.h"
#include "support/tableWriter.h"
#include "support/units.h"

namespace rfu::command {

namespace {

constexpr int kVoltType = 14;
constexpr int kWattType = 15;
constexpr int kFirstFieldType = 16;
constexpr int kLastFieldType = 21;

/// The limit of an entry of whole numbers.
int wholeLimit(const CommandLine& line, const char* name) {
    try {
        return std::get<int>(readValue(Kind::Integer, line.text(name).toStdString()));
    } catch (const BadValue& bad) {
        throw UsageError(std::string("--") + name + ": " + bad.message);
    }
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

void runRange(const CommandLine& line) {
    const int type = line.value<int>("type");
    const double min = line.value<double>("min");
    const double max = line.value<double>("max");
    const Antenna antenna = antennaOf(line);

    rfUtils presentation;
    presentation.fCenter = antenna.center.value_or(0.0);
    presentation.fGain = antenna.gain;
    std::string text;
    if (line.isSet("integer")) {
        text = presentation.makeBoundaryMsg(wholeLimit(line, "max"), wholeLimit(line, "min"), type);
    } else {
        if (type >= kFirstFieldType && type <= kLastFieldType && !antenna.center) {
            throw UsageError("type " + std::to_string(type) +
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

}  // namespace

// clang-format off
constexpr Subcommand kRange = {
    "range", "Show the limits of an entry as the instrument does",
    "Show the text that names the limits of an entry, in the unit of a type code. The text opens "
    "and ends with a blank.\n"
    "  0 frequency (limits in MHz)  9 dBi           16 dBuV/m\n"
    "  1 dB                        11 dBV           17 dBmV/m\n"
    "  2 dBm                       12 dBmV          18 dBV/m\n"
    "  4 \u00B5s                        13 dBuV          19 V/m\n"
    "  6 Sec (integers only)       14 V             20 W/m^2\n"
    "  7 ns                        15 W             21 dBm/m^2\n"
    "  8 %                         22 ppm           23 empty text\n"
    "Any other code shows no unit. The limits of codes 11 to 21 are levels in dBm; codes 16 to 21 "
    "refer to an antenna. Above 100 V code 14 shows kilovolts and keeps the label V; from 1 kW "
    "code 15 shows kilowatts, from 1 MW megawatts, and keeps the label W; a note on standard "
    "error says so. Of the codes, 1, 4, 6, 7, 8 and 23 are those of integer entries.",
    {},
    {{"type", "CODE", Kind::Integer, "What is limited, see above.", nullptr, 1},
     {"min", "V", Kind::Number, "Lower limit.", nullptr, 1},
     {"max", "V", Kind::Number, "Upper limit.", nullptr, 1},
     {"integer", "", Kind::Flag, "The text of an entry of whole numbers."},
     kCenterOption,
     kGainOption},
    {"rfutils range --type 2 --min -10 --max 20",
     "rfutils range --type 16 --min -30 --max -10 --center 100MHz",
     "rfutils range --type 6 --min 0 --max 100 --integer",
     "rfutils range --type 0 --min 0.009 --max 6000 --format json"},
    runRange};
// clang-format on

}  // namespace rfu::command
