#include <rfUtils/catalogues/ResultSetup.h>

#include <QJsonObject>
#include <QString>
#include <string>

#include "analysis/catalogues/jsonFile.h"
#include "analysis/catalogues/setups.h"
#include "analysis/support/inputError.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/table.h"

namespace rfu::command {

namespace {

void reportSkipped(const QString& file, const char* missing, const QString& after) {
    printError(InputError(file, std::string("skipped an entry without \"") + missing + "\" after " +
                                    rfu::quoted(after.toStdString()))
                   .message());
}

void runSetups(const CommandLine& line) {
    const QString file = line.text("FILE");
    ResultSetup setups;
    const QJsonObject groups = loadJsonObject(file, [&] { return setups.loadJson(file); });
    const bool isVerbose = line.isSet("verbose");
    const int count =
        static_cast<int>(setupsOf(groups, file, [&](const char* missing, const QString& after) {
                             if (isVerbose) {
                                 reportSkipped(file, missing, after);
                             }
                         }).size());
    Table<int> table(line.format(),
                     {{"index", [](int index) { return index; }},
                      {"id", [&](int index) { return setups.setupId(index); }},
                      {"label", [&](int index) { return setups.setupLabel(index); }}});
    for (int index = 0; index < count; ++index) {
        table.add(index);
    }
    table.finish();
}

}  // namespace

// clang-format off
constexpr Subcommand kSetups = {
    "setups", "Show the result setups of a file",
    "Show the result setups of a file (JSON) in their order: groups by their keys, the setups of a "
    "group as they stand in the file. The index is the position by which applications ask.",
    {{"FILE", Kind::JsonFile}},
    {{"verbose", "", Kind::Flag,
      "Report skipped entries on standard error, each by the setup before it in its group or, at "
      "the group's start, by the group's key."}},
    {"rfutils setups setups.json",
     "rfutils setups setups.json --verbose",
     "rfutils setups setups.json --format csv"},
    runSetups};
// clang-format on

}  // namespace rfu::command
