#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <atomic>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "runCommand.h"

#include <sys/stat.h>
#include <unistd.h>

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
    const auto refuses = [](const char* name, const QStringList& words, const std::string& error) {
        return CommandCase{name, words, "",
                           2,    "",    "rfutils: " + error + " (rfutils --help lists them)\n"};
    };
    expectCommands({
        shows("version", "--version", "rfutils " RFUTILS_VERSION "\n"),
        shows("version in short", "-V", "rfutils " RFUTILS_VERSION "\n"),
        refuses("no command", {}, "a command is missing"),
        refuses("unknown command", {"paint"}, "there is no command \"paint\""),
        refuses("unknown option", {"--paint"}, "there is no command \"--paint\""),
        refuses("a wrong letter", {"catalog"},
                "there is no command \"catalog\"; did you mean catalogue?"),
        refuses("two letters exchanged", {"Rnage"},
                "there is no command \"Rnage\"; did you mean range?"),
        refuses("a command that is no subcommand", {"hepl"},
                "there is no command \"hepl\"; did you mean help?"),
        refuses("help for an unknown command", {"help", "tarce"},
                "there is no command \"tarce\"; did you mean trace?"),
        refuses("an option of the command", {"--vers"},
                "there is no command \"--vers\"; did you mean --version?"),
        refuses("a line end in a name stays in one line", {"a\nb\x7F"},
                "there is no command \"a\\nb\\x7f\""),
        refuses("a long name is cut between its letters",
                {QString(59, 'x') + QString::fromUtf8("\u00B5\u00B5")},
                "there is no command \"" + std::string(59, 'x') + "...\""),
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
    EXPECT_EQ(runCommand({"help"}).output, overview.output);
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
        EXPECT_EQ(help.output.rfind("Usage: rfutils " + name.toStdString() + " ", 0), 0U);
        EXPECT_EQ(runCommand({name, "-h"}).output, help.output);
        EXPECT_EQ(runCommand({"help", name}).output, help.output);
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

TEST(Frame, usageTellsWhatMayBeLeftOut) {
    const auto usageOf = [](const char* name) {
        const std::string help = runCommand({name, "--help"}).output;
        return help.substr(0, help.find('\n'));
    };
    EXPECT_EQ(usageOf("units"), "Usage: rfutils units [options]");
    EXPECT_EQ(usageOf("convert"), "Usage: rfutils convert --to UNIT [options] [VALUE...]");
    EXPECT_EQ(usageOf("raster"), "Usage: rfutils raster [options] FILE");
    EXPECT_EQ(usageOf("trace"), "Usage: rfutils trace [options] FILE...");
    EXPECT_EQ(usageOf("profile"),
              "Usage: rfutils profile --start E,N --end E,N --heights H1,H2 --center FREQ");
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
            // What a table leaves out belongs to it, and among the samples are masks.
            if (result.errors.rfind("rfutils: note: left out to fit ", 0) != 0 &&
                result.errors.rfind("rfutils: note: not checked, ", 0) != 0) {
                EXPECT_EQ(result.errors, "");
            }
            EXPECT_TRUE(!result.output.empty() ||
                        name == QLatin1String("check"));  // nothing to find
            ++run;
        }
    }
    EXPECT_GE(run, 40);
}

TEST(Frame, wrongUsageOfOptions) {
    expectCommands({
        misuses("unknown option", "freq 1 --bogus", "there is no option \"--bogus\""),
        misuses("near a known option", "trace x --markr 1",
                "there is no option \"--markr\"; did you mean --marker?"),
        misuses("with one dash", "freq 1 -format csv",
                "there is no option \"-format\"; did you mean --format?"),
        misuses("value missing at the end", "freq 1 --format",
                "--format FORMAT: the value is missing"),
        misuses("unknown format", "freq 1 --format xml",
                "--format: \"xml\" is not text, csv or json"),
        misuses("the format's name is exact", "freq 1 --format=CSV",
                "--format: \"CSV\" is not text, csv or json"),
        misuses("a flag takes no value", "setups x --verbose=1", "--verbose takes no value"),
        misuses("too many files", "setups a.json b.json", "unexpected argument \"b.json\""),
        misuses("file missing", "setups", "FILE is missing"),
        misuses("no number", "range --type 1 --min x --max 1", "--min: \"x\" is not a number"),
        misuses("no frequency", "convert 1 --to V/m --center 100parsec",
                "--center: \"100parsec\" is not a frequency such as 88.1MHz or a number of MHz"),
    });
}

