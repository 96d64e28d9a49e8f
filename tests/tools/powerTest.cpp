#include <analysis/recordings/hopLines.h>
#include <gtest/gtest.h>

#include "runCommand.h"

namespace {

/// Bins of 1 MHz from 100 to 104 MHz in one hop, and from 110 to 111 MHz.
const char* const kBands =
    "2024-01-01, 10:00:00, 100000000, 104000000, 1000000, 5, -30, -20, -30, -40\n"
    "2024-01-01, 10:00:00, 110000000, 111000000, 1000000, 5, -50\n"
    "2024-01-01, 10:00:10, 100000000, 104000000, 1000000, 5, -30, nan, -30, -40\n"
    "2024-01-01, 10:00:10, 110000000, 111000000, 1000000, 5, -60\n";

const std::string kReach =
    "the recording reaches from 100 MHz to 104 MHz and from 110 MHz to 111 MHz";

QStringList power(const char* options) {
    return QStringList{QStringLiteral("power"), QStringLiteral("-")} + splitWords(options);
}

CommandCase good(const char* name, const char* options, const std::string& input,
                 const std::string& output) {
    return {name, power(options), input, 0, output, ""};
}

CommandCase bad(const char* name, const char* options, const std::string& input,
                const std::string& error) {
    return {name, power(options), input, 1, "", "rfutils: " + error + "\n"};
}

}  // namespace

TEST(Power, showsChannels) {
    expectCommands({
        // 0.0005 + 0.01 + 0.00025 mW: -19.69 dBm. 1 % of them lie in 0.1075 MHz at each end.
        good("text", "--channel 100.5:102.25 --share 98", kBands,
             " fromMHz     toMHz      power  occupiedFromMHz  occupiedToMHz  occupiedMHz\n"
             "100.5000  102.2500  -19.7 dBm         100.6075       102.1425       1.5350\n"),
        good("CSV in the order asked for", "--channel 110M:111M --channel 103:104 --format csv",
             kBands,
             "fromMHz,toMHz,power,unit,occupiedFromMHz,occupiedToMHz,occupiedMHz\n"
             // (1e-5 + 1e-6) / 2 mW
             "110,111,-52.59637310505756,dBm,110.005,110.995,0.9900000000000091\n"
             "103,104,-40,dBm,103.005,103.995,0.9900000000000091\n"),
        good("JSON, half of the power, in a wide window",
             "--channel 100:101 --share 50% --enbw 10 --format json", kBands,
             "[\n"
             "  {\"fromMHz\": 100, \"toMHz\": 101, \"power\": -40, \"unit\": \"dBm\", "
             "\"occupiedFromMHz\": 100.25, \"occupiedToMHz\": 100.75, \"occupiedMHz\": 0.5}\n"
             "]\n"),
        // -40 dBm + 107 + 20 lg 103.5 - 29.8
        good("a field at the middle of the channel", "--channel 103:104 --unit dBuV/m", kBands,
             " fromMHz     toMHz         power  occupiedFromMHz  occupiedToMHz  occupiedMHz\n"
             "103.0000  104.0000  77.50 dBuV/m         103.0050       103.9950       0.9900\n"),
        good("a field elsewhere", "--channel 103:104 --unit dBuV/m --center 1GHz --gain 7", kBands,
             " fromMHz     toMHz         power  occupiedFromMHz  occupiedToMHz  occupiedMHz\n"
             "103.0000  104.0000  90.20 dBuV/m         103.0050       103.9950       0.9900\n"),
    });
}

TEST(Power, comparesWithTheNeighbours) {
    const std::string tooWide =
        "the occupied band's bounds would make the table too wide; --format csv has them";
    CommandCase outside = good("outside the recording", "--channel 103:103.5 --spacing 0.5", kBands,
                               " fromMHz     toMHz      power  occupiedMHz  relativeDb\n"
                               "102.0000  102.5000  -33.0 dBm       0.4950       10.00\n"
                               "102.5000  103.0000  -33.0 dBm       0.4950       10.00\n"
                               "103.0000  103.5000  -43.0 dBm       0.4950        0.00\n"
                               "103.5000  104.0000  -43.0 dBm       0.4950        0.00\n"
                               "104.0000  104.5000          -            -           -\n");
    outside.errors =
        "rfutils: note: -: 104 to 104.5 MHz: " + kReach + "\nrfutils: note: " + tooWide + "\n";
    expectCommands({outside});
}

TEST(Power, addsNoDigitsToTheFrequenciesOfNeighbours) {
    const CommandResult rows =
        runCommand(power("--channel 102.1:102.2 --spacing 0.1 --format csv"), kBands);
    for (const char* range :
         {"\n101.9,102,", "\n102,102.1,", "\n102.1,102.2,", "\n102.2,102.3,", "\n102.3,102.4,"}) {
        EXPECT_NE(rows.output.find(range), std::string::npos) << range << " in " << rows.output;
    }
}

TEST(Power, showsEachSweep) {
    CommandCase text = good("text", "--channel 100:102 --series", kBands,
                            "sweep  time                  fromMHz     toMHz      power\n"
                            "    1  2024-01-01 10:00:00  100.0000  102.0000  -19.6 dBm\n"
                            "    2  2024-01-01 10:00:10  100.0000  102.0000          -\n");
    expectCommands({
        text.noting("the occupied band would make the table too wide; --format csv has it"),
        good("CSV", "--channel 103:104 --channel 101:102 --series --format csv", kBands,
             "sweep,time,fromMHz,toMHz,power,unit,occupiedFromMHz,occupiedToMHz,occupiedMHz\n"
             "1,2024-01-01 10:00:00,103,104,-40,dBm,103.005,103.995,0.9900000000000091\n"
             "1,2024-01-01 10:00:00,101,102,-20,dBm,101.005,101.995,0.9900000000000091\n"
             "2,2024-01-01 10:00:10,103,104,-40,dBm,103.005,103.995,0.9900000000000091\n"
             "2,2024-01-01 10:00:10,101,102,,dBm,,,\n"),
    });
}

