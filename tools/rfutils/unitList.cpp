#include "subcommands.h"
#include "support/commandLine.h"
#include "support/table.h"
#include "support/units.h"

namespace rfu::command {

namespace {

const char* shownBy(const ListedUnit& unit) {
    if (unit.row == nullptr || unit.row->isPrefixed()) {
        return "prefix";
    }
    return unit.row->canBeShown() ? "name" : "no";
}

void runUnits(const CommandLine& line) {
    using Row = ListedUnit;
    Table<Row> table(
        line.format(),
        {{"unit", [](const Row& unit) { return unit.name; }},
         {"quantity", [](const Row& unit) { return unit.like.traits().name; }},
         {"fromDbm", shownBy},
         {"toDbm", [](const Row& unit) { return unit.row != nullptr && unit.row->canBeRead(); }},
         {"antenna", [](const Row& unit) { return unit.like.needsAntenna(); }}});
    for (const ListedUnit& unit : allUnits()) {
        table.add(unit);
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