TEST(Frame, negativeValuesNeedNoDashes) {
    expectCommands({
        shows("first", "freq -2.5", "-2.500000 MHz\n"),
        shows("between options", "freq --format text -2.5 --format text -3",
              "-2.500000 MHz\n-3.000000 MHz\n"),
        shows("without leading zero", "freq -.5", "-500.000 kHz\n"),
        shows("behind --", "freq --format text -- -2.5", "-2.500000 MHz\n"),
        fails("behind -- nothing is an option", "freq -- --format",
              "\"--format\" is not a frequency such as 88.1MHz or a number of MHz"),
        shows("as an option's value", "range --type 2 --min -10 --max -5",
              " {Min: -10.00 dBm, Max: -5.00 dBm} \n"),
        shows("as an option's value behind =", "range --type=2 --min=-10 --max=-5",
              " {Min: -10.00 dBm, Max: -5.00 dBm} \n"),
        fails("infinity is a value, though no number", "freq -inf",
              "\"-inf\" is not a frequency such as 88.1MHz or a number of MHz"),
        fails("a blank behind the sign makes no option of a value", "freq \"- 30\"",
              "\"- 30\" is not a frequency such as 88.1MHz or a number of MHz"),
        fails("nor does a letter beyond ASCII", "freq -\u00B5",
              "\"-\u00B5\" is not a frequency such as 88.1MHz or a number of MHz"),
        misuses("a letter does", "freq -Z", "there is no option \"-Z\""),
        fails("a lone dash is a value", "freq -",
              "\"-\" is not a frequency such as 88.1MHz or a number of MHz"),
    });
}

TEST(Frame, standardInput) {
    expectCommands({
        shows("one value per line, blank lines skipped, either line end", "freq",
              "2.000000 MHz\n3.000000 MHz\n4.000000 MHz\n")
            .given("2\n\n  \r\n3\r\n4"),
        shows("nothing", "freq", ""),
        fails("what came before a bad line stays, and the line is named", "freq",
              "-:3: \"x\" is not a frequency such as 88.1MHz or a number of MHz")
            .given("2\n\nx\n3\n")
            .after("2.000000 MHz\n"),
        fails("the line end is no part of a bad value", "freq",
              "-:1: \"x\" is not a frequency such as 88.1MHz or a number of MHz")
            .given("x\r\n"),
        shows("not read when there are arguments", "freq 1.5", "1.500000 MHz\n").given("x\n"),
        fails("binary noise", "freq",
              "-:1: \"\\x00\\x01\uFFFD\" is not a frequency such as 88.1MHz or a number of MHz")
            .given(std::string("\x00\x01\xFF\n", 4)),
        fails("controls beyond ASCII, of the direction of text, of lines", "freq",
              "-:1: \"\\x9b\\u202e\\u2066\\u2028\uFFFD\u00B5\" is not a frequency such as "
              "88.1MHz or a number of MHz")
            .given("\xC2\x9B\u202E\u2066\u2028\x9B\u00B5\n"),
        fails("a line beyond all measure", "freq", "-:1: the line is longer than 1 MiB")
            .given(std::string(3 << 20, '1')),
        shows("CSV of nothing has its heading", "freq --format csv", "input,MHz,text\n"),
        shows("JSON of nothing is an empty array", "freq --format json", "[]\n"),
    });
}

