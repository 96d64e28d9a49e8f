#include <QString>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "analysis/checks/checkFiles.h"
#include "analysis/checks/fileKind.h"
#include "check/findingWriter.h"
#include "check/mendFiles.h"
#include "check/ruleTexts.h"
#include "check/schemas.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"
#include "support/named.h"
#include "support/output.h"

namespace rfu::command {

namespace {

struct CheckFormat {
    const char* name;
    std::unique_ptr<FindingWriter> (*writer)();
};

constexpr CheckFormat kFormats[] = {
    {"text", textFindings}, {"json", jsonFindings}, {"sarif", sarifFindings}};

std::vector<std::string> kindNames() {
    std::vector<std::string> names;
    for (const KnownKind& known : knownKinds()) {
        names.emplace_back(known.name);
    }
    return names;
}

std::optional<FileKind> askedKind(const CommandLine& line) {
    const auto name = line.find<std::string>("as");
    for (const KnownKind& known : knownKinds()) {
        if (name == known.name) {
            return known.kind;
        }
    }
    return std::nullopt;
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
        standardOutput().write(schemaOf(line.value<std::string>("schema")));
    } else if (line.isSet("explain")) {
        standardOutput().write(explanationOf(line.value<std::string>("explain")));
    }
    return takesNoFile;
}

void runCheck(const CommandLine& line) {
    const CheckFormat& format = named(kFormats, line.value<std::string>("format"));
    const auto ignored = line.values<std::string>("ignore");
    const CheckOptions options = {askedKind(line), {ignored.begin(), ignored.end()}};
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
    const QStringList passedOver =
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
    if (!passedOver.isEmpty()) {
        printNote(noteOfPassedOver(passedOver));
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
    {{"as", "KIND", Kind::Word, "What the files are, whatever their names: asc, hdr, bil, clr, tab, catalogue, setups or recording.", nullptr, 0, 1, 0, kindNames},
     {"ignore", "RULE", Kind::Word, "Findings of this rule do not count; may be given several times.", nullptr, 0, kAnyCount, 0, ruleNames},
     {"max-warnings", "N", Kind::Integer, "End with status 1 if there are more warnings."},
     {"fix", "", Kind::Flag, "Rewrite files where findings have one right mend, then show what is left."},
     {"diff", "", Kind::Flag, "Show what --fix would change, in place of findings; nothing is written."},
     {"explain", "RULE", Kind::Word, "Show what a rule is about, with an example and its mend; --rules lists them.", nullptr, 0, 1, 0, ruleNames},
     {"rules", "", Kind::Flag, "List all rules."},
     {"schema", "KIND", Kind::Word, "Print the JSON Schema of catalogue or setups, for editors.", nullptr, 0, 1, 0, schemaKinds},
     {"format", "FORMAT", Kind::Word, "text, json or sarif (2.1.0, for code review systems).", "text", 0, 1, 0, [] { return namesOf(kFormats); }}},
    {"rfutils check terrain.asc terrain.tab",
     "rfutils check . --max-warnings 0",
     "rfutils check levels.txt --as recording --ignore last-line-cut --format json",
     "rfutils check --explain row-width",
     "rfutils check --rules",
     "rfutils check --schema catalogue",
     "rfutils check . --format sarif"},
    runCheck};
// clang-format on

}  // namespace rfu::command
