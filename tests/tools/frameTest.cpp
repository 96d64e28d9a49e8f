#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <sstream>

#include "runCommand.h"

namespace {

/// The subcommands in the order of the overview.
QStringList subcommands() {
    std::istringstream lines(runCommand({"--help"}).output);
    QStringList names;
    bool inList = false;
    for (std::string line; std::getline(lines, line);) {
        if (inList && line.empty()) {
            break;
        }
        if (inList) {
            names += splitWords(line).value(0);
        }
        inList = inList || line == "Commands:";
    }
    return names;
}

}  // namespace

TEST(Frame, answersWithoutSubcommand) {
    expectCommands({
        {"version", {"--version"}, "", 0, "rfutils " RFUTILS_VERSION "\n", ""},
        {"no command",
         {},
         "",
         2,
         "",
         "rfutils: a command is missing (rfutils --help lists them)\n"},
        {"unknown command",
         {"paint"},
         "",
         2,
         "",
         "rfutils: there is no command \"paint\" (rfutils --help lists them)\n"},
        {"unknown option",
         {"--paint"},
         "",
         2,
         "",
         "rfutils: there is no command \"--paint\" (rfutils --help lists them)\n"},
        {"a line end in a name stays in one line",
         {"a\nb\x7F"},
         "",
         2,
         "",
         "rfutils: there is no command \"a?b?\" (rfutils --help lists them)\n"},
        {"a long name is cut between its letters",
         {QString(59, 'x') + QString::fromUtf8("\u00B5\u00B5")},
         "",
         2,
         "",
         "rfutils: there is no command \"" + std::string(59, 'x') +
             "...\" (rfutils --help lists them)\n"},
    });
}

TEST(Frame, namesOfFilesAreUtf8WhateverTheCodec) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "nothing may be loaded ahead of the sanitizer";
#endif
    const SampleFolder folder;
    folder.add("m\u00FCnchen.json",
               R"({"a": [{"id": "x", "label": "y", "enum": 1, "dispSeq": 2}]})");
    // Blanks separate the names in LD_PRELOAD, and the build folder may have some in its name.
    const QString codec = QDir(folder.path()).filePath(QStringLiteral("codec.so"));
    ASSERT_TRUE(QFile::link(QStringLiteral(RFUTILS_EIGHT_BIT_CODEC), codec));
    qputenv("LD_PRELOAD", codec.toUtf8());
    const CommandResult result = runCommand(
        {"catalogue", QString::fromUtf8("m\u00FCnchen.json"), "--format", "csv"}, "", folder);
    qunsetenv("LD_PRELOAD");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output, "item,dispSeq,enum,id,label,offered\na,2,1,x,y,true\n");
}

TEST(Frame, overviewListsTheSubcommands) {
    const CommandResult overview = runCommand({"--help"});
    EXPECT_EQ(overview.exitStatus, 0);
    EXPECT_EQ(overview.errors, "");
    EXPECT_EQ(overview.output.rfind("Usage: rfutils COMMAND [options] [arguments]\n\nCommands:\n"
                                    "  convert ",
                                    0),
              0U);
    EXPECT_EQ(runCommand({"-h"}).output, overview.output);
    const QStringList names = subcommands();
    for (const char* name : {"convert", "units", "scale", "freq", "width", "range", "catalogue",
                             "setups", "dms", "dd"}) {
        EXPECT_TRUE(names.contains(name)) << name;
    }
}

TEST(Frame, everySubcommandHasHelpWithExamples) {
    for (const QString& name : subcommands()) {
        SCOPED_TRACE(name.toStdString());
        const CommandResult help = runCommand({name, "--help"});
        EXPECT_EQ(help.exitStatus, 0);
        EXPECT_EQ(help.errors, "");
        EXPECT_EQ(help.output.rfind("Usage: rfutils " + name.toStdString() + " [options]", 0), 0U);
        EXPECT_EQ(runCommand({name, "-h"}).output, help.output);
        for (const QString& line : QString::fromStdString(help.output).split('\n')) {
            EXPECT_LE(line.size(), 80) << line.toStdString();
        }
        const auto examples = examplesOf(help.output);
        EXPECT_GE(examples.size(), 2U);
        for (const std::string& example : examples) {
            EXPECT_EQ(example.rfind("rfutils " + name.toStdString(), 0), 0U) << example;
        }
    }
}