TEST(Frame, jsonIsValidBeforeAnError) {
    const std::string notFrequency = "\"x\" is not a frequency such as 88.1MHz or a number of MHz";
    const std::string two = "[\n  {\"input\": \"2\", \"MHz\": 2, \"text\": \"2.000000 MHz\"}";
    const std::string three = ",\n  {\"input\": \"3\", \"MHz\": 3, \"text\": \"3.000000 MHz\"}";
    expectCommands({
        fails("after one", "freq 2 x 3 --format json", notFrequency).after(two + "\n]\n"),
        fails("after two", "freq --format json", "-:3: " + notFrequency)
            .given("2\n3\nx\n")
            .after(two + three + "\n]\n"),
        fails("at the first", "freq x --format json", notFrequency).after("[]\n"),
        fails("in another command", "convert 0 1Volt --to dBm --format json",
              "there is no unit \"Volt\"; the nearest are V, V/m or dBmV")
            .after("[\n  {\"input\": \"0\", \"dBm\": 0, \"value\": 0, \"unit\": \"dBm\", "
                   "\"text\": \"0.0 dBm\"}\n]\n"),
        fails("CSV ends with a whole line", "freq 2 x --format csv", notFrequency)
            .after("input,MHz,text\n2,2,2.000000 MHz\n"),
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

namespace {

/// Runs a line of the shell in which $0 is the command.
CommandResult runShell(const QString& line, const SampleFolder& folder = {}) {
    QProcess process;
    process.setWorkingDirectory(folder.path());
    process.start(QStringLiteral("sh"), {"-c", line, QStringLiteral(RFUTILS_COMMAND)});
    EXPECT_TRUE(process.waitForFinished(60000));
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            process.readAllStandardOutput().toStdString(),
            process.readAllStandardError().toStdString()};
}

}  // namespace

// The file that is read must not become standard output.
TEST(Frame, closedStandardStreamsAreErrors) {
    const SampleFolder folder;
    folder.addSamples();
    const char* const kNoOutput = "rfutils: standard output: Bad file descriptor\n";
    const struct {
        const char* line;
        const char* errors;
    } kRows[] = {
        {"\"$0\" dms 12.5 >&-", kNoOutput},
        {"\"$0\" catalogue catalogue.json >&-", kNoOutput},
        {"\"$0\" freq <&-", "rfutils: -: Bad file descriptor\n"},
        {"\"$0\" freq x 2>&-", ""},
        {"\"$0\" freq 1 <&- >&- 2>&-", ""},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
        const CommandResult result = runShell(QString::fromUtf8(row.line), folder);
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_EQ(result.errors, row.errors);
        EXPECT_EQ(result.output, "");
    }
}

TEST(Frame, littleMemoryEndsWithALine) {
    const QString limited = QStringLiteral("ulimit -v 200000 && exec \"$0\" ");
    if (runShell(limited + "--version").exitStatus != 0) {
        GTEST_SKIP() << "so little memory is not enough to start";
    }
    const SampleFolder folder;
    const std::string entry = R"({"id": "x", "label": "y", "enum": 1, "dispSeq": 1})";
    std::string choices = entry;
    for (int i = 0; i < 500000; ++i) {
        choices += "," + entry;
    }
    folder.add("big.json", "{\"a\": [" + choices + "]}");
    const CommandResult result = runShell(limited + "catalogue big.json", folder);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.errors, "rfutils: out of memory\n");
    EXPECT_EQ(result.output, "");
}

TEST(Frame, picturesReplaceOnlyPictures) {
    SampleFolder folder;
    const std::string recording = "-10,-20\n";
    folder.add("in.png", recording);
    ASSERT_TRUE(QFile::link(QStringLiteral("in.png"), folder.path() + "/link.png"));
    ASSERT_TRUE(QDir(folder.path()).mkdir("folder.png"));
    const auto refuses = [&](const char* name, const QString& picture, const std::string& reason) {
        return fails(name, QStringList{"trace", "in.png", "--plot", picture},
                     picture.toStdString() + ": cannot be written: " + reason);
    };
    expectCommands(
        {
            refuses("the input", "in.png", "it is the input in.png"),
            refuses("the input behind a link", "link.png", "it is the input in.png"),
            refuses("a folder", "folder.png", "it is not a regular file"),
            refuses("another format", "x.jpg", "plots are PNG or SVG and end in .png or .svg"),
            refuses("a dash", "-", "plots are PNG or SVG and end in .png or .svg"),
            fails("another picture in SVG", "waterfall in.png --png x.svg",
                  "x.svg: cannot be written: pictures are PNG and end in .png"),
        },
        folder);
    EXPECT_EQ(folder.read("in.png"), recording);
}

namespace {

/// Puts files in turn into the place of another one, as fast as possible.
class Replacing {
public:
    Replacing(std::string place, std::vector<std::string> files)
        : place_(std::move(place)), files_(std::move(files)), thread_([this] { run(); }) {}
    ~Replacing() {
        isOver_ = true;
        thread_.join();
    }

private:
    void run() {
        const std::string next = place_ + ".next";
        while (!isOver_) {
            for (const std::string& file : files_) {
                EXPECT_EQ(::link(file.c_str(), next.c_str()), 0);
                EXPECT_EQ(::rename(next.c_str(), place_.c_str()), 0);
                ::unlink(next.c_str());  // which rename() leaves where both are the same file
            }
        }
    }

    std::string place_;
    std::vector<std::string> files_;
    std::atomic<bool> isOver_{false};
    std::thread thread_;  // last: uses the others
};

}  // namespace

// Neither a mixture of two files, nor waiting for the writer of a FIFO.
TEST(Frame, filesThatAreReplacedAreReadWholeOrRefused) {
    const auto entries = [](const std::string& group, int count) {
        std::string list;
        for (int i = 0; i < count; ++i) {
            list += (i == 0 ? "" : ", ") + (R"({"id": ")" + group + std::to_string(i)) +
                    R"(", "label": "x", "enum": 1, "dispSeq": 1})";
        }
        return "{\"" + group + "\": [" + list + "]}";
    };
    const auto grid = [](const std::string& cells) {
        return "ncols 3\nnrows 1\nNODATA_value 0\n" + cells + "\n";
    };
    const auto georeference = [](const std::string& x) {
        return "Type RASTER\nFile m.asc\n(" + x +
               ",1) (0,0) Label \"Pt 1\"\n(2,1) (3,0) Label \"Pt 2\"\n(2,0) (3,1) Label \"Pt 3\"\n"
               "(1,0) (0,1) Label \"Pt 4\"\nUnits degree\n";
    };
    const struct {
        const char* command;
        const char* file;
        std::string one;
        std::string other;
    } kRows[] = {
        {"catalogue", "m.json", entries("a", 300), entries("b", 200)},
        {"setups", "m.json", entries("a", 300), entries("b", 200)},
        {"raster", "m.asc", grid("1 2 3"), grid("4 5 6")},
        {"tab", "m.tab", georeference("1"), georeference("0.5")},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.command);
        const SampleFolder folder;
        const QStringList command = {row.command, row.file, "--format", "csv"};
        folder.add(row.file, row.one);
        const std::string one = runCommand(command, "", folder).output;
        folder.add(row.file, row.other);
        const std::string other = runCommand(command, "", folder).output;
        ASSERT_NE(one, other);
        const std::string path = folder.path().toStdString() + '/';
        folder.add("one", row.one);
        folder.add("other", row.other);
        ASSERT_EQ(::mkfifo((path + "fifo").c_str(), 0600), 0);
        const Replacing replacing(path + row.file, {path + "one", path + "fifo", path + "other"});
        const std::string start = std::string("rfutils: ") + row.file;
        for (int i = 0; i < 20; ++i) {
            const CommandResult result = runCommand(command, "", folder);
            if (result.exitStatus == 0) {
                EXPECT_TRUE(result.output == one || result.output == other) << result.output;
            } else {
                EXPECT_TRUE(result.errors == start + ": changed while it was read\n" ||
                            result.errors == start + ": is not a regular file\n")
                    << result.errors;
            }
        }
    }
}

