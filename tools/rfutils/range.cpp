#include <rfUtils/presentation/rangeTypes.h>
#include <rfUtils/presentation/rfUtils.h>

#include <map>
#include <string>
#include <variant>
#include <vector>

#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/format.h"
#include "support/kinds.h"
#include "support/output.h"
#include "support/prefixNote.h"
#include "support/table.h"
#include "support/units.h"

namespace rfu::command {

namespace {

/// The limit of an entry of whole numbers.
int wholeLimit(const CommandLine& line, const char* name) {
    try {
        return std::get<int>(readValue(Kind::Integer, line.text(name).toStdString()));
    } catch (const BadValue& bad) {
        throw UsageError(std::string("--") + name + ": " + bad.message);
    }
}

/// Notes that the text of a limit omits a large prefix.
void notePrefixes(const rfu::Unit& unit, const Antenna& antenna, double min, double max) {
    LevelPresenter presenter(unit, antenna);
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
    if (min > max) {
        throw UsageError("--min is above --max");
    }
    const Antenna antenna = antennaOf(line);

    rfUtils presentation;
    presentation.fCenter = antenna.center.value_or(0.0);
    presentation.fGain = antenna.gain;
    std::string text;
    const rfu::Unit* unit = nullptr;
    if (line.isSet("integer")) {
        text = presentation.makeBoundaryMsg(wholeLimit(line, "max"), wholeLimit(line, "min"), type);
    } else {
        unit = rfu::rangeType(rfu::kDoubleRangeTypes, type).convertedUnit();
        if (unit != nullptr && unit->needsAntenna() && !antenna.center) {
            throw UsageError("type " + std::to_string(type) +
                             " needs the centre frequency of the antenna: --center");
        }
        text = presentation.makeBoundaryMsg(max, min, type);
    }

    if (line.format() == Format::Text) {
        standardOutput().write(text + '\n');
        if (unit != nullptr) {
            notePrefixes(*unit, antenna, min, max);
        }
        return;
    }
    writeObject(line.format(), {{"type", type}, {"min", min}, {"max", max}, {"text", text}});
}

std::string choiceOf(const rfu::RangeType& type) {
    const std::string unit = type.unit.toString().toStdString();
    const std::string code = (type.code < 10 ? " " : "") + std::to_string(type.code) + ' ';
    switch (type.text) {
        case rfu::LimitText::AsGiven:
            return code + unit;
        case rfu::LimitText::Frequency:
            return code + "frequency (limits in MHz)";
        case rfu::LimitText::Converted:
            return code + unit + " (limits in dBm)";
        case rfu::LimitText::None:
            break;
    }
    return code + "empty text";
}

std::vector<std::string> types() {
    std::map<int, std::string> choices;
    for (const rfu::RangeType& type : rfu::kDoubleRangeTypes) {
        choices[type.code] = choiceOf(type);
    }
    for (const rfu::RangeType& type : rfu::kIntegerRangeTypes) {
        std::string& choice = choices[type.code];
        if (choice.empty()) {
            choice = choiceOf(type) + ", integers only";
        } else {
            choice += ", integers too";
        }
    }
    std::vector<std::string> list;
    list.reserve(choices.size());
    for (const auto& choice : choices) {
        list.push_back(choice.second);
    }
    return list;
}

}  // namespace

// clang-format off
constexpr Subcommand kRange = {
    "range", "Show the limits of an entry as the instrument does",
    "Show the text that names the limits of an entry, in the unit of a type code. The text opens "
    "and ends with a blank. Fields refer to an antenna. Above 100 V the text has kilovolts and "
    "keeps the label V; from 1 kW it has kilowatts, from 1 MW megawatts, and keeps the label W; a "
    "note on standard error says so. The codes; any other shows no unit:",
    {},
    {{"type", "CODE", Kind::Code, "What is limited, see above.", nullptr, 1},
     {"min", "V", Kind::Number, "Lower limit.", nullptr, 1},
     {"max", "V", Kind::Number, "Upper limit.", nullptr, 1},
     {"integer", "", Kind::Flag, "The text of an entry of whole numbers."},
     kCenterOption,
     kGainOption},
    {"rfutils range --type 2 --min -10 --max 20",
     "rfutils range --type 16 --min -30 --max -10 --center 100MHz",
     "rfutils range --type 6 --min 0 --max 100 --integer",
     "rfutils range --type 0 --min 0.009 --max 6000 --format json"},
    runRange,
    types};
// clang-format on

}  // namespace rfu::command