TEST(Power, writesALongSeriesInPieces) {
    std::string sweeps;
    for (int i = 0; i < 2001; ++i) {
        sweeps += rfu::test::hopLine('a', i % 2 == 0 ? "10" : "20", i < 2000 ? "-50" : "-150");
    }
    const CommandResult series = runCommand(power("--channel 100:101 --series"), sweeps);
    EXPECT_EQ(series.output.rfind("sweep  time                  fromMHz     toMHz      power\n", 0),
              0U);
    const std::string last =
        "\n 2000  2024-01-01 10:00:20  100.0000  101.0000  -50.0 dBm"
        "\n 2001  2024-01-01 10:00:10  100.0000  101.0000  -150.0 dBm\n";
    EXPECT_EQ(series.output.find(last) + last.size(), series.output.size());
}

TEST(Power, notesWhatThePowersLack) {
    const std::string head =
        " fromMHz     toMHz  power  occupiedFromMHz  occupiedToMHz  occupiedMHz\n";
    expectCommands({
        good("never measured", "--channel 103:104",
             "2024-01-01, 10:00:00, 103000000, 104000000, 1000000, 5, nan\n",
             head + "103.0000  104.0000  -      -                -              -\n")
            .noting("-: 103 to 104 MHz: no sweep measured all points there"),
        // 10^-0.1 + 10^-0.2 = 1.4253 mW; 0.5 % of it are 0.9 % and 1.13 % of the two bins
        good("hops that meet", "--channel 100:102 --channel 100:101", rfu::test::hopLines("a0 b0"),
             " fromMHz     toMHz     power  occupiedFromMHz  occupiedToMHz  occupiedMHz\n"
             "100.0000  102.0000   1.5 dBm         100.0090       101.9887       1.9797\n"
             "100.0000  101.0000  -1.0 dBm         100.0050       100.9950       0.9900\n")
            .noting("-: 100 to 102 MHz: the receiver's hops meet within, and its roll-off there is "
                    "not corrected"),
        good("a large prefix", "--channel 100:101 --unit W", rfu::test::hopLine('a', "0", "60"),
             " fromMHz     toMHz   power  occupiedFromMHz  occupiedToMHz  occupiedMHz\n"
             "100.0000  101.0000  1.00 W         100.0050       100.9950       0.9900\n")
            .noting("\"1.00 W\" means 1.00 kW: from 1 kW the instrument shows kilowatts, from 1 MW "
                    "megawatts, under the label W; --format csv has watts"),
        {"the last line cut", power("--channel 100:101 --format csv"),
         rfu::test::hopLine('a', "0", "-50.25") + "2024-01-01, 10:00", 0,
         "fromMHz,toMHz,power,unit,occupiedFromMHz,occupiedToMHz,occupiedMHz\n"
         "100,101,-50.25,dBm,100.005,100.995,0.9900000000000091\n",
         "rfutils: note: -:2: the last line has no line end and may be cut; it is left out\n"},
    });
}

TEST(Power, namesAFewChannelsInANote) {
    const CommandResult result =
        runCommand(power("--channel 100:102 --channel 100:103 --channel 101:103 --channel 100:104 "
                         "--channel 101.5:103 --channel 102:104 --format csv"),
                   rfu::test::hopLines("a0 b0 c0 d0"));
    EXPECT_EQ(
        result.errors,
        "rfutils: note: -: 100 to 102 MHz, 100 to 103 MHz, 101 to 103 MHz, 100 to 104 MHz and 2 "
        "more channels: the receiver's hops meet within, and its roll-off there is not "
        "corrected\n");
}

TEST(Power, refusesWhatItCannotAnswer) {
    const auto misused = [](const char* name, const char* options, const std::string& error) {
        return misuses(name, power(options), error);
    };
    expectCommands({
        bad("below the recording", "--channel 99:101", kBands,
            "-: channel 99 to 101 MHz: " + kReach),
        bad("over a gap", "--channel 110:111 --channel 103:110.5", kBands,
            "-: channel 103 to 110.5 MHz: " + kReach),
        bad("no frequencies", "--channel 1:2", "-50,-60\n",
            "-: holds no frequencies, so that it has no channels"),
        bad("no sweep", "--channel 1:2", "", "-: holds no sweep"),
        bad("a broken line", "--strict --channel 100:101", kBands + std::string("2024-01-01, x\n"),
            "-:5: \"x\" is not a time (21:15:00)"),
        misused("no channel", "", "--channel LOW:HIGH is missing"),
        misused("one frequency", "--channel 100",
                "--channel: \"100\" is not a frequency and a higher one such as 88MHz:108MHz"),
        misused("exchanged", "--channel 101:100",
                "--channel: \"101:100\" is not a frequency and a higher one such as 88MHz:108MHz"),
        misused("no spacing", "--channel 100:101 --spacing 0", "--spacing has to be above zero"),
        misused("a share from 0 to 1", "--channel 100:101 --share 0.99",
                "--share takes 50 to less than 100 percent"),
        misused("everything", "--channel 100:101 --share 100%",
                "--share takes 50 to less than 100 percent"),
        misused("no percentage", "--channel 100:101 --share all",
                "--share: \"all\" is not a percentage such as 99% or 99"),
        misused("no window", "--channel 100:101 --enbw 0", "--enbw has to be above zero"),
        misused("an antenna for dBm", "--channel 100:101 --gain 2",
                "--gain needs a --unit that depends on the antenna, such as dBuV/m"),
    });
}