TEST(Frame, filesThatTheSystemMakesUpAreRefused) {
    const SampleFolder folder;
    const QString link = folder.path() + "/map.asc";
    ASSERT_TRUE(QFile::link("/proc/self/status", link));
    const std::string reason = ": is made up by the system as it is read; copy it first";
    expectCommands({fails("JSON", "catalogue /proc/self/status", "/proc/self/status" + reason),
                    fails("behind a link", "raster map.asc", "map.asc" + reason)},
                   folder);
    if (QFile::exists("/sys/kernel/uevent_seqnum")) {
        expectCommands({fails("of the other system", "setups /sys/kernel/uevent_seqnum",
                              "/sys/kernel/uevent_seqnum" + reason)});
    }
}

// The files that lie beside a raster are inputs too.
TEST(Frame, picturesReplaceNoFileOfARaster) {
    SampleFolder folder;
    folder.addSamples();
    const QDir inside(folder.path());
    const struct {
        const char* command;
        const char* map;
        const char* input;
        const char* named;
    } kRows[] = {
        {"raster", "terrain.asc", "terrain.clr", "terrain.clr"},
        {"raster", "terrain_bil.bil", "terrain_bil.hdr", "terrain_bil.hdr"},
        {"raster", "terrain_bil.hdr", "terrain_bil.bil", "terrain_bil.bil"},
        {"tab", "terrain.tab", "terrain.tab", "terrain.tab"},
        {"tab", "terrain.tab", "terrain.asc", "./terrain.asc"},
        {"tab", "terrain.tab", "terrain.clr", "./terrain.clr"},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(std::string(row.command) + " and " + row.input);
        QFile::remove(inside.filePath("link.png"));
        ASSERT_TRUE(QFile::link(QLatin1String(row.input), inside.filePath("link.png")));
        const std::string before = folder.read(row.input);
        EXPECT_EQ(runCommand({row.command, row.map, "--png", "link.png"}, "", folder).errors,
                  std::string("rfutils: link.png: cannot be written: it is the input ") +
                      row.named + "\n");
        EXPECT_EQ(folder.read(row.input), before);
    }
}

// A limit of the file size stands for a full disk.
TEST(Frame, pictureThatDoesNotFitTheDisk) {
    const SampleFolder folder;
    folder.add("in.csv", "-10,-20\n");
    folder.add("x.png", "older");
    const CommandResult result = runShell(
        QStringLiteral("ulimit -f 1; exec \"$0\" trace in.csv --marker 0 --plot x.png"), folder);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.errors, "rfutils: x.png: cannot be written: File too large\n");
    EXPECT_NE(result.output, "");
    EXPECT_EQ(folder.read("x.png"), "older");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 2);
}

TEST(Frame, warningsOfQtEndNothing) {
    const SampleFolder folder;
    folder.add("in.csv", "-10,-20\n");
    const CommandResult result =
        runShell(QStringLiteral("unset XDG_RUNTIME_DIR; QT_FATAL_WARNINGS=1 exec \"$0\" "
                                "trace in.csv --plot x.png"),
                 folder);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.errors, "");
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
