#include <analysis/recordings/hopLines.h>
#include <gtest/gtest.h>

#include <QColor>
#include <QImage>

#include "runCommand.h"

namespace {

/// Bins of 1 MHz from 100 to 105 MHz; the averages are 5 dB below the maxima.
const char* const kSweeps =
    "2024-01-01, 10:00:00, 100000000, 105000000, 1000000, 5, -50, -38, -35, -50, -60\n"
    "2024-01-01, 10:00:10, 100000000, 105000000, 1000000, 5, -60, -48, -45, -60, -70\n";

const std::string kHead = "fromMHz,toMHz,frequencyMHz,level,limit,margin\n";

QStringList mask(const char* options) {
    return QStringList{QStringLiteral("mask"), QStringLiteral("-")} + splitWords(options);
}

CommandCase violated(const char* name, const char* options, const std::string& output) {
    return {name, mask(options), kSweeps, 3, output, ""};
}

CommandCase kept(const char* name, const char* options, const std::string& output) {
    return {name, mask(options), kSweeps, 0, output, ""};
}

}  // namespace

TEST(Mask, showsWhatLiesBeyond) {
    const SampleFolder folder;
    folder.add("flat.csv", "frequencyMHz,upper,lower\n100,-40,-65\n110,-40,-65\n");
    folder.add("high.csv", "100,-30,\n110,-30,\n");
    folder.add("low.csv", "100,,-64\n110,,-64\n");
    folder.add("volts.csv", "100,0.002236\n110,0.002236\n");
    folder.add("field.csv", "100M,72.2\n110M,72.2\n");
    expectCommands(
        {
            violated("text", "--mask flat.csv",
                     "   fromMHz       toMHz  frequencyMHz      level      limit  margin\n"
                     "101.000000  103.000000    102.000000  -35.0 dBm  -40.0 dBm   -5.00\n"),
            violated("CSV", "--mask flat.csv --format csv", kHead + "101,103,102,-35,-40,-5\n"),
            kept("the averages, two of them at the limits",
                 "--mask flat.csv --of average --format csv", kHead),
            violated("averages below a limit", "--mask low.csv --of average --format csv",
                     kHead + "104,105,104,-65,-64,-1\n"),
            violated("volts", "--mask volts.csv --unit V",
                     "   fromMHz       toMHz  frequencyMHz    level    limit  margin\n"
                     "101.000000  103.000000    102.000000  3.98 mV  2.24 mV   -5.00\n"),
            // -35 + 107 + 20 lg 102 - 29.8
            violated("a field at each point", "--mask field.csv --unit dBuV/m",
                     "   fromMHz       toMHz  frequencyMHz         level         limit  margin\n"
                     "101.000000  103.000000    102.000000  82.37 dBuV/m  72.20 dBuV/m  -10.17\n"),
            violated("JSON", "--mask flat.csv --format json",
                     "[\n"
                     "  {\"fromMHz\": 101, \"toMHz\": 103, \"frequencyMHz\": 102, \"level\": -35, "
                     "\"limit\": -40, \"margin\": -5}\n"
                     "]\n"),
            kept("nothing", "--mask high.csv --format csv", kHead),
            kept("nothing in text", "--mask high.csv",
                 "fromMHz  toMHz  frequencyMHz  level  limit  margin\n"),
        },
        folder);
}

TEST(Mask, refusesWhatItCannotJudge) {
    const SampleFolder folder;
    folder.add("flat.csv", "100,-40\n110,-40\n");
    folder.add("elsewhere.csv", "200,-40\n210,-40\n");
    folder.add("between.csv", "100.2,-40\n100.8,-40\n");
    folder.add("broken.csv", "frequencyMHz,upper\n100,-40\n101,high\n");
    folder.add("zero.csv", "100,0\n");
    const auto bad = [](const char* name, const char* options, const std::string& input,
                        const std::string& error) {
        return CommandCase{name, mask(options), input, 1, "", "rfutils: " + error + "\n"};
    };
    const std::string nowhere =
        ": has no limit at a measured point of the recording, which reaches from 100 MHz to 105 "
        "MHz";
    expectCommands(
        {
            bad("another band", "--mask elsewhere.csv", kSweeps, "elsewhere.csv" + nowhere),
            bad("between two points", "--mask between.csv", kSweeps, "between.csv" + nowhere),
            bad("nothing measured", "--mask flat.csv", rfu::test::hopLine('a', "0", "nan"),
                "flat.csv: has no limit at a measured point of the recording, which reaches from "
                "100 "
                "MHz to 101 MHz"),
            bad("a broken mask", "--mask broken.csv", kSweeps,
                "broken.csv:3: upper is \"high\" instead of a number"),
            bad("no level", "--mask zero.csv --unit W", kSweeps,
                "zero.csv:1: a limit of 0 has no level, it is not above zero"),
            bad("no mask", "--mask none.csv", kSweeps, "none.csv: No such file or directory"),
            bad("no file", "--mask .", kSweeps, ".: Is a directory"),
            bad("no frequencies", "--mask flat.csv", "-50\n",
                "-: holds no frequencies, so that no mask applies"),
            bad("no sweep", "--mask flat.csv", "", "-: holds no sweep"),
            bad("a picture over the mask", "--mask flat.csv --plot flat.csv", kSweeps,
                "flat.csv: cannot be written: plots are PNG or SVG and end in .png or .svg"),
            misuses("mask missing", mask(""), "--mask MASK.csv is missing"),
            misuses("another statistic", mask("--mask flat.csv --of median"),
                    "--of: \"median\" is not maximum or average"),
            misuses("an antenna for dBm", mask("--mask flat.csv --center 100M"),
                    "--center needs a --unit that depends on the antenna, such as dBuV/m"),
        },
        folder);
}

TEST(Mask, drawsTheMask) {
    const SampleFolder folder;
    folder.add("mask.csv", "90,-20\n110,-20\n");
    const CommandResult result =
        runCommand(mask("--mask mask.csv --plot plot.png"), kSweeps, folder);
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    const QImage image(folder.path() + QStringLiteral("/plot.png"));
    ASSERT_EQ(image.size(), QSize(1280, 680));
    // -20 dBm lies at the top of the plot, row 74.
    int golden = 0;
    for (int x = 84; x < 1252; ++x) {
        const QColor color(image.pixel(x, 74));
        golden += int{color.red() - color.blue() > 100};
    }
    EXPECT_GT(golden, 1000);
}

TEST(Mask, keepsTheStatusOfAViolationWithAPicture) {
    const SampleFolder folder;
    folder.add("mask.csv", "90,-40\n110,-40\n");
    EXPECT_EQ(runCommand(mask("--mask mask.csv --plot plot.png"), kSweeps, folder).exitStatus, 3);
    EXPECT_FALSE(QImage(folder.path() + QStringLiteral("/plot.png")).isNull());
}
