#include <gtest/gtest.h>

#include <QProcess>
#include <cstdlib>
#include <sstream>
#include <string>

#include "runCommand.h"

#include <fcntl.h>
#include <unistd.h>

namespace {

const std::string kHeader = "nrows 2\nxllcorner 0\nyllcorner 0\ncellsize 30\nNODATA_value -9999\n";
const std::string kRows = "1 2 3 4\n5 6 7 8\n";
const std::string kGood = "ncols 4\n" + kHeader + kRows;
const char* const kColors = "0 0 0 255\n100 0 255 0\n";

/// Findings, so that the status is 1.
CommandCase finds(const char* name, const Words& words, const std::string& output) {
    CommandCase result = shows(name, words, output);
    result.exitStatus = 1;
    return result;
}

/// What the command writes to a terminal.
std::string onTerminal(const QStringList& arguments, const SampleFolder& folder,
                       const char* noColor) {
    const int master = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    EXPECT_GE(master, 0);
    EXPECT_EQ(::grantpt(master), 0);
    EXPECT_EQ(::unlockpt(master), 0);
    const QString name = QString::fromLocal8Bit(::ptsname(master));
    const int slave = ::open(name.toLocal8Bit().constData(), O_RDWR | O_NOCTTY);
    QProcess process;
    process.setWorkingDirectory(folder.path());
    process.setStandardOutputFile(name);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TERM"), QStringLiteral("xterm"));
    environment.insert(QStringLiteral("NO_COLOR"), QString::fromLatin1(noColor));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(RFUTILS_COMMAND), arguments);
    EXPECT_TRUE(process.waitForFinished());
    std::string text;
    char block[4096];
    for (ssize_t got = 0; (got = ::read(master, block, sizeof block)) > 0;) {
        text.append(block, static_cast<std::size_t>(got));
    }
    ::close(slave);
    ::close(master);
    std::string lines;
    for (const char c : text) {
        lines += c == '\r' ? "" : std::string(1, c);
    }
    return lines;
}

}  // namespace

TEST(Check, ShowsAFindingPerLine) {
    SampleFolder folder;
    folder.add("map.asc", "NCOLS 4\n" + kHeader + kRows);
    folder.add("map.clr", kColors);
    folder.add("unit.asc", "units m\n" + kGood);
    folder.add("unit.clr", kColors);
    folder.add("table.csv", "frequency,dB\n88,-3\n");
    expectCommands(
        {finds("text", "check map.asc",
               "map.asc:1:1: error: NCOLS is not read: write ncols, keys are in lower case, except "
               "NODATA_value [key-case]\n"
               "map.asc:1:1: error: shows nothing: the map has 0 columns and 2 rows; no line gives "
               "ncols [size-unusable]\n"),
         finds("JSON", "check map.asc --format json",
               "[\n"
               "  {\"file\": \"map.asc\", \"line\": 1, \"column\": 1, \"severity\": \"error\", "
               "\"rule\": \"key-case\", \"message\": \"NCOLS is not read: write ncols, keys are in "
               "lower case, except NODATA_value\"},\n"
               "  {\"file\": \"map.asc\", \"line\": null, \"column\": null, \"severity\": "
               "\"error\", \"rule\": \"size-unusable\", \"message\": \"shows nothing: the map "
               "has 0 columns and 2 rows; no line gives ncols\"}\n"
               "]\n"),
         shows("JSON without findings", "check unit.asc --format json --ignore key-unknown",
               "[]\n"),
         shows("a warning", "check unit.asc",
               "unit.asc:1:1: warning: \"units\" is not read [key-unknown]\n"),
         shows("as many warnings as may be", "check unit.asc --max-warnings 1",
               "unit.asc:1:1: warning: \"units\" is not read [key-unknown]\n"),
         finds("a warning too many", "check unit.asc --max-warnings 0",
               "unit.asc:1:1: warning: \"units\" is not read [key-unknown]\n"),
         shows("what does not count",
               "check map.asc --ignore key-case --ignore size-unusable --max-warnings 0", ""),
         finds("no such file", "check missing.asc",
               "missing.asc:1:1: error: refused: No such file or directory [file-unreadable]\n"),
         finds("a file of no known kind", "check table.csv unit.asc",
               "table.csv:1:1: error: not checked: its kind cannot be told from its name or "
               "content; name it with --as [kind-unknown]\n"
               "unit.asc:1:1: warning: \"units\" is not read [key-unknown]\n"),
         shows("another kind",
               "check unit.clr --as recording --ignore sweep-line-skipped "
               "--ignore no-sweep",
               "")},
        folder);
}

