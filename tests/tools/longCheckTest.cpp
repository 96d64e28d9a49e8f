// What `rfutils check` takes for long files: time in proportion to their length, and memory that does not grow with it,
// or in proportion where a file is held as a whole. RFUTILS_LONG_TESTS=1 makes them of 100 MB. Lines of more than 1 MB.
#include <gtest/gtest.h>
#include <support/samples.h>

#include <QProcess>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <string>

#include "runCommand.h"

namespace {

constexpr long long kListed = 200;  // findings of a rule

/// A file, and how many findings of the rule that it breaks.
struct LongFile {
    std::string text;
    long long faults = 0;
};

std::string repeated(const std::string& text, std::size_t times) {
    std::string all;
    all.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

LongFile lines(const std::string& first, const std::string& line, std::size_t bytes) {
    const std::size_t count = bytes / line.size();
    return {first + repeated(line, count), static_cast<long long>(count)};
}

/// A square of at most 2048 cells a side, which cells of 24 characters fill with 100 MB.
LongFile gridOf(const std::string& columns, const std::string& cell, std::size_t bytes) {
    const auto side = static_cast<std::size_t>(
        std::sqrt(static_cast<double>(bytes) / static_cast<double>(cell.size())));
    const std::string size = std::to_string(side);
    std::string row = repeated(cell, side);
    row.back() = '\n';
    return {columns + " " + size + "\nnrows " + size +
                "\nxllcorner 0\nyllcorner 0\ncellsize 30\nNODATA_value -9999\n" +
                repeated(row, side),
            static_cast<long long>(side * side)};
}

LongFile grid(std::size_t bytes) {
    return gridOf("ncols", "1234.567890123456789012 ", bytes);
}
LongFile gridInCapitals(std::size_t bytes) {
    return gridOf("NCOLS", "1234.567890123456789012 ", bytes);
}
LongFile gridWithCommas(std::size_t bytes) {
    return gridOf("ncols", "1234,567890123456789012 ", bytes);
}
LongFile gridOfWords(std::size_t bytes) {
    return gridOf("ncols", "1234.567890123456789xxx ", bytes);
}

LongFile colours(std::size_t bytes) {
    return lines("", "0 0 0 255\n", bytes);
}
LongFile header(std::size_t bytes) {
    return lines("NCOLS 2\nNROWS 2\nPIXELTYPE FLOAT\n", "RESOLUTION 30\n", bytes);
}
LongFile georeference(std::size_t bytes) {
    return lines("(1,2) (3,4) Label \"Pt 1\"\n", "(1,2) (3,4) Label \"Pt 1\"\n", bytes);
}
LongFile recording(std::size_t bytes) {
    return lines("", repeated("-80.12,", 100) + "-80.12\n", bytes);
}
LongFile recordingWithNotes(std::size_t bytes) {
    return lines("-80.12,-80.13\n", "here the antenna was turned\n", bytes);
}

/// Lists of fifty elements.
LongFile jsonOf(const std::string& label, std::size_t bytes) {
    LongFile file{"{", 0};
    while (file.text.size() < bytes) {
        file.text += file.text.size() > 1 ? ",\n" : "\n";
        file.text += "  \"item" + std::to_string(1000000 + file.faults) + "\": [";
        for (int i = 0; i < 50; ++i, ++file.faults) {
            const std::string number = std::to_string(i);
            file.text += i > 0 ? ",\n" : "\n";
            file.text += "    {\"" + label + "\": \"Choice " + number + "\", \"id\": \"choice" +
                         std::to_string(file.faults) + "\", \"enum\": " + number +
                         ", \"dispSeq\": " + std::to_string(i + 1) + "}";
        }
        file.text += "\n  ]";
    }
    file.text += "\n}\n";
    return file;
}

LongFile json(std::size_t bytes) {
    return jsonOf("label", bytes);
}
LongFile misspeltJson(std::size_t bytes) {
    return jsonOf("lable", bytes);
}

constexpr char kClean[] = "";

struct LongCase {
    const char* name;
    const char* kind;
    LongFile (*make)(std::size_t bytes);
    const char* rule;  // that every line, cell or choice breaks
    bool isHeld;       // as a whole
};

constexpr LongCase kChecked[] = {
    {"numbers", "asc", grid, kClean, false},
    {"words", "asc", gridOfWords, "no-number", false},
    {"two colours", "clr", colours, kClean, false},
    {"unknown keys", "hdr", header, "key-unknown", false},
    {"one point", "tab", georeference, "point-repeated", false},
    {"traces", "recording", recording, kClean, false},
    {"notes", "recording", recordingWithNotes, "sweep-line-skipped", false},
    {"choices", "catalogue", json, kClean, true},
    {"misspelt choices", "catalogue", misspeltJson, "member-misspelt", true},
    {"setups", "setups", misspeltJson, "member-misspelt", true},
};

struct LongMend {
    const char* name;
    const char* kind;
    LongFile (*make)(std::size_t bytes);
    LongFile (*mended)(std::size_t bytes);
};

constexpr LongMend kMended[] = {
    {"one key", "asc", gridInCapitals, grid},
    {"every cell", "asc", gridWithCommas, grid},
    {"every choice", "catalogue", misspeltJson, json},
};

struct Lengths {
    std::size_t few;
    std::size_t many;
};

Lengths lengths() {
    return rfu::test::isLongRun() ? Lengths{12500000, 100000000} : Lengths{125000, 1000000};
}

/// What a command says, and the time of the processor that it takes.
struct Outcome {
    std::string output;
    double seconds;
};

/// @param kilobytes of memory at most; 0 for any
Outcome runWithin(long long kilobytes, const QString& words, const SampleFolder& folder) {
    const double before = commandSeconds();
    QProcess process;
    process.setWorkingDirectory(folder.path());
    const QString limit =
        kilobytes > 0 ? QStringLiteral("ulimit -v %1; ").arg(kilobytes) : QString();
    process.start(QStringLiteral("/bin/sh"),
                  QStringList{QStringLiteral("-c"), limit + QStringLiteral("exec \"$0\" \"$@\""),
                              QStringLiteral(RFUTILS_COMMAND)} +
                      splitWords(words.toStdString()));
    EXPECT_TRUE(process.waitForFinished(600000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.readAllStandardError().toStdString(), "");
    return {process.readAllStandardOutput().toStdString(), commandSeconds() - before};
}

Outcome runCheckOf(const LongCase& row, const SampleFolder& folder, long long kilobytes = 0) {
    return runWithin(kilobytes, QStringLiteral("check file --as %1").arg(QLatin1String(row.kind)),
                     folder);
}

void expectProportion(const Outcome& few, const Outcome& many) {
    constexpr double kMostTimes = 2.0;
    const double times = static_cast<double>(lengths().many) / static_cast<double>(lengths().few);
    EXPECT_LT(many.seconds, kMostTimes * times * few.seconds);
}

/// In KiB, what any file takes; 0 where a sanitizer takes all memory.
long long leastMemory(const SampleFolder& folder) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return 0;
#endif
    folder.add("file", "");
    long long enough = 50000;
    const auto isEnough = [&] {
        QProcess process;
        process.setWorkingDirectory(folder.path());
        process.start(
            QStringLiteral("/bin/sh"),
            {QStringLiteral("-c"),
             QStringLiteral("ulimit -v %1; exec \"$0\" check file --as clr --ignore colors-none")
                 .arg(enough),
             QStringLiteral(RFUTILS_COMMAND)});
        return process.waitForFinished() && process.exitStatus() == QProcess::NormalExit &&
               process.exitCode() == 0;
    };
    while (enough < 3000000 && !isEnough()) {
        enough += 4000;
    }
    EXPECT_LT(enough, 3000000);
    return enough;
}

/// In KiB, what a case may take of it.
long long memoryFor(const LongCase& row, long long least) {
    constexpr long long kBeside = 4000;
    constexpr long long kTimes = 16;  // the length of a file that is held
    const auto bytes = static_cast<long long>(lengths().many);
    return least == 0 ? 0 : least + kBeside + (row.isHeld ? kTimes * bytes / 1024 : 0);
}

void expectFaults(const LongCase& row, long long faults, const std::string& output) {
    const std::string unlisted =
        std::to_string(faults - kListed) + " more are not listed [" + row.rule;
    if (row.rule != kClean) {
        EXPECT_NE(output.find(unlisted), std::string::npos) << unlisted;
    } else {
        EXPECT_EQ(output.find("not listed"), std::string::npos) << output;
    }
}

}  // namespace

TEST(LongCheck, TakesTimeInProportionAndBoundedMemory) {
    const SampleFolder folder;
    const long long least = leastMemory(folder);
    for (const LongCase& row : kChecked) {
        SCOPED_TRACE(std::string(row.kind) + ": " + row.name);
        folder.add("file", row.make(lengths().few).text);
        const Outcome few = runCheckOf(row, folder);
        const LongFile file = row.make(lengths().many);
        folder.add("file", file.text);
        const Outcome many = runCheckOf(row, folder, memoryFor(row, least));
        expectFaults(row, file.faults, many.output);
        expectProportion(few, many);
        if (rfu::test::isLongRun()) {
            std::printf("%-10s %-18s %6.2f s %7.2f s\n", row.kind, row.name, few.seconds,
                        many.seconds);
        }
    }
}

TEST(LongCheck, MendsInProportion) {
    const SampleFolder folder;
    for (const LongMend& row : kMended) {
        SCOPED_TRACE(std::string(row.kind) + ": " + row.name);
        const QString words =
            QStringLiteral("check --fix file --as %1").arg(QLatin1String(row.kind));
        folder.add("file", row.make(lengths().few).text);
        const Outcome few = runWithin(0, words, folder);
        folder.add("file", row.make(lengths().many).text);
        const Outcome many = runWithin(0, words, folder);
        EXPECT_TRUE(folder.read("file") == row.mended(lengths().many).text);
        expectProportion(few, many);
    }
}

TEST(LongCheck, FindsPlacesInAndBehindLinesOfMegabytes) {
    const std::string blanks(1100000, ' ');
    const std::string choice = R"({"label":"Auto","id":"auto","enum":1,"dispSeq":)";
    const struct {
        const char* kind;
        std::string text;
        std::string findings;
    } kRows[] = {
        {"asc",
         "ncols 3\nnrows 2\nxllcorner 0\nyllcorner 0\ncellsize 30\nNODATA_value -9\n1 2 3" +
             blanks + "4\n1 2 x\n",
         "file:7:1024000: error: of a line only the first 1023999 characters are read [line-cut]\n"
         "file:8:5: error: \"x\" is no number: read as 0 [no-number]\n"},
        {"hdr", "NCOLS 2" + blanks + "\nNROWS 2\nPIXELTYPE FLOAT\nNBITS x\n",
         "file:1:10240: error: of a line only the first 10239 characters are read [line-cut]\n"
         "file:4:7: error: NBITS x is not read: the cells are read as with 32 [layout-not-read]\n"
         "file:1:1: error: refused: there is no file.bil beside it [part-missing]\n"},
        {"clr", "0 0 0 255" + blanks + "\n1 2 3 x\n",
         "file:1:1024: error: of a line only the first 1023 characters are read [line-cut]\n"
         "file:2:7: error: \"x\" is no whole number: read as 0 [no-whole-number]\n"},
        {"tab", "!" + blanks + "\nFile \"map.asc\"\nType \"VECTOR\"\n",
         "file:3:6: error: File not supported: the type is \"VECTOR\", and only \"RASTER\" is read "
         "[type-not-supported]\n"},
        {"recording", "-80.1" + repeated(",-80.1", 170000) + "\nnote\n",
         "file:2:1: warning: skipped: \"note\" is not a level in dBm [sweep-line-skipped]\n"},
        {"recording", "-80.1" + repeated(",-80.1", 400000) + "\nnote\n",
         "file:1:1: error: reading ends: the line is longer than 1 MiB [reading-ends]\n"},
        {"catalogue", "{\"a\":" + blanks + "[" + choice + "0}]}",
         "file:1:1100054: note: hidden: dispSeq is 0 [choice-hidden]\n"},
        {"catalogue", "{\"" + blanks + "\":[" + choice + "1},\n1]}",
         "file:2:1: warning: skipped: a number, where a choice is an object with \"label\", "
         "\"id\", \"enum\" and \"dispSeq\" [element-skipped]\n"},
    };
    const SampleFolder folder;
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.kind);
        folder.add("file", row.text);
        const CommandResult result = runCommand(
            {QStringLiteral("check"), QStringLiteral("file"), QStringLiteral("--as"),
             QLatin1String(row.kind), QStringLiteral("--ignore"), QStringLiteral("colors-missing"),
             QStringLiteral("--ignore"), QStringLiteral("keys-missing")},
            {}, folder);
        EXPECT_EQ(result.output, row.findings);
        EXPECT_EQ(result.errors, "");
    }
}

TEST(LongCheck, CountsBytesOfLinesOfMegabytesInSarif) {
    const SampleFolder folder;
    folder.add("c.json", "{\"ä\":" + std::string(2000000, ' ') + "[1],\n\"ä\":1}");
    const CommandResult result =
        runCommand(splitWords("check c.json --as catalogue --format sarif"), {}, folder);
    EXPECT_NE(result.output.find("\"startLine\": 1, \"startColumn\": 2000008}"), std::string::npos)
        << result.output.substr(result.output.find("\"results\""));
}
