#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>

#include "liveCommand.h"
#include "runCommand.h"

namespace {

/// Bins of 1 MHz from 100 to 104 MHz.
const char* const kA =
    "2024-01-01, 10:00:00, 100000000, 104000000, 1000000, 5, -90, -40, -50, nan\n"
    "2024-01-01, 10:00:10, 100000000, 104000000, 1000000, 5, -92, -40, -54, nan\n"
    "2024-01-01, 10:00:20, 100000000, 104000000, 1000000, 5, -80, -40, -58, nan\n";
const char* const kB =
    "2024-01-02, 10:00:00, 100000000, 104000000, 1000000, 5, -70, -60, -50, -90\n"
    "2024-01-02, 10:00:10, 100000000, 104000000, 1000000, 5, -72, -62, -56, -90\n";
/// Bins of 2 MHz from 100 to 104 MHz.
const char* const kWide = "2024-01-02, 10:00:00, 100000000, 104000000, 2000000, 5, -60, -80\n";

const std::string kHead = "point,frequencyMHz,a,b,difference,unit\n";

QStringList compare(const char* options) {
    return QStringList{QStringLiteral("compare")} + splitWords(options);
}

CommandCase good(const char* name, const char* options, const std::string& output) {
    return {name, compare(options), kB, 0, output, ""};
}

CommandCase bad(const char* name, const char* options, const std::string& error) {
    return {name, compare(options), kB, 1, "", "rfutils: " + error + "\n"};
}

void addRecordings(const SampleFolder& folder) {
    folder.add("a.csv", kA);
    folder.add("wide.csv", kWide);
    folder.add("traces.csv", "-10,-20\n-30,-40\n");
    folder.add("elsewhere.csv",
               "2024-01-02, 10:00:00, 200000000, 204000000, 1000000, 5, -1,-2,-3,-4\n");
}

}  // namespace

TEST(Compare, showsEachPoint) {
    const SampleFolder folder;
    addRecordings(folder);
    expectCommands(
        {
            good("averages in text", "a.csv -",
                 "point  frequencyMHz          a          b  difference\n"
                 "    0    100.000000  -87.3 dBm  -71.0 dBm       16.33\n"
                 "    1    101.000000  -40.0 dBm  -61.0 dBm      -21.00\n"
                 "    2    102.000000  -54.0 dBm  -53.0 dBm        1.00\n"
                 "    3    103.000000          -  -90.0 dBm           -\n"),
            good("maxima", "a.csv - --of maximum --format csv",
                 kHead + "0,100,-80,-70,10,dBm\n1,101,-40,-60,-20,dBm\n2,102,-50,-50,0,dBm\n"
                         "3,103,,-90,,dBm\n"),
            good("minima, the other way round", "--format csv --of minimum - a.csv",
                 kHead + "0,100,-72,-92,-20,dBm\n1,101,-62,-40,22,dBm\n2,102,-56,-58,-2,dBm\n"
                         "3,103,-90,,,dBm\n"),
            good("medians", "a.csv - --of median --format csv",
                 kHead + "0,100,-90,-71,19,dBm\n1,101,-40,-61,-21,dBm\n2,102,-54,-53,1,dBm\n"
                         "3,103,,-90,,dBm\n"),
            // -60 dBm + 107 + 20 lg f - 29.8; the difference stays in dB.
            good("a field", "a.csv - --of maximum --unit dBuV/m --band 101:102",
                 "point  frequencyMHz             a             b  difference\n"
                 "    0    101.000000  77.29 dBuV/m  57.29 dBuV/m      -20.00\n"),
            good("volts", "a.csv - --of maximum --unit V --band 101:102",
                 "point  frequencyMHz        a        b  difference\n"
                 "    0    101.000000  2.24 mV  0.22 mV      -20.00\n"),
            good("windows of both", "a.csv - --last 1 --band 100:101 --format json",
                 "[\n  {\"point\": 0, \"frequencyMHz\": 100, \"a\": -80, \"b\": -72, "
                 "\"difference\": "
                 "8, \"unit\": \"dBm\"}\n]\n"),
            good("traces", "traces.csv traces.csv --last 1 --format csv",
                 kHead + "0,,-30,-30,0,dBm\n1,,-40,-40,0,dBm\n"),
        },
        folder);
}

