#include "subcommands.h"
#include "support/commandLine.h"
#include "support/output.h"
#include "support/tableWriter.h"
#include "support/units.h"

namespace rfu::command {

namespace {

const char* shownBy(const ListedUnit& unit) {
    if (unit.row == nullptr || isPrefixed(*unit.row)) {
        return "prefix";
    }
    return canBeShown(*unit.row) ? "name" : "no";
}

void runUnits(const CommandLine& line) {
    TableWriter table(standardOutput(), line.format(),
                      {"unit", "quantity", "fromDbm", "toDbm", "antenna"});
    for (const ListedUnit& unit : allUnits()) {
        table.text(unit.name).text(traitsOf(unit.like).name.toString().toStdString());
        table.text(shownBy(unit));
        table.flag(unit.row != nullptr && canBeRead(*unit.row)).flag(needsAntenna(unit.like));
    }
    table.finish();
}

}  // namespace

// clang-format off
constexpr Subcommand kUnits = {
    "units", "List the units",
    "List the units: name, quantity, whether levels are shown in it (fromDbm), whether values are "
    "read in it (toDbm), and whether it refers to an antenna (--center, --gain).\n"
    "fromDbm: \"name\" can be asked for by its name; \"prefix\" comes about when the instrument puts "
    "a prefix before a unit that was asked for; \"no\" is never shown.",
    {},
    {},
    {"rfutils units",
     "rfutils units --format csv"},
    runUnits};
// clang-format on

}  // namespace rfu::command