TEST(Frame, helpIsWhole) {
    const CommandResult help = runCommand({"dd", "--help"});
    EXPECT_EQ(help.output,
              "Usage: rfutils dd [options] DEGREES [MINUTES [SECONDS]]\n"
              "\n"
              "Show degrees, minutes and seconds as decimal degrees. The sign stands before the\n"
              "degrees, also before 0; seconds may have a fraction. Missing minutes and seconds\n"
              "are 0.\n"
              "\n"
              "Options:\n"
              "  -h, --help       Show this help.\n"
              "  --format FORMAT  text, csv or json. Default: text.\n"
              "\n"
              "Examples:\n"
              "  rfutils dd -33 52 7.68\n"
              "  rfutils dd -0 30 --format json\n");
}

TEST(Frame, examplesRunOnTheSamplesAsTheyStand) {
    const SampleFolder folder;
    folder.addSamples();
    int run = 0;
    for (const QString& name : subcommands()) {
        for (const std::string& example : examplesOf(runCommand({name, "--help"}).output)) {
            SCOPED_TRACE(example);
            const CommandResult result = runCommand(splitWords(example).mid(1), {}, folder);
            EXPECT_EQ(result.exitStatus, 0);
            EXPECT_EQ(result.errors, "");
            EXPECT_NE(result.output, "");
            ++run;
        }
    }
    EXPECT_GE(run, 40);
}

TEST(Frame, wrongUsageOfOptions) {
    expectCommands({
        {"unknown option",
         {"freq", "1", "--bogus"},
         "",
         2,
         "",
         "rfutils: there is no option \"--bogus\" (see rfutils freq --help)\n"},
        {"value missing at the end",
         {"freq", "1", "--format"},
         "",
         2,
         "",
         "rfutils: --format FORMAT: the value is missing (see rfutils freq --help)\n"},
        {"unknown format",
         {"freq", "1", "--format", "xml"},
         "",
         2,
         "",
         "rfutils: --format: \"xml\" is not text, csv or json (see rfutils freq --help)\n"},
        {"the format's name is exact",
         {"freq", "1", "--format=CSV"},
         "",
         2,
         "",
         "rfutils: --format: \"CSV\" is not text, csv or json (see rfutils freq --help)\n"},
        {"a flag takes no value",
         {"setups", "x", "--verbose=1"},
         "",
         2,
         "",
         "rfutils: --verbose takes no value (see rfutils setups --help)\n"},
        {"too many files",
         {"setups", "a.json", "b.json"},
         "",
         2,
         "",
         "rfutils: unexpected argument \"b.json\" (see rfutils setups --help)\n"},
        {"file missing",
         {"setups"},
         "",
         2,
         "",
         "rfutils: FILE is missing (see rfutils setups --help)\n"},
        {"no number",
         {"range", "--type", "1", "--min", "x", "--max", "1"},
         "",
         2,
         "",
         "rfutils: --min: \"x\" is not a number (see rfutils range --help)\n"},
        {"no frequency",
         {"convert", "1", "--to", "V/m", "--center", "100parsec"},
         "",
         2,
         "",
         "rfutils: --center: \"100parsec\" is not a frequency such as 88.1MHz or a number of MHz "
         "(see rfutils convert --help)\n"},
    });
}

