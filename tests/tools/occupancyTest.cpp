#include <analysis/recordings/hopLines.h>
#include <gtest/gtest.h>

#include <QImage>

#include "runCommand.h"

namespace {

/// Bins of 1 MHz from 100 to 106 MHz; the last four sweeps lack levels.
const char* const kSweeps =
    "2024-01-01, 10:00:00, 100000000, 106000000, 1000000, 5, -90, -79, -90, -90, -80, -90\n"
    "2024-01-01, 10:59:59, 100000000, 106000000, 1000000, 5, -70, -70, -90, -90, -90, -90\n"
    "2024-01-01, 11:00:00, 100000000, 106000000, 1000000, 5, -90, -90, -90, nan, -90, -90\n"
    "2024-01-02, 11:00:00, 100000000, 106000000, 1000000, 5, -90, -90, -70, nan, -90, -90\n";

const std::string kHead = "fromMHz,toMHz,samples,occupied,occupancy,low,high\n";
const std::string kBandHead = "\nfromMHz,toMHz,channels,samples,fbo,sro,threshold,unit\n";

QStringList occupancy(const char* options) {
    return QStringList{QStringLiteral("occupancy"), QStringLiteral("-")} + splitWords(options);
}

CommandCase good(const char* name, const char* options, const std::string& output) {
    return {name, occupancy(options), kSweeps, 0, output, ""};
}

CommandCase bad(const char* name, const char* options, const std::string& error) {
    return {name, occupancy(options), kSweeps, 1, "", "rfutils: " + error + "\n"};
}

/// The output of a run that is right.
std::string outputOf(const char* options, const std::string& input = kSweeps) {
    const CommandResult result = runCommand(occupancy(options), input);
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    return result.output;
}

}  // namespace

// The example of docs/occupancy.md.
TEST(Occupancy, showsChannelsAndBand) {
    // 0 of 4: 3.8416 / 7.8416; 2 of 4: 0.5 -+ 1.96 sqrt(1.9604) / 7.8416; 0 of 2: 3.8416 / 5.8416
    const std::string text =
        "   fromMHz       toMHz  samples  occupied  occupancy     low    high\n"
        "100.000000  102.000000        4         2     0.5000  0.1500  0.8500\n"
        "102.000000  104.000000        2         0     0.0000  0.0000  0.6576\n"
        "104.000000  106.000000        4         0     0.0000  0.0000  0.4899\n"
        "\n"
        "   fromMHz       toMHz  channels  samples     fbo     sro  threshold\n"
        "100.000000  106.000000         3       22  0.1818  0.1667  -80.0 dBm\n";
    expectCommands({
        good("text", "--limit -80 --channels 100M:2M:3", text),
        good("a limit in another unit", "--limit 27dBuV --channels 100:2:3",
             text.substr(0, text.size() - 10) + "-80.0 dBm\n"),
        good("the threshold in another unit", "--limit -80dBm --channels 100:2:3 --unit dBuV",
             text.substr(0, text.size() - 10) + "27.0 dBuV\n"),
    });
    const std::string hours = outputOf("--limit -80 --channels 100:2:2 --by hour --format csv");
    EXPECT_EQ(hours.substr(0, hours.find("\n\n")),
              "hour,fromMHz,toMHz,samples,occupied,occupancy,low,high\n"
              "10,100,102,2,2,1,0.3423719528896193,1\n"
              "10,102,104,2,0,0,0,0.6576280471103807\n"
              "11,100,102,2,0,0,0,0.6576280471103807\n"
              "11,102,104,0,0,,,");
    EXPECT_EQ(hours.substr(hours.find("\n\n") + 1),
              "\nhour,fromMHz,toMHz,channels,samples,fbo,sro,threshold,unit\n"
              "10,100,104,2,8,0.375,0.5,-80,dBm\n"
              "11,100,104,1,6,0.16666666666666666,0,-80,dBm\n");
}