TEST(Check, NamesWhatItPassesOverInFolders) {
    SampleFolder folder;
    folder.add("map.asc", kGood);
    folder.add("map.clr", kColors);
    folder.add("mask.csv", "88,-30\n");
    folder.add("NOTES.TXT", "");
    const std::string note = "not checked, for nothing in them tells their kind: ";
    expectCommands({shows("one", "check .", "").noting(note + "./mask.csv"),
                    shows("once", "check . .", "").noting(note + "./mask.csv")},
                   folder);
    folder.add("a.JSON", "");
    folder.add("b.json", "[1]");
    folder.add("c.csv.gz", "88,-30\n");
    expectCommands(
        {shows("many", "check .", "").noting(note + "./a.JSON, ./b.json, ./c.csv.gz and 1 more"),
         shows("none that counts", "check . --ignore kind-unknown", "")},
        folder);
    folder.add(".rfutils-check", "kind-unknown *.json *.gz\n");
    expectCommands(
        {shows("but those of a list", "check . --format json", "[]\n").noting(note + "./mask.csv")},
        folder);
}

TEST(Check, SaysHowManyMoreThereAre) {
    SampleFolder folder;
    std::string file;
    for (int i = 0; i < 250; ++i) {
        file += "units m\n";
    }
    folder.add("map.asc", file + kGood);
    folder.add("map.clr", kColors);
    const CommandResult result =
        runCommand({"check", "map.asc", "--max-warnings", "249"}, "", folder);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_NE(result.output.find("map.asc:200:1: warning: \"units\" is not read [key-unknown]\n"
                                 "map.asc:1:1: note: 50 more are not listed [key-unknown]\n"),
              std::string::npos)
        << result.output;
}

TEST(Check, ShowsThePlaceOnATerminal) {
    SampleFolder folder;
    folder.add("map.asc", "\tunits \u00B5 m\nn\u00B5 m\n" + kGood);
    folder.add("map.clr", kColors);
    EXPECT_EQ(onTerminal({"check", "map.asc"}, folder, "1"),
              "map.asc:1:2: warning: \"units\" is not read [key-unknown]\n"
              "   units \u00B5 m\n"
              "   ^\n"
              "map.asc:2:1: warning: \"n\" is not read [key-unknown]\n"
              "  n\u00B5 m\n"
              "  ^\n");
    EXPECT_EQ(
        onTerminal({"check", "map.asc"}, folder, "").substr(0, 60),
        std::string("map.asc:1:2: \x1b[1;35mwarning\x1b[0m: \"units\" is not read [key-unknown]\n")
            .substr(0, 60));
    folder.add("map.asc", kGood.substr(0, kGood.size() - 2) + std::string(1000, ' ') + "8x" +
                              std::string(1000, ' ') + "\n");
    EXPECT_EQ(onTerminal({"check", "map.asc"}, folder, "1"),
              "map.asc:8:1007: error: \"8x\" is no number: read as 8 [no-number]\n"
              "  ..." +
                  std::string(40, ' ') + "8x" + std::string(78, ' ') + "...\n  " +
                  std::string(43, ' ') + "^\n");
}

TEST(Check, RefusesWrongUsage) {
    expectCommands(
        {misuses("no file", "check", "FILE is missing"),
         misuses("another kind", "check a --as png",
                 "--as: \"png\" is not asc, hdr, bil, clr, tab, catalogue, setups or recording"),
         misuses("another schema", "check --schema asc",
                 "--schema: \"asc\" is not catalogue or setups"),
         misuses("another format", "check a --format csv",
                 "--format: \"csv\" is not text, json or sarif"),
         misuses("no rule", "check a --ignore key-unknwon",
                 "--ignore: there is no \"key-unknwon\"; did you mean key-unknown?"),
         misuses("no rule to explain", "check --explain zzz", "--explain: there is no \"zzz\""),
         misuses("a negative number", "check a --max-warnings -1",
                 "--max-warnings: a number from 0"),
         misuses("an explanation and a file", "check a.asc --explain key-case",
                 "--rules, --explain and --schema take no file")});
}

TEST(Check, ExplainsEachRule) {
    std::istringstream rules(runCommand({"check", "--rules"}).output);
    std::string line;
    std::getline(rules, line);
    EXPECT_EQ(line.substr(0, 5), "rule ");
    int count = 0;
    for (; std::getline(rules, line); ++count) {
        const std::string rule = line.substr(0, line.find(' '));
        const CommandResult result =
            runCommand({"check", "--explain", QString::fromStdString(rule)});
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_EQ(result.output.rfind(rule + " (", 0), 0U);
    }
    EXPECT_GT(count, 50);
    expectCommands({shows("one", "check --explain point-repeated",
                          "point-repeated (warning in: tab)\n\n"
                          "A control point stands in the file more than once. The last one "
                          "counts.\n\n"
                          "Example:\n\n"
                          "    (1,2) (0,0) Label \"Pt 1\"\n"
                          "    (3,4) (0,0) Label \"Pt 1\"\n\n"
                          "Mend: Delete the line that does not hold.\n")});
}
