#include <QString>
#include <memory>
#include <optional>
#include <string>

#include "analysis/checks/checkFiles.h"
#include "analysis/checks/fileKind.h"
#include "check/findingWriter.h"
#include "subcommands.h"
#include "support/commandLine.h"
#include "support/errors.h"

namespace rfu::command {

namespace {

/// "asc, hdr or tab"
std::string kindList() {
    std::string list;
    for (const KnownKind& known : knownKinds()) {
        list += list.empty() ? "" : &known == &knownKinds().back() ? " or " : ", ";
        list += known.name;
    }
    return list;
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
    throw UsageError("--as: " + name + " is not " + kindList());
}

void runCheck(const CommandLine& line) {
    const auto writer = textFindings();
    bool hasErrors = false;
    checkFiles(line.texts("FILE"), {askedKind(line)}, [&](const CheckedFile& file) {
        writer->add(file);
        hasErrors = hasErrors || file.findings.hasError();
    });
    writer->finish();
    if (hasErrors) {
        throw Ended{kExitBadInput};
    }
}

}  // namespace

// clang-format off
constexpr Subcommand kCheck = {
    "check", "Say what the library skips, cuts or misreads in files",
    "Say what the library refuses, skips, cuts or misreads in files, before they are on the instrument.\n"
    "A folder is walked for files of known kinds. The exit status is 1 if there are errors.",
    {{"FILE", Kind::File, 1, kAnyCount}},
    {{"as", "KIND", Kind::Text, "The kind of the files, whatever their names: asc, hdr, bil or tab."}},
    {"rfutils check terrain.asc",
     "rfutils check ."},
    runCheck};
// clang-format on

}  // namespace rfu::command