TEST(Occupancy, takesPointsAsChannels) {
    const std::string points = outputOf("--limit -71 --format json --last 1");
    EXPECT_EQ(points,
              "{\"channels\": [\n"
              "  {\"fromMHz\": 100, \"toMHz\": 101, \"samples\": 1, \"occupied\": 0, "
              "\"occupancy\": 0, \"low\": 0, \"high\": 0.7934567085261071},\n"
              "  {\"fromMHz\": 101, \"toMHz\": 102, \"samples\": 1, \"occupied\": 0, "
              "\"occupancy\": 0, \"low\": 0, \"high\": 0.7934567085261071},\n"
              "  {\"fromMHz\": 102, \"toMHz\": 103, \"samples\": 1, \"occupied\": 1, "
              "\"occupancy\": 1, \"low\": 0.20654329147389294, \"high\": 1},\n"
              "  {\"fromMHz\": 103, \"toMHz\": 104, \"samples\": 0, \"occupied\": 0, "
              "\"occupancy\": null, \"low\": null, \"high\": null},\n"
              "  {\"fromMHz\": 104, \"toMHz\": 105, \"samples\": 1, \"occupied\": 0, "
              "\"occupancy\": 0, \"low\": 0, \"high\": 0.7934567085261071},\n"
              "  {\"fromMHz\": 105, \"toMHz\": 106, \"samples\": 1, \"occupied\": 0, "
              "\"occupancy\": 0, \"low\": 0, \"high\": 0.7934567085261071}\n"
              "]\n, \"band\": [\n"
              "  {\"fromMHz\": 100, \"toMHz\": 106, \"channels\": 5, \"samples\": 5, \"fbo\": 0.2, "
              "\"sro\": 0.2, \"threshold\": -71, \"unit\": \"dBm\"}\n"
              "]\n}\n");
}

TEST(Occupancy, judgesAFieldAtEachPoint) {
    // dBuV/m = dBm + 107 + 20 lg f - 29.8: -90 dBm are 27.2 at 100 MHz, 27.627 at 105 MHz.
    const auto occupied = [](const char* options) {
        const std::string rows = outputOf(options);
        std::string digits;
        for (std::size_t line = rows.find('\n') + 1; rows[line] != '\n';
             line = rows.find('\n', line) + 1) {
            std::size_t comma = line;
            for (int field = 0; field < 3; ++field) {
                comma = rows.find(',', comma) + 1;
            }
            digits += rows[comma];
        }
        return digits;
    };
    const std::string first = "--format csv --every 4 ";
    EXPECT_EQ(occupied((first + "--limit 27.5dBuV/m").c_str()), "010011");
    EXPECT_EQ(occupied((first + "--limit 27.5dBuV/m --center 105M").c_str()), "111111");
    EXPECT_EQ(occupied((first + "--limit 27.5dBuV/m --center 100M").c_str()), "010010");
    EXPECT_EQ(occupied((first + "--center 100M --gain 3 --limit 24.5dBuV/m").c_str()), "010010");
}

TEST(Occupancy, findsTheFloor) {
    std::string sweeps;
    for (int second = 0; second < 8; ++second) {
        sweeps +=
            "2024-01-01, 10:00:0" + std::to_string(second) + ", 100000000, 140000000, 1000000, 5";
        for (int point = 0; point < 40; ++point) {
            const bool isOnAir = point == 7 && second % 4 == 0;
            sweeps += isOnAir          ? ", -79.98"
                      : point == 20    ? ", -60"
                      : point % 2 == 0 ? ", -90.02"
                                       : ", -89.98";
        }
        sweeps += '\n';
    }
    // The floor is -90 dBm: its line goes through the middle of the two levels.
    const std::string ten = outputOf("--above 10 --channels 100:5:8 --format csv", sweeps);
    EXPECT_NE(ten.find("\n105,110,8,2,0.25,"), std::string::npos) << ten;
    EXPECT_NE(ten.find("\n120,125,8,8,1,"), std::string::npos) << ten;
    EXPECT_NE(ten.find("\n110,115,8,0,0,"), std::string::npos) << ten;
    EXPECT_EQ(
        outputOf("--format csv --channels 100:5:8 --window 11 --above 10dB", sweeps).substr(0, 200),
        ten.substr(0, 200));
    EXPECT_NE(
        outputOf("--above 10.1 --channels 100:5:8 --format csv", sweeps).find("\n105,110,8,0,0,"),
        std::string::npos);
}

TEST(Occupancy, notesChannelsWithoutSamples) {
    CommandCase outside = good("outside", "--channels 104:2:7 --limit -80 --format csv",
                               kHead +
                                   "104,106,4,0,0,0,0.48990002040399916\n106,108,0,0,,,\n"
                                   "108,110,0,0,,,\n110,112,0,0,,,\n112,114,0,0,,,\n"
                                   "114,116,0,0,,,\n116,118,0,0,,,\n" +
                                   kBandHead + "104,106,1,8,0,0,-80,dBm\n");
    outside.errors =
        "rfutils: note: -: 106 to 108 MHz, 108 to 110 MHz, 110 to 112 MHz, 112 to 114 MHz and 2 "
        "more channels: the recording reaches from 100 MHz to 106 MHz\n";
    CommandCase narrow =
        good("narrow", "--limit -80 --channels 101:0.7:2 --format csv --every 4",
             kHead + "101,101.7,1,1,1,0.20654329147389294,1\n101.7,102.4,0,0,,,\n" + kBandHead +
                 "101,101.7,1,1,1,1,-80,dBm\n");
    narrow.errors = "rfutils: note: -: 101.7 to 102.4 MHz: no bin has its middle there\n";
    CommandCase missing =
        good("not measured", "--limit -80 --channels 102:2:2 --last 1 --format csv",
             kHead + "102,104,0,0,,,\n104,106,1,0,0,0,0.7934567085261071\n" + kBandHead +
                 "102,106,1,3,0.3333333333333333,0,-80,dBm\n");
    missing.errors = "rfutils: note: -: 102 to 104 MHz: no sweep measured all points there\n";
    expectCommands({outside, narrow, missing});
}