TEST(Compare, gathersWhatChanged) {
    const SampleFolder folder;
    addRecordings(folder);
    const std::string points = kHead +
                               "0,100,-80,-70,10,dBm\n1,101,-40,-60,-20,dBm\n2,102,-50,-50,0,dBm\n"
                               "3,103,,-90,,dBm\n";
    const std::string head = "\nfromMHz,toMHz,point,frequencyMHz,a,b,difference,unit\n";
    expectCommands(
        {
            good("both directions", "a.csv - --of maximum --above 9.9 --format csv",
                 points + head + "100,101,0,100,-80,-70,10,dBm\n101,102,1,101,-40,-60,-20,dBm\n"),
            good("strictly above", "a.csv --above 10dB --of maximum --format csv -",
                 points + head + "101,102,1,101,-40,-60,-20,dBm\n"),
            good("nothing", "--above 20 a.csv - --of maximum --format csv", points + head),
            good("text", "a.csv - --of maximum --band 101:102 --above 10",
                 "point  frequencyMHz          a          b  difference\n"
                 "    0    101.000000  -40.0 dBm  -60.0 dBm      -20.00\n"
                 "\n"
                 "   fromMHz       toMHz  frequencyMHz          a          b  difference\n"
                 "101.000000  102.000000    101.000000  -40.0 dBm  -60.0 dBm      -20.00\n"),
            good("traces", "traces.csv - --above 5 --format json",
                 "{\"points\": [\n"
                 "  {\"point\": 0, \"frequencyMHz\": null, \"a\": -20, \"b\": -20, \"difference\": "
                 "0, "
                 "\"unit\": \"dBm\"},\n"
                 "  {\"point\": 1, \"frequencyMHz\": null, \"a\": -30, \"b\": -40, \"difference\": "
                 "-10, \"unit\": \"dBm\"}\n"
                 "]\n, \"signals\": [\n"
                 "  {\"fromMHz\": null, \"toMHz\": null, \"point\": 1, \"frequencyMHz\": null, "
                 "\"a\": "
                 "-30, \"b\": -40, \"difference\": -10, \"unit\": \"dBm\"}\n"
                 "]\n}\n")
                .given("-20,-40\n"),
        },
        folder);
}

TEST(Compare, takesLevelsBetweenPoints) {
    const SampleFolder folder;
    addRecordings(folder);
    expectCommands(
        {
            // The middles of b lie at 101 and 103 MHz, those of a half a MHz beside them.
            good("onto the points of a", "--resample --of maximum - wide.csv --format csv",
                 kHead + "0,100,-70,-60,10,dBm\n1,101,-60,-65,-5,dBm\n2,102,-50,-75,-25,dBm\n"
                         "3,103,-90,-80,10,dBm\n"),
            good("onto wider ones", "wide.csv - --of maximum --format csv --resample",
                 kHead + "0,100,-60,-65,-5,dBm\n1,102,-80,-70,10,dBm\n"),
            good("the same points", "a.csv - --resample --of maximum --format csv --band 100:102",
                 kHead + "0,100,-80,-70,10,dBm\n1,101,-40,-60,-20,dBm\n"),
        },
        folder);
}

