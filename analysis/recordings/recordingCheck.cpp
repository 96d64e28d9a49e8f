#include "analysis/recordings/recordingCheck.h"

#include <QByteArray>
#include <QFile>
#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "analysis/recordings/recordingLine.h"
#include "analysis/recordings/sweepReader.h"
#include "analysis/support/csvLine.h"
#include "analysis/support/files.h"
#include "analysis/support/inputError.h"
#include "analysis/support/lineReader.h"
#include "analysis/support/plainText.h"

namespace rfu {

namespace {

constexpr Rule kRecordingRules[] = {
    kUtf16,
    kLineEnds,
    {"sweep-line-skipped", Severity::Warning,
     "A line that is neither a hop of a sweep nor a trace of levels is left out as if it were not "
     "there; --strict makes it an error. The points of a hop count as not measured in that sweep.",
     "2024-05-04, 21:15:00, 88000000, 90500000, 39062.5, 10, -80.1, -8O.2",
     "Correct the line or delete it."},
    {"last-line-cut", Severity::Warning,
     "A last line without line end that has not all its levels, or one with fewer decimals, may be "
     "cut and is left out.",
     "-80.1,-80.2,-80.3\n-80.1,-80",
     "Delete the line. Recorders that are stopped write such lines."},
    {"data-cut", Severity::Warning,
     "The compressed data ends early. What comes before the cut counts, but for its last line.",
     "a gzip file whose recorder was stopped", "Unpack the file and compress what it holds again."},
    {"reading-ends", Severity::Error,
     "Nothing behind this place is read: a line is longer than 1 MiB, or the compressed data is "
     "damaged. The commands on recordings refuse the file.",
     "a line of two million characters", "Delete what stands there, or copy the file again."},
    {"no-sweep", Severity::Error,
     "The file holds no whole sweep. The commands on recordings refuse it.",
     "a file with a header line only",
     "Record again, or name another file: a mask or a correction is no recording."}};

constexpr std::size_t kLearnedSweeps = 4;  // as the commands on recordings do

void readSweeps(const QString& file, Findings& findings) {
    SweepReader reader(file, kLearnedSweeps, {}, [&](const InputError& error) {
        findings.add("sweep-line-skipped", error.line(), 0, "skipped: " + error.problem());
    });
    Sweep sweep;
    while (reader.next(sweep)) {
    }
    if (reader.cutLine() > 0) {
        findings.add("last-line-cut", reader.cutLine(), 0,
                     "skipped: the last line has no line end and not all its levels");
    }
    if (reader.endsEarly()) {
        findings.add("data-cut", "the compressed data ends early");
    }
    if (!reader.hasSweeps()) {
        findings.add("no-sweep", "refused: holds no whole sweep");
    }
}

/// Whether the first line with data is a hop.
/// @param next the next line, false at the end
template <typename Next>
bool beginWithHop(Next next) {
    std::string_view line;
    bool mayBeHeader = true;
    while (next(line)) {
        if (isBlankOrComment(line)) {
            continue;
        }
        if (!mayBeHeader || !looksLikeHeader(line)) {
            return looksLikeHop(line);
        }
        mayBeHeader = false;
    }
    return false;
}

bool takeLine(std::string_view& rest, std::string_view& line) {
    if (rest.empty()) {
        return false;
    }
    line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    return true;
}

/// The beginning of a recording in UTF-16, which is none to the readers of recordings but is meant as one.
std::optional<std::string> wideBeginOf(const QString& file) {
    constexpr qint64 kEnough = 65536;
    if (!sizeOfRegular(file)) {
        return std::nullopt;
    }
    QFile recording;
    openRegular(recording, file);
    return inPlainText(viewOf(recording.read(kEnough)), {std::string(kLineEnds.name)});
}

}  // namespace

RuleTable recordingRules() {
    return kRecordingRules;
}

Findings checkRecording(const QString& file) {
    Findings findings(file, kRecordingRules);
    { const LineReader requireReadable(file); }
    try {
        readSweeps(file, findings);
    } catch (const InputError& error) {
        findings.add("reading-ends", error.line(), 0,
                     "reading ends: " + std::string(error.problem()));
    }
    if (findings.hasError() && sizeOfRegular(file)) {
        if (auto notPlain = notPlainText(file, kRecordingRules)) {
            return std::move(*notPlain);
        }
    }
    findings.sort();
    return findings;
}

bool holdsHops(const QString& file) {
    try {
        if (const auto text = wideBeginOf(file)) {
            std::string_view rest = *text;
            return beginWithHop([&rest](std::string_view& line) { return takeLine(rest, line); });
        }
        LineReader lines(file);
        return beginWithHop([&lines](std::string_view& line) { return lines.next(line); });
    } catch (const InputError&) {  // reported where the file is checked
    }
    return false;
}

}  // namespace rfu
