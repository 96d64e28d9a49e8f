#include <rfUtils/catalogues/ResultSetup.h>
#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>
#include <vector>

#include "analysis/support/inputError.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/jsonFile.h"
#include "support/output.h"
#include "support/table.h"

namespace rfu::command {

namespace {

/// What the list says about entries that it skips comes as debug messages.
std::vector<QString> debugMessages;

void keepMessage(QtMsgType, const QMessageLogContext&, const QString& message) {
    debugMessages.push_back(message);
}

/// While it lives, messages of Qt's log are kept.
class MessageCollector {
public:
    MessageCollector() : previous_(qInstallMessageHandler(keepMessage)) {}
    ~MessageCollector() { qInstallMessageHandler(previous_); }
    MessageCollector(const MessageCollector&) = delete;
    MessageCollector& operator=(const MessageCollector&) = delete;

private:
    QtMessageHandler previous_;
};

void warnOfSkippedEntries(const QString& file) {
    static const QRegularExpression skipped(
        QStringLiteral("^Not found property at json\\.\\[(label|id)\\] -> +(\".*\")$"),
        QRegularExpression::DotMatchesEverythingOption);
    for (const QString& message : debugMessages) {
        const QRegularExpressionMatch match = skipped.match(message);
        if (match.hasMatch()) {
            const InputError error(file, "skipped an entry without \"" +
                                             match.captured(1).toStdString() + "\" after " +
                                             match.captured(2).toStdString());
            printError(error.message());
        }
    }
}

/// Entries that the list takes. It answers for positions and does not tell their number, and the
/// texts of an entry may be as null as those beyond the end.
int countEntries(const QJsonObject& groups) {
    int count = 0;
    for (const QJsonValue group : groups) {
        for (const QJsonValue entry : group.toArray()) {
            const QJsonObject setup = entry.toObject();
            const bool taken =
                setup.contains(QLatin1String("label")) && setup.contains(QLatin1String("id"));
            count += int{taken};
        }
    }
    return count;
}

void runSetups(const CommandLine& line) {
    const QString file = line.text("FILE");
    const int count = countEntries(readJsonObject(file));
    ResultSetup setups;
    {
        const MessageCollector collector;
        if (!setups.loadJson(file)) {
            throw InputError(file, "cannot be read");
        }
    }
    if (line.isSet("verbose")) {
        warnOfSkippedEntries(file);
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