TEST(Frame, negativeValuesNeedNoDashes) {
    expectCommands({
        {"first", {"freq", "-2.5"}, "", 0, "-2.500000 MHz\n", ""},
        {"between options",
         {"freq", "--format", "text", "-2.5", "--format", "text", "-3"},
         "",
         0,
         "-2.500000 MHz\n-3.000000 MHz\n",
         ""},
        {"without leading zero", {"freq", "-.5"}, "", 0, "-500.000 kHz\n", ""},
        {"behind --", {"freq", "--format", "text", "--", "-2.5"}, "", 0, "-2.500000 MHz\n", ""},
        {"behind -- nothing is an option",
         {"freq", "--", "--format"},
         "",
         1,
         "",
         "rfutils: \"--format\" is not a frequency such as 88.1MHz or a number of MHz\n"},
        {"as an option's value",
         {"range", "--type", "2", "--min", "-10", "--max", "-5"},
         "",
         0,
         " {Min: -10.00 dBm, Max: -5.00 dBm} \n",
         ""},
        {"as an option's value behind =",
         {"range", "--type=2", "--min=-10", "--max=-5"},
         "",
         0,
         " {Min: -10.00 dBm, Max: -5.00 dBm} \n",
         ""},
        {"infinity is a value, though no number",
         {"freq", "-inf"},
         "",
         1,
         "",
         "rfutils: \"-inf\" is not a frequency such as 88.1MHz or a number of MHz\n"},
        {"a blank behind the sign makes no option of a value",
         {"freq", "- 30"},
         "",
         1,
         "",
         "rfutils: \"- 30\" is not a frequency such as 88.1MHz or a number of MHz\n"},
        {"nor does a letter beyond ASCII",
         {"freq", QString::fromUtf8("-\u00B5")},
         "",
         1,
         "",
         "rfutils: \"-\u00B5\" is not a frequency such as 88.1MHz or a number of MHz\n"},
        {"a letter does",
         {"freq", "-Z"},
         "",
         2,
         "",
         "rfutils: there is no option \"-Z\" (see rfutils freq --help)\n"},
        {"a lone dash is a value",
         {"freq", "-"},
         "",
         1,
         "",
         "rfutils: \"-\" is not a frequency such as 88.1MHz or a number of MHz\n"},
    });
}

TEST(Frame, standardInput) {
    expectCommands({
        {"one value per line, blank lines skipped, either line end",
         {"freq"},
         "2\n\n  \r\n3\r\n4",
         0,
         "2.000000 MHz\n3.000000 MHz\n4.000000 MHz\n",
         ""},
        {"nothing", {"freq"}, "", 0, "", ""},
        {"what came before a bad line stays, and the line is named",
         {"freq"},
         "2\n\nx\n3\n",
         1,
         "2.000000 MHz\n",
         "rfutils: -:3: \"x\" is not a frequency such as 88.1MHz or a number of MHz\n"},
        {"the line end is no part of a bad value",
         {"freq"},
         "x\r\n",
         1,
         "",
         "rfutils: -:1: \"x\" is not a frequency such as 88.1MHz or a number of MHz\n"},
        {"not read when there are arguments", {"freq", "1.5"}, "x\n", 0, "1.500000 MHz\n", ""},
        {"binary noise",
         {"freq"},
         std::string("\x00\x01\xFF\n", 4),
         1,
         "",
         "rfutils: -:1: \"??\xFF\" is not a frequency such as 88.1MHz or a number of MHz\n"},
        {"a line beyond all measure",
         {"freq"},
         std::string(3 << 20, '1'),
         1,
         "",
         "rfutils: -:1: the line is longer than 1 MiB\n"},
        {"CSV of nothing has its heading",
         {"freq", "--format", "csv"},
         "",
         0,
         "input,MHz,text\n",
         ""},
        {"JSON of nothing is an empty array", {"freq", "--format", "json"}, "", 0, "[]\n", ""},
    });
}