TEST(Occupancy, saysWhatIsWrong) {
    expectCommands({
        bad("channels elsewhere", "--limit -80 --channels 200:1:3",
            "-: none of the channels was recorded; the recording reaches from 100 MHz to 106 MHz"),
        bad("channels narrower than bins", "--limit -80 --channels 101.1:0.1:3",
            "-: its bins are wider than the channels"),
        bad("no frequencies", "--limit -80", "-: holds no frequencies, so that it has no channels")
            .given("-50\n"),
        bad("no sweep", "--limit -80", "-: holds no sweep").given(""),
        misuses("no unit", occupancy("--limit -80dBx"),
                "--limit: there is no unit \"dBx\"; the nearest are dBm, dBV or dBmV"),
        misuses("no level", occupancy("--limit 0uV"),
                "--limit: 0 \u00B5V has no level, it is not above zero"),
        misuses("no channels", occupancy("--limit -80 --channels 100:2"),
                "--channels: \"100:2\" is not channels such as 446MHz:12.5kHz:16"),
        bad("a picture elsewhere", "--limit -80 --plot plot.jpg",
            "plot.jpg: cannot be written: plots are PNG or SVG and end in .png or .svg"),
        misuses("no threshold", occupancy(""),
                "a threshold is missing: --limit LEVEL or --above DB"),
        misuses("two thresholds", occupancy("--limit -80 --above 10"),
                "--limit and --above exclude each other"),
        misuses("two thresholds the other way round", occupancy("--above 10 --limit -80"),
                "--limit and --above exclude each other"),
        misuses("no distance", occupancy("--above 0"), "--above has to be above zero"),
        misuses("a window for a limit", occupancy("--limit -80 --window 11"),
                "--window needs --above"),
        misuses("a small window", occupancy("--above 10 --window 3"),
                "--window takes 5 to 1000000 points"),
        misuses("a width alone", occupancy("--limit -80 --channel-width 1M"),
                "--channel-width needs --channels"),
        misuses("no width", occupancy("--limit -80 --channel-width 0 --channels 100:2:1"),
                "--channel-width has to be above zero"),
        misuses("too many channels", occupancy("--limit -80 --channels 100:1k:1000001"),
                "--channels takes 1000000 channels at most"),
        misuses("by day", occupancy("--limit -80 --by day"), "--by: \"day\" is not hour"),
        misuses("an antenna for dBm", occupancy("--limit -80 --gain 3"),
                "--gain needs a --unit that depends on the antenna, such as dBuV/m"),
    });
    std::string many = "2024-01-01, 10:00:00, 100000000, 300001000, 1000, 1";
    for (int i = 0; i < 200001; ++i) {
        many += ",-90";
    }
    expectCommands({bad("too many points by hour", "--limit -80 --by hour",
                        "-: --by hour takes 200000 channels at most, not 200001; --channels names "
                        "fewer than there are points")
                        .given(many + "\n")});
}

TEST(Occupancy, drawsAPicture) {
    const SampleFolder folder;
    for (const char* options :
         {"--limit -80 --channels 100:2:3 --plot plot.png --format csv",
          "--plot hours.png --by hour --limit -80 --channels 100:2:3 --format csv"}) {
        EXPECT_EQ(runCommand(occupancy(options), kSweeps, folder).exitStatus, 0);
    }
    // 2 of 4 lies halfway between rows 618 and 74; a channel is 389 columns wide.
    const QImage line(folder.path() + QStringLiteral("/plot.png"));
    ASSERT_EQ(line.size(), QSize(1280, 680));
    EXPECT_LT(qGray(line.pixel(280, 346)), 140);
    EXPECT_GT(qGray(line.pixel(700, 200)), 240);
    // From 10 to 11 hours all of the first channel are occupied: yellow, and none of the third.
    const QImage hours(folder.path() + QStringLiteral("/hours.png"));
    const int row = 618 - 544 * 21 / 48;
    EXPECT_EQ(hours.pixel(280, row), qRgb(0xfd, 0xe7, 0x25));
    EXPECT_EQ(hours.pixel(1100, row), qRgb(0x44, 0x01, 0x54));
}
