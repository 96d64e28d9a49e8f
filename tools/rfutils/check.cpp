#include <QString>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "analysis/checks/checkFiles.h"
#include "analysis/checks/fileKind.h"
#include "analysis/support/inputError.h"
#include "check/findingWriter.h"
#include "check/mendFiles.h"
#include "check/ruleTexts.h"
#include "check/schemas.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/output.h"

namespace rfu::command {

namespace {

struct CheckFormat {
    const char* name;
    std::unique_ptr<FindingWriter> (*writer)();
};

constexpr CheckFormat kFormats[] = {
    {"text", textFindings}, {"json", jsonFindings}, {"sarif", sarifFindings}};

/// "a, b or c"
template <typename Items, typename NameOf>
std::string listOf(const Items& items, NameOf nameOf) {
    std::string list;
    for (const auto& item : items) {
        list += list.empty() ? "" : &item == &*std::prev(std::end(items)) ? " or " : ", ";
        list += nameOf(item);
    }
    return list;
}

const CheckFormat& askedFormat(const CommandLine& line) {
    const std::string name = line.isSet("format") ? line.text("format").toStdString() : "text";
    for (const CheckFormat& format : kFormats) {
        if (name == format.name) {
            return format;
        }
    }
    throw UsageError("--format: " + quoted(name) + " is not " +
                     listOf(kFormats, [](const CheckFormat& format) { return format.name; }));
}

std::optional<FileKind> askedKind(const CommandLine& line) {
    if (!line.isSet("as")) {
        return std::nullopt;
    }
    const std::string name = line.text("as").toStdString();
    for (const KnownKind& known : knownKinds()) {
        if (name == known.name) {
            return known.kind;
        }
    }
    throw UsageError("--as: " + quoted(name) + " is not " +
                     listOf(knownKinds(), [](const KnownKind& known) { return known.name; }));
}

std::vector<std::string> ignoredRules(const CommandLine& line) {
    std::vector<std::string> rules;
    for (const QString& rule : line.texts("ignore")) {
        rules.push_back(rule.toStdString());
        requireRule(rules.back());
    }
    return rules;
}

std::optional<int> maxWarnings(const CommandLine& line) {
    const auto count = line.find<int>("max-warnings");
    if (count && *count < 0) {
        throw UsageError("--max-warnings: a number from 0");
    }
    return count;
}

/// Whether the options ask for what is known about rules, which is written then.
bool explains(const CommandLine& line, const CheckFormat& format) {
    const bool takesNoFile = line.isSet("rules") || line.isSet("explain") || line.isSet("schema");
    if (takesNoFile && !line.texts("FILE").isEmpty()) {
        throw UsageError("--rules, --explain and --schema take no file");
    }
    if (line.isSet("rules")) {
        writeRules(format.writer == jsonFindings ? Format::Json : Format::Text);
    } else if (line.isSet("schema")) {
        standardOutput().write(schemaOf(line.text("schema").toStdString()));
    } else if (line.isSet("explain")) {
        standardOutput().write(explanationOf(line.text("explain").toStdString()));
    }
    return takesNoFile;
}

void runCheck(const CommandLine& line) {
    const CheckFormat& format = askedFormat(line);
    const CheckOptions options = {askedKind(line), ignoredRules(line)};
    const std::optional<int> allowed = maxWarnings(line);
    if (explains(line, format)) {
        return;
    }
    if (line.texts("FILE").isEmpty()) {
        throw UsageError("FILE is missing");
    }
    if (line.isSet("fix") && line.isSet("diff")) {
        throw UsageError("--fix and --diff exclude each other");
    }
    long long errors = 0;
    if (line.isSet("fix") || line.isSet("diff")) {
        // Before findings are shown: one in a file may come from another beside it.
        checkFiles(line.texts("FILE"), options, [&](const CheckedFile& file) {
            const bool isRefused = line.isSet("fix") ? mendInPlace(file) : showMend(file);
            errors += isRefused ? 1 : 0;
        });
    }
    const auto writer = line.isSet("diff") ? nullptr : format.writer();
    long long warnings = 0;
    checkFiles(line.texts("FILE"), options, [&](const CheckedFile& file) {
        if (writer) {
            writer->add(file);
        }
        errors += file.findings.count(Severity::Error);
        warnings += file.findings.count(Severity::Warning);
    });
    if (writer) {
        writer->finish();
    }
    if (errors > 0 || (allowed && warnings > *allowed)) {
        throw Ended{kExitBadInput};
    }
}

}  // namespace

// clang-format off
constexpr Subcommand kCheck = {
    "check", "Say what the library skips, cuts or misreads in files",
    "Say what the library refuses, skips, cuts or misreads in files, before they are on the instrument. A folder stands "
    "for the files below it that are of a known kind, and a map for the files that belong to it: cells, header, colours, "
    "the raster that a georeference names.\n"
    "Each finding is a line, FILE:LINE:COLUMN: SEVERITY: what the library makes of it [RULE]. An error is what the library "
    "refuses or shows wrongly, a warning what it drops or alters, a note what may surprise. Columns count bytes.\n"
    "A file .rfutils-check beside the checked ones names rules that do not count there, one a line, with the files that "
    "it is about behind it, if not all.\n"
    "The exit status is 0, or 1 if there are errors or more warnings than --max-warnings.",
    {{"FILE", Kind::File, 0, kAnyCount}},
    {{"as", "KIND", Kind::Text, "What the files are, whatever their names: asc, hdr, bil, clr, tab, catalogue, setups or recording."},
     {"ignore", "RULE", Kind::Text, "Findings of this rule do not count; may be given several times.", nullptr, 0, kAnyCount},
     {"max-warnings", "N", Kind::Integer, "End with status 1 if there are more warnings."},
     {"fix", "", Kind::Flag, "Rewrite files where findings have one right mend, then show what is left."},
     {"diff", "", Kind::Flag, "Show what --fix would change, in place of findings; nothing is written."},
     {"explain", "RULE", Kind::Text, "Show what a rule is about, with an example and its mend."},
     {"rules", "", Kind::Flag, "List all rules."},
     {"schema", "KIND", Kind::Text, "Print the JSON Schema of catalogue or setups, for editors."},
     {"format", "FORMAT", Kind::Text, "text, json or sarif (2.1.0, for code review systems).", "text"}},
    {"rfutils check terrain.asc terrain.tab",
     "rfutils check . --max-warnings 0",
     "rfutils check levels.txt --as recording --ignore last-line-cut --format json",
     "rfutils check --explain row-width",
     "rfutils check --rules",
     "rfutils check --schema catalogue > catalogue.schema.json",
     "rfutils check . --format sarif > check.sarif"},
    runCheck};
// clang-format on

}  // namespace rfu::command
