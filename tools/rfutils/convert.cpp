#include <string>
#include <string_view>

#include "analysis/support/numbers.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/output.h"
#include "support/prefixNote.h"
#include "support/table.h"
#include "support/units.h"
#include "support/values.h"

namespace rfu::command {

namespace {

/// Looks up the unit of each value; consecutive values mostly have the same.
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

void runConvert(const CommandLine& line) {
    const Antenna antenna = antennaOf(line);
    const rfu::Unit& unit = *line.value<const rfu::Unit*>("to");
    LevelPresenter target(unit, antenna);
    HMath math;
    SourceUnit source;
    PrefixNote note(unit, true);

    struct Level {
        std::string_view input;
        double dBm;
    };
    const auto read = [&](std::string_view text) {
        const Entry entry = splitEntry(text);
        if (!entry.refusal.empty()) {
            throw BadValue(entry.refusal);
        }
        return Level{trimmed(text), levelOf(math, source.of(entry.unit), entry.value, antenna)};
    };
    const auto show = [&](const Level& level) {
        const std::string text = target.text(level.dBm);
        standardOutput().write(text.empty() ? kMissingText : text);
        standardOutput().write('\n');
        note.check(level.dBm, text, target);
        note.print();
    };
    answerValues<Level>(
        line.texts("VALUE"), line.format(), read, show,
        {{"input", [](const Level& level) { return level.input; }},
         {"dBm", [](const Level& level) { return level.dBm; }},
         {"value", [&](const Level& level) { return target.value(level.dBm); }},
         {"unit", [&](const Level&) { return target.unitName(); }},
         {"text", [&](const Level& level) { return textOrNone(target.text(level.dBm)); }}});
}

}  // namespace

// clang-format off
constexpr Subcommand kConvert = {
    "convert", "Convert levels, voltages, powers and field values",
    "Convert levels, voltages, powers and field values into another unit, by the level in dBm "
    "and with the text that the instrument shows. A value is a number with or without a unit; a "
    "bare number is in dBm. Without VALUE, values are read from standard input, one per line. "
    "Field units refer to an antenna: --center and --gain. rfutils units lists the units; micro "
    "may be written u, \u00B5 or \u03BC. The instrument chooses the prefix of linear units itself: "
    "ask for V, not mV.\n"
    "\n"
    "Caution: above 100 V it shows kilovolts and keeps the label V; from 1 kW it shows kilowatts, "
    "from 1 MW megawatts, and keeps the label W: 1.00 W of 60 dBm is 1 kW. A note on standard "
    "error says so. The value of CSV and JSON is always in volts or watts.\n"
    "\n"
    "CSV and JSON: input, the level in dBm, the value in the unit (unrounded and without prefix), "
    "the unit and the text. For field units the value is computed with an antenna correction "
    "that is rounded to single precision.",
    {{"VALUE", Kind::Text, 0, kAnyCount}},
    {{"to", "UNIT", Kind::Unit, "The unit to show the values in.", nullptr, 1},
     kCenterOption,
     kGainOption},
    {"rfutils convert -30 --to dBuV",
     "rfutils convert -30dBm \"7 dBuV\" 2.5mV --to W",
     "rfutils convert 87.2dBuV/m --to dBm --center 100MHz --gain 0",
     "rfutils convert -30dBm --to V/m --center 1GHz",
     "rfutils convert 10 0 -10 --to V --format csv"},
    runConvert};
// clang-format on

}  // namespace rfu::command
