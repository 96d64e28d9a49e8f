#include <rfUtils/catalogues/ResultSetup.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <string>

#include "analysis/support/inputError.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/jsonFile.h"
#include "support/table.h"

namespace rfu::command {

namespace {

void reportSkipped(const QString& file, const char* missing, const QString& after) {
    printError(InputError(file, std::string("skipped an entry without \"") + missing + "\" after " +
                                    quoted(after.toStdString()))
                   .message());
}

/// The number of setups that ResultSetup takes from the file, which it cannot tell: the texts of a
/// setup may be null like those beyond the end.
/// @param verbose reports skipped entries by the setup before them in their group or, at the start
///        of the group, by the group's key
int countEntries(const QJsonObject& groups, bool verbose, const QString& file) {
    int count = 0;
    for (auto group = groups.begin(); group != groups.end(); ++group) {
        QString last = group.key();
        for (const QJsonValue entry : group.value().toArray()) {
            const QJsonObject setup = entry.toObject();
            const char* const missing = !setup.contains(QLatin1String("label")) ? "label"
                                        : !setup.contains(QLatin1String("id"))  ? "id"
                                                                                : nullptr;
            if (missing == nullptr) {
                ++count;
                last = setup[QLatin1String("id")].toString();
            } else if (verbose) {
                reportSkipped(file, missing, last);
            }
        }
    }
    return count;
}

void runSetups(const CommandLine& line) {
    const QString file = line.text("FILE");
    ResultSetup setups;
    const QJsonObject groups = loadJsonObject(file, [&] { return setups.loadJson(file); });
    const int count = countEntries(groups, line.isSet("verbose"), file);
    if (count == 0) {
        requireNothing(groups, file,
                       "holds no result setup: an object with id and label in the list of a group");
    }
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
    {{"FILE", Kind::File}},
    {{"verbose", "", Kind::Flag,
      "Report skipped entries on standard error, each by the setup before it in its group or, at "
      "the group's start, by the group's key."}},
    {"rfutils setups setups.json",
     "rfutils setups setups.json --verbose",
     "rfutils setups setups.json --format csv"},
    runSetups};
// clang-format on

}  // namespace rfu::command