TEST(Compare, refusesWhatDoesNotGoTogether) {
    const SampleFolder folder;
    addRecordings(folder);
    const std::string wide =
        "4 points from 100 MHz to 104 MHz, not 2 points from 100 MHz to 104 MHz as in wide.csv";
    expectCommands(
        {
            bad("other points", "wide.csv -",
                "-: " + wide + "; --resample takes levels between its points"),
            bad("another band", "- elsewhere.csv --resample",
                "elsewhere.csv: has no level at a point of standard input, which reaches from 100 "
                "MHz to 104 MHz"),
            bad("frequencies and none", "traces.csv -  --resample",
                "-: 4 points from 100 MHz to 104 MHz, not 2 points without frequencies as in "
                "traces.csv"),
            bad("missing", "a.csv none.csv", "none.csv: No such file or directory"),
            bad("no sweep", "a.csv -", "-: holds no sweep").given(""),
            bad("a picture over an input", "a.csv - --plot a.csv",
                "a.csv: cannot be written: plots are PNG or SVG and end in .png or .svg"),
            misuses("one recording", compare("a.csv"), "B is missing"),
            misuses("three", compare("a.csv - a.csv"), "unexpected argument \"a.csv\""),
            misuses("standard input twice", compare("- -"),
                    "standard input, -, can be read only once"),
            misuses("another statistic", compare("a.csv - --of mode"),
                    "--of: \"mode\" is not average, maximum, minimum or median"),
            misuses("no difference", compare("a.csv - --above 0"), "--above has to be above zero"),
            misuses("an antenna for dBm", compare("a.csv - --gain 3"),
                    "--gain needs a --unit that depends on the antenna, such as dBuV/m"),
        },
        folder);
}

TEST(Compare, drawsBothAndTheDifference) {
    const SampleFolder folder;
    addRecordings(folder);
    const CommandResult result = runCommand(
        compare("a.csv - --of maximum --above 15 --plot plot.png --levels -100:0"), kB, folder);
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    const QImage image(folder.path() + QStringLiteral("/plot.png"));
    ASSERT_EQ(image.size(), QSize(1280, 680));
    // 101 MHz lies at column 376; 0 dBm at row 74, -100 dBm at row 346.
    const auto reddest = [&image](int top, int bottom) {
        int most = -255;
        for (int row = top; row < bottom; ++row) {
            const QRgb color = image.pixel(376, row);
            most = std::max(most, qRed(color) - qBlue(color));
        }
        return most;
    };
    EXPECT_GT(reddest(233, 242), 60) << "-60 dBm of b";
    EXPECT_LT(reddest(178, 188), 10) << "-40 dBm of a";
    EXPECT_LT(qGray(image.pixel(376, 183)), 200);
    // The differences reach from -20 dB at row 618 to 10 dB; their threshold stands at -15 dB.
    int darkest = 255;
    for (int row = 608; row < 618; ++row) {
        darkest = std::min(darkest, qGray(image.pixel(376, row)));
    }
    EXPECT_LT(darkest, 180);
}

// What is read last is what a signal ends: the file is whole, on either side.
TEST(Compare, readsStandardInputLast) {
    const SampleFolder folder;
    addRecordings(folder);
    const QString file = folder.path() + QStringLiteral("/a.csv");
    const std::string beginning = std::string(kB) + "2024-01-02, 10:00:20, 1000";
    const struct {
        QStringList words;
        std::string row;
    } kRows[] = {
        {{"compare", file, "-", "--of", "maximum", "--format", "csv"}, "0,100,-80,-70,10,dBm\n"},
        {{"compare", "-", file, "--of", "maximum", "--format", "csv"}, "0,100,-70,-80,-10,dBm\n"}};
    for (const auto& row : kRows) {
        for (const SignalStatus& sent : kSignalStatus) {
            LiveCommand command(row.words, beginning);
            command.send(sent.signal);
            const CommandResult result = command.result();
            EXPECT_EQ(result.exitStatus, sent.exitStatus);
            EXPECT_EQ(result.output.substr(0, kHead.size() + row.row.size()), kHead + row.row);
            EXPECT_EQ(result.errors, "");

            LiveCommand early(row.words, "2024-01-02, 10:00:00, 1000");
            early.send(sent.signal);
            const CommandResult none = early.result();
            EXPECT_EQ(none.exitStatus, sent.exitStatus);
            EXPECT_EQ(none.errors, "rfutils: -: interrupted before a sweep was complete\n");
        }
    }
}