TEST(Frame, jsonIsValidBeforeAnError) {
    const std::string notFrequency =
        "\"x\" is not a frequency such as 88.1MHz or a number of MHz\n";
    const std::string two = "[\n  {\"input\": \"2\", \"MHz\": 2, \"text\": \"2.000000 MHz\"}";
    const std::string three = ",\n  {\"input\": \"3\", \"MHz\": 3, \"text\": \"3.000000 MHz\"}";
    expectCommands({
        {"after one",
         {"freq", "2", "x", "3", "--format", "json"},
         "",
         1,
         two + "\n]\n",
         "rfutils: " + notFrequency},
        {"after two",
         {"freq", "--format", "json"},
         "2\n3\nx\n",
         1,
         two + three + "\n]\n",
         "rfutils: -:3: " + notFrequency},
        {"at the first",
         {"freq", "x", "--format", "json"},
         "",
         1,
         "[]\n",
         "rfutils: " + notFrequency},
        {"in another command",
         {"convert", "0", "1Volt", "--to", "dBm", "--format", "json"},
         "",
         1,
         "[\n  {\"input\": \"0\", \"dBm\": 0, \"value\": 0, \"unit\": \"dBm\", "
         "\"text\": \"0.0 dBm\"}\n]\n",
         "rfutils: there is no unit \"Volt\"; the nearest are V, V/m or dBmV\n"},
        {"CSV ends with a whole line",
         {"freq", "2", "x", "--format", "csv"},
         "",
         1,
         "input,MHz,text\n2,2,2.000000 MHz\n",
         "rfutils: " + notFrequency},
    });
}

// The statistics of a point need its frequency for a field unit, which plain traces lack: the error
// comes in the middle of a row.
TEST(Frame, jsonIsValidBeforeAnErrorInsideOfARow) {
    const SampleFolder folder;
    folder.add("t.csv", "-10,-20\n");
    const QStringList trace = {"trace", "t.csv", "--marker", "0", "--unit", "dBuV/m"};
    const QStringList json = {"--format", "json"};
    EXPECT_EQ(runCommand(trace + json, {}, folder).output, "[]\n");
    EXPECT_EQ(runCommand(trace + json + QStringList{"--all-points"}, {}, folder).output,
              "{\"markers\": []\n}\n");
}

TEST(Frame, valuesAreAnsweredWhileTheInputStaysOpen) {
    QProcess process;
    process.start(QStringLiteral(RFUTILS_COMMAND), {"freq"});
    process.write("2\n");
    ASSERT_TRUE(process.waitForReadyRead(30000));
    EXPECT_EQ(process.readAllStandardOutput().toStdString(), "2.000000 MHz\n");
    process.write("3\n");
    ASSERT_TRUE(process.waitForReadyRead(30000));
    EXPECT_EQ(process.readAllStandardOutput().toStdString(), "3.000000 MHz\n");
    process.closeWriteChannel();
    ASSERT_TRUE(process.waitForFinished(30000));
    EXPECT_EQ(process.exitCode(), 0);
}

TEST(Frame, directoryAsStandardInput) {
    QProcess process;
    process.setStandardInputFile(QStringLiteral("/"));
    process.start(QStringLiteral(RFUTILS_COMMAND), {"freq"});
    ASSERT_TRUE(process.waitForFinished(30000));
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_EQ(process.readAllStandardOutput().toStdString(), "");
    EXPECT_EQ(process.readAllStandardError().toStdString(), "rfutils: -: Is a directory\n");
}

TEST(Frame, fullDiskAsStandardOutput) {
    QProcess process;
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start(QStringLiteral(RFUTILS_COMMAND), {"freq", "1"});
    ASSERT_TRUE(process.waitForFinished(30000));
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_EQ(process.readAllStandardError().toStdString(),
              "rfutils: standard output: No space left on device\n");
}

TEST(Frame, manyLinesComeWholeAcrossBlocks) {
    // Lines of 7 bytes, so that the blocks of 65536 bytes end inside of lines.
    std::string input;
    std::string expected;
    for (int i = 0; i < 50000; ++i) {
        const std::string number = std::to_string(100000 + i);
        input += number + "\n";
        expected += number.substr(0, 3) + "." + number.substr(3) + "000000 GHz\n";
    }
    const CommandResult result = runCommand({"freq"}, input);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, expected);
}
