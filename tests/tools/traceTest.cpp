#include <gtest/gtest.h>
#include <support/cText.h>
#include <support/samples.h>

#include <QFile>
#include <QImage>
#include <QProcess>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <random>
#include <sstream>

#include "runCommand.h"

namespace {

/// Two hops of two points; the second sweep has them the other way round, the third lacks one.
const char* const kBand =
    "2024-01-01, 10:00:00, 100000000, 102000000, 1000000.00, 5, -50.00, -60.00\n"
    "2024-01-01, 10:00:00, 102000000, 104000000, 1000000.00, 5, -70.00, -80.00\n"
    "2024-01-01, 10:00:10, 102000000, 104000000, 1000000.00, 5, -72.00, nan\n"
    "2024-01-01, 10:00:10, 100000000, 102000000, 1000000.00, 5, -52.00, -inf\n"
    "2024-01-01, 10:00:20, 100000000, 102000000, 1000000.00, 5, -54.00, -66.00\n";

/// A recording with one hop and one point per sweep, ten seconds apart.
std::string onePoint(const std::vector<const char*>& levels, const char* hz = "100000000") {
    std::string lines;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const std::string high = std::to_string(std::stoll(hz) + 1000000);
        lines += "2024-01-01, 10:00:" + std::to_string(10 + 10 * (i % 5)) + ", " + hz + ", " +
                 high + ", 1000000, 5, " + levels[i] + "\n";
    }
    return lines;
}

QStringList trace(const char* options) {
    return QStringList{QStringLiteral("trace"), QStringLiteral("-")} + splitWords(options);
}

CommandCase good(const char* name, const char* options, const std::string& input,
                 const std::string& output) {
    return {name, trace(options), input, 0, output, ""};
}

CommandCase bad(const char* name, const char* options, const std::string& input,
                const std::string& error) {
    return {name, trace(options), input, 1, "", "rfutils: " + error + "\n"};
}

CommandCase misused(const char* name, const char* options, const std::string& error) {
    return {
        name, trace(options), kBand, 2, "", "rfutils: " + error + " (see rfutils trace --help)\n"};
}

}  // namespace

TEST(Trace, showsAllPoints) {
    expectCommands({
        good("text", "--all-points", kBand,
             "point  frequencyMHz  count    average    maximum    minimum\n"
             "    0    100.000000      3  -52.0 dBm  -50.0 dBm  -54.0 dBm\n"
             "    1    101.000000      2  -63.0 dBm  -60.0 dBm  -66.0 dBm\n"
             "    2    102.000000      2  -71.0 dBm  -70.0 dBm  -72.0 dBm\n"
             "    3    103.000000      1  -80.0 dBm  -80.0 dBm  -80.0 dBm\n"),
        good("CSV", "--all-points --format csv", kBand,
             "point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "0,100,3,-52,-50,-54,dBm\n"
             "1,101,2,-63,-60,-66,dBm\n"
             "2,102,2,-71,-70,-72,dBm\n"
             "3,103,1,-80,-80,-80,dBm\n"),
        good("JSON, with a limit that one level equals", "--all-points --format json --limit -60",
             kBand,
             "[\n"
             "  {\"point\": 0, \"frequencyMHz\": 100, \"count\": 3, \"average\": -52, "
             "\"maximum\": -50, \"minimum\": -54, \"unit\": \"dBm\", \"above\": 3},\n"
             "  {\"point\": 1, \"frequencyMHz\": 101, \"count\": 2, \"average\": -63, "
             "\"maximum\": -60, \"minimum\": -66, \"unit\": \"dBm\", \"above\": 0},\n"
             "  {\"point\": 2, \"frequencyMHz\": 102, \"count\": 2, \"average\": -71, "
             "\"maximum\": -70, \"minimum\": -72, \"unit\": \"dBm\", \"above\": 0},\n"
             "  {\"point\": 3, \"frequencyMHz\": 103, \"count\": 1, \"average\": -80, "
             "\"maximum\": -80, \"minimum\": -80, \"unit\": \"dBm\", \"above\": 0}\n"
             "]\n"),
        good("a recording as precise as it was written", "--all-points --format csv",
             onePoint({"-50.125"}),
             "point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "0,100,1,-50.125,-50.125,-50.125,dBm\n"),
    });
}

TEST(Trace, showsMarkersAtTheNearestPoint) {
    expectCommands({
        good("every way to name a point",
             "--marker 100MHz --marker 0.1009GHz --marker 102400kHz --marker 103900000Hz "
             "--marker 3 --marker 101.2",
             kBand,
             "marker       point  frequencyMHz  count    average    maximum    minimum\n"
             "100MHz           0    100.000000      3  -52.0 dBm  -50.0 dBm  -54.0 dBm\n"
             "0.1009GHz        1    101.000000      2  -63.0 dBm  -60.0 dBm  -66.0 dBm\n"
             "102400kHz        2    102.000000      2  -71.0 dBm  -70.0 dBm  -72.0 dBm\n"
             "103900000Hz      3    103.000000      1  -80.0 dBm  -80.0 dBm  -80.0 dBm\n"
             "3                3    103.000000      1  -80.0 dBm  -80.0 dBm  -80.0 dBm\n"
             "101.2            1    101.000000      2  -63.0 dBm  -60.0 dBm  -66.0 dBm\n"),
        good("halfway between two points: the lower one", "--marker 101.5MHz --format csv", kBand,
             "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "101.5MHz,1,101,2,-63,-60,-66,dBm\n"),
        good("the ends of the recording", "--marker 100MHz --marker 104MHz --format csv", kBand,
             "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "100MHz,0,100,3,-52,-50,-54,dBm\n"
             "104MHz,3,103,1,-80,-80,-80,dBm\n"),
        good("markers before the points", "--marker 0 --all-points --format csv", onePoint({"-50"}),
             "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "0,0,100,1,-50,-50,-50,dBm\n"
             "\n"
             "point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "0,100,1,-50,-50,-50,dBm\n"),
        bad("below the recording", "--marker 99.9MHz", kBand,
            "-: marker 99.9MHz: the recording reaches from 100 MHz to 104 MHz"),
        bad("above the recording", "--marker 104.1MHz", kBand,
            "-: marker 104.1MHz: the recording reaches from 100 MHz to 104 MHz"),
        bad("no such point", "--marker 4", kBand,
            "-: marker 4: the points of the recording are 0 to 3; a frequency has a unit: 4MHz"),
        bad("no such point, where there are no frequencies", "--marker 433", "-1,-2\n",
            "-: marker 433: the points of the recording are 0 to 1"),
        bad("a frequency where there is none", "--marker 100MHz", "-1,-2\n",
            "-: marker 100MHz: the recording holds no frequencies; name a point, 0 to 1"),
    });
}

TEST(Trace, neverShowsTheMarkOfNoMeasurement) {
    const std::string silent = onePoint({"nan", "-inf", "", "-999"});
    expectCommands({
        good("text", "--marker 0 --limit -2000 --more", silent,
             "marker  point  frequencyMHz  count  average  maximum  minimum  powerMean  median  "
             "above  deviationDb  maximumSweep  maximumTime\n"
             "0           0    100.000000      0  -        -        -        -          -     "
             "      0  -            -             -\n"),
        good("CSV", "--marker 0 --more --format csv", silent,
             "marker,point,frequencyMHz,count,average,maximum,minimum,powerMean,median,unit,"
             "deviationDb,maximumSweep,maximumTime\n"
             "0,0,100,0,,,,,,dBm,,,\n"),
        good("JSON", "--marker 0 --format json", silent,
             "[\n"
             "  {\"marker\": \"0\", \"point\": 0, \"frequencyMHz\": 100, \"count\": 0, "
             "\"average\": null, \"maximum\": null, \"minimum\": null, \"unit\": \"dBm\"}\n"
             "]\n"),
        good("the oldest is missing, and a limit below the mark", "--marker 0 --limit -2000",
             onePoint({"nan", "-70", "-60", "nan"}),
             "marker  point  frequencyMHz  count    average    maximum    minimum  above\n"
             "0           0    100.000000      2  -65.0 dBm  -60.0 dBm  -70.0 dBm      2\n"),
    });
}

TEST(Trace, keepsTheMostRecentSweeps) {
    const std::string sweeps = onePoint({"-10", "-20", "-30", "-40"});
    expectCommands({
        good("two", "--marker 0 --keep 2 --format csv", sweeps,
             "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "0,0,100,2,-35,-30,-40,dBm\n"),
        good("the sweep keeps its number", "--marker 0 --keep 2 --more", sweeps,
             "marker  point  frequencyMHz  count    average    maximum    minimum  powerMean"
             "     median  deviationDb  maximumSweep  maximumTime\n"
             // 10 lg((0.001 + 0.0001) / 2) = -32.5964
             "0           0    100.000000      2  -35.0 dBm  -30.0 dBm  -40.0 dBm  -32.6 dBm"
             "  -35.0 dBm         5.00             3  2024-01-01 10:00:30\n"),
    });
    std::vector<const char*> many(1001, "-50");
    many.front() = "-10";
    expectCommands({good("1000 unless told", "--marker 0 --format csv", onePoint(many),
                         "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
                         "0,0,100,1000,-50,-50,-50,dBm\n")});
}

TEST(Trace, tellsMeanPowerFromMeanLevel) {
    expectCommands({
        // powers 0.1, 0.01, 0.01, 1e-9 mW: 10 lg(0.12 / 4) = -15.2288; the mean of the numbers is
        // -35, that of the middle two -20; squares 625 + 225 + 225 + 3025, / 4 = 1025
        good("four levels, the maximum second, one unmeasured", "--marker 0 --more",
             onePoint({"-20", "-10", "nan", "-90", "-20"}),
             "marker  point  frequencyMHz  count    average    maximum    minimum  powerMean"
             "     median  deviationDb  maximumSweep  maximumTime\n"
             "0           0    100.000000      4  -35.0 dBm  -10.0 dBm  -90.0 dBm  -15.2 dBm"
             "  -20.0 dBm        32.02             2  2024-01-01 10:00:20\n"),
        good("an odd count, and a maximum that came twice", "--marker 0 --more --unit dBuV",
             onePoint({"-70", "-30", "-30"}),
             // 10 lg((1e-7 + 2e-3) / 3) = -31.7607; + 106.9897; squares 711.1 + 177.8 + 177.8
             "marker  point  frequencyMHz  count    average    maximum    minimum  powerMean"
             "     median  deviationDb  maximumSweep  maximumTime\n"
             "0           0    100.000000      3  63.7 dBuV  77.0 dBuV  37.0 dBuV  75.2 dBuV"
             "  77.0 dBuV        18.86             2  2024-01-01 10:00:20\n"),
        good("a plain trace has no time", "--marker 0 --more --format json", "-30\n",
             "[\n"
             "  {\"marker\": \"0\", \"point\": 0, \"frequencyMHz\": null, \"count\": 1, "
             "\"average\": -30, \"maximum\": -30, \"minimum\": -30, \"powerMean\": -30, "
             "\"median\": -30, \"unit\": \"dBm\", \"deviationDb\": 0, \"maximumSweep\": 1, "
             "\"maximumTime\": null}\n"
             "]\n"),
    });
}

TEST(Trace, showsLevelsInOtherUnits) {
    // K = 20 lg(100) - 29.8 = 10.2 dB; -30 + 107 + 10.2
    const std::string at100 = onePoint({"-30"});
    const std::string head = "marker  point  frequencyMHz  count";
    expectCommands({
        good("voltage", "--marker 0 --unit V", at100,
             head + "  average  maximum  minimum\n"
                    "0           0    100.000000      1  7.07 mV  7.07 mV  7.07 mV\n"),
        good("field unit at the point's own frequency", "--marker 0 --unit dBuV/m", at100,
             head +
                 "       average       maximum       minimum\n"
                 "0           0    100.000000      1  87.20 dBuV/m  87.20 dBuV/m  87.20 dBuV/m\n"),
        good("each point has its own", "--all-points --unit dBuV/m",
             "2024-01-01, 10:00:00, 100000000, 1900000000, 900000000, 5, -30, -30\n",
             "point  frequencyMHz  count        average        maximum        minimum\n"
             "    0    100.000000      1   87.20 dBuV/m   87.20 dBuV/m   87.20 dBuV/m\n"
             "    1   1000.000000      1  107.20 dBuV/m  107.20 dBuV/m  107.20 dBuV/m\n"),
        good("given frequency and gain", "--marker 0 --unit dBuV/m --center 1GHz --gain 7", at100,
             head + "        average        maximum        minimum\n"
                    "0           0    100.000000      1  100.20 dBuV/m  100.20 dBuV/m  100.20 "
                    "dBuV/m\n"),
        good("a recording without frequencies needs one",
             "--marker 0 --unit dBuV/m --center 100MHz --limit -31", "-30\n",
             head + "       average       maximum       minimum  above\n"
                    "0           0  -                 1  87.20 dBuV/m  87.20 dBuV/m  87.20 dBuV/m"
                    "      1\n"),
        good("numbers are in the unit itself", "--marker 0 --unit dBuV --format csv",
             onePoint({"0"}),
             "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "0,0,100,1,106.9897,106.9897,106.9897,dBuV\n"),
    });
}

TEST(Trace, readsPlainTraces) {
    expectCommands({
        good("two traces with gaps, blank lines and both line ends", "--all-points",
             "-10, ,-30\r\n\r\n  \n -20,nan, -50 \n",
             "point  frequencyMHz  count    average    maximum    minimum\n"
             "    0  -                 2  -15.0 dBm  -10.0 dBm  -20.0 dBm\n"
             "    1  -                 0          -          -          -\n"
             "    2  -                 2  -40.0 dBm  -30.0 dBm  -50.0 dBm\n"),
        good("no line end at the end", "--marker 0 --format csv", "-1\n-2",
             "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "0,0,,2,-1.5,-1,-2,dBm\n"),
        good("an empty field in front", "--marker 1 --format csv", ",-1\n",
             "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "1,1,,1,-1,-1,-1,dBm\n"),
        good("plus signs", "--all-points --format csv", "+1.5,-2, +3\n",
             "point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "0,,1,1.5,1.5,1.5,dBm\n1,,1,-2,-2,-2,dBm\n2,,1,3,3,3,dBm\n"),
        good("infinity and other spellings of nothing", "--all-points --format csv",
             "inf,-INF,-nan,NaN,-1e2\n",
             "point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "0,,0,,,,dBm\n"
             "1,,0,,,,dBm\n"
             "2,,0,,,,dBm\n"
             "3,,0,,,,dBm\n"
             "4,,1,-100,-100,-100,dBm\n"),
        bad("a shorter trace", "", "-1,-2\n-3\n",
            "-:2: a trace of 1 levels, while the first has 2"),
        bad("a longer trace", "", "-1\n\n-3,-4\n",
            "-:3: a trace of 2 levels, while the first has 1"),
    });
}

TEST(Trace, summarises) {
    expectCommands({
        good("hops", "", kBand,
             "sweeps     3\n"
             "kept       3\n"
             "points     4\n"
             "fromMHz    100\n"
             "toMHz      104\n"
             "firstTime  2024-01-01 10:00:00\n"
             "lastTime   2024-01-01 10:00:20\n"),
        good("what is kept", "--keep 1 --format json", kBand,
             "{\"sweeps\": 3, \"kept\": 1, \"points\": 4, \"fromMHz\": 100, \"toMHz\": 104, "
             "\"firstTime\": \"2024-01-01 10:00:20\", \"lastTime\": \"2024-01-01 10:00:20\"}\n"),
        good("plain traces", "--format csv", "-1,-2\n-1,-2\n",
             "sweeps,kept,points,fromMHz,toMHz,firstTime,lastTime\n"
             "2,2,2,,,,\n"),
    });
}

namespace {

/// A line of a hop of one point, 1 MHz wide, named by a letter: a is at 100 MHz, b at 101 MHz, ...
std::string hop(char name, const std::string& time, const char* level) {
    const int low = 100 + (name - 'a');
    return time + ", " + std::to_string(low) + "000000, " + std::to_string(low + 1) +
           "000000, 1000000, 5, " + level + "\n";
}

std::string at(const std::string& time) {
    return "2024-01-01, " + time;
}

}  // namespace

TEST(Trace, findsTheBoundsOfSweeps) {
    const std::string head =
        "sweep,time,marker,point,frequencyMHz,count,average,maximum,minimum,unit\n";
    const char* const options = "--follow --marker 0 --marker 1 --format csv --keep 1";
    expectCommands({
        good("hops at the same time, repeated within it", options,
             hop('a', at("10:00:00"), "-1") + hop('b', at("10:00:00"), "-2") +
                 hop('a', at("10:00:00"), "-3") + hop('b', at("10:00:00"), "-4"),
             head + "1,2024-01-01 10:00:00,0,0,100,1,-1,-1,-1,dBm\n"
                    "1,2024-01-01 10:00:00,1,1,101,1,-2,-2,-2,dBm\n"
                    "2,2024-01-01 10:00:00,0,0,100,1,-3,-3,-3,dBm\n"
                    "2,2024-01-01 10:00:00,1,1,101,1,-4,-4,-4,dBm\n"),
        good("out of order, times a second apart", options,
             hop('b', at("10:00:00.25"), "-2") + hop('a', at("10:00:00.75"), "-1") +
                 hop('b', at("10:00:01.25"), "-4") + hop('a', at("10:00:02.25"), "-3"),
             head + "1,2024-01-01 10:00:00.25,0,0,100,1,-1,-1,-1,dBm\n"
                    "1,2024-01-01 10:00:00.25,1,1,101,1,-2,-2,-2,dBm\n"
                    "2,2024-01-01 10:00:01.25,0,0,100,1,-3,-3,-3,dBm\n"
                    "2,2024-01-01 10:00:01.25,1,1,101,1,-4,-4,-4,dBm\n"),
        good("a sweep that lost its first hop borrows none", options,
             hop('a', at("10:00:00"), "-1") + hop('b', at("10:00:00"), "-2") +
                 hop('b', at("10:00:05.000000"), "-4") + hop('a', at("10:00:06.000001"), "-5") +
                 hop('b', at("10:00:06.000001"), "-6"),
             head + "1,2024-01-01 10:00:00,0,0,100,1,-1,-1,-1,dBm\n"
                    "1,2024-01-01 10:00:00,1,1,101,1,-2,-2,-2,dBm\n"
                    "2,2024-01-01 10:00:05.000000,0,0,100,0,,,,dBm\n"
                    "2,2024-01-01 10:00:05.000000,1,1,101,1,-4,-4,-4,dBm\n"
                    "3,2024-01-01 10:00:06.000001,0,0,100,1,-5,-5,-5,dBm\n"
                    "3,2024-01-01 10:00:06.000001,1,1,101,1,-6,-6,-6,dBm\n"),
        good("a clock that goes back ends a sweep too", options,
             hop('a', at("10:00:00"), "-1") + hop('b', at("10:00:00"), "-2") +
                 hop('b', at("10:00:05"), "-4") + hop('a', at("09:00:00"), "-5"),
             head + "1,2024-01-01 10:00:00,0,0,100,1,-1,-1,-1,dBm\n"
                    "1,2024-01-01 10:00:00,1,1,101,1,-2,-2,-2,dBm\n"
                    "2,2024-01-01 10:00:05,0,0,100,0,,,,dBm\n"
                    "2,2024-01-01 10:00:05,1,1,101,1,-4,-4,-4,dBm\n"
                    "3,2024-01-01 09:00:00,0,0,100,1,-5,-5,-5,dBm\n"
                    "3,2024-01-01 09:00:00,1,1,101,0,,,,dBm\n"),
        good("hops that take long are one sweep", options,
             hop('a', at("10:00:00"), "-1") + hop('b', at("10:00:07"), "-2") +
                 hop('a', at("10:00:14"), "-3") + hop('b', at("10:00:21"), "-4"),
             head + "1,2024-01-01 10:00:00,0,0,100,1,-1,-1,-1,dBm\n"
                    "1,2024-01-01 10:00:00,1,1,101,1,-2,-2,-2,dBm\n"
                    "2,2024-01-01 10:00:14,0,0,100,1,-3,-3,-3,dBm\n"
                    "2,2024-01-01 10:00:14,1,1,101,1,-4,-4,-4,dBm\n"),
        good("over the end of a leap day and of a year", options,
             hop('a', "2024-02-29, 12:00:00", "-1") + hop('b', "2024-02-29, 12:00:00", "-2") +
                 hop('a', "2024-02-29, 23:59:59.5", "-3") +
                 hop('b', "2024-03-01, 00:00:00.5", "-4") +
                 hop('a', "2024-12-31, 23:59:59.9", "-5") + hop('b', "2025-01-01, 00:00:00", "-6"),
             head + "1,2024-02-29 12:00:00,0,0,100,1,-1,-1,-1,dBm\n"
                    "1,2024-02-29 12:00:00,1,1,101,1,-2,-2,-2,dBm\n"
                    "2,2024-02-29 23:59:59.5,0,0,100,1,-3,-3,-3,dBm\n"
                    "2,2024-02-29 23:59:59.5,1,1,101,1,-4,-4,-4,dBm\n"
                    "3,2024-12-31 23:59:59.9,0,0,100,1,-5,-5,-5,dBm\n"
                    "3,2024-12-31 23:59:59.9,1,1,101,1,-6,-6,-6,dBm\n"),
        good("no leap day in 2100", options,
             hop('a', "2100-02-28, 12:00:00", "-1") + hop('b', "2100-02-28, 12:00:00", "-2") +
                 hop('a', "2100-02-28, 23:59:59", "-3") + hop('b', "2100-03-01, 00:00:00", "-4"),
             head + "1,2100-02-28 12:00:00,0,0,100,1,-1,-1,-1,dBm\n"
                    "1,2100-02-28 12:00:00,1,1,101,1,-2,-2,-2,dBm\n"
                    "2,2100-02-28 23:59:59,0,0,100,1,-3,-3,-3,dBm\n"
                    "2,2100-02-28 23:59:59,1,1,101,1,-4,-4,-4,dBm\n"),
        good("the repeated last level of a line is ignored", "--all-points --format csv",
             "2024-01-01, 10:00:00, 100000000, 100100000, 33333.33, 5, -1, -2, -3, -3\n",
             "point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "0,100,1,-1,-1,-1,dBm\n"
             "1,100.03333333,1,-2,-2,-2,dBm\n"
             "2,100.06666666,1,-3,-3,-3,dBm\n"),
    });
    for (const char* order : {"rising", "falling"}) {
        const std::string low = "2024-01-01, 10:00:00, 100000000, 102000000, 1000000, 5, -1, -2\n";
        const std::string high = "2024-01-01, 10:00:00, 101000000, 103000000, 1000000, 5, -3, -4\n";
        expectCommands(
            {good(order, "--all-points --format csv", order[0] == 'r' ? low + high : high + low,
                  "point,frequencyMHz,count,average,maximum,minimum,unit\n"
                  "0,100,1,-1,-1,-1,dBm\n"
                  "1,101,1,-2,-2,-2,dBm\n"
                  "2,101,1,-3,-3,-3,dBm\n"
                  "3,102,1,-4,-4,-4,dBm\n")});
    }
}

namespace {

/// A recording from words such as "a0" (hop a, stamped 10:00:00) or "b1.5"; the level is the number
/// of the line, negative.
std::string recording(const char* lines) {
    std::string result;
    int number = 0;
    for (const QString& word : splitWords(lines)) {
        const std::string seconds = word.mid(1).toStdString();
        const bool isShort = seconds.find('.') == 1 || seconds.size() == 1;
        result += hop(word.front().toLatin1(), at("10:00:") + (isShort ? "0" : "") + seconds,
                      std::to_string(-++number).c_str());
    }
    return result;
}

/// The sweeps of a recording as words of the hops' lines, in order of frequency, "_" for one that
/// was not measured: "1 2|3 _". The last `kept` sweeps are looked at one by one.
std::string sweepsOf(const std::string& input, int points) {
    const auto cellsOf = [&](int keep) {
        const CommandResult result = runCommand(
            trace("--all-points --limit -998 --format csv --keep") << QString::number(keep), input);
        EXPECT_EQ(result.errors, "");
        return splitWords(QString::fromStdString(result.output)
                              .replace(QLatin1Char(' '), QLatin1Char('_'))
                              .toUtf8()
                              .constData());
    };
    const CommandResult summary = runCommand(trace("--format csv"), input);
    const int sweeps = QString::fromStdString(summary.output)
                           .section(QLatin1Char('\n'), 1)
                           .section(QLatin1Char(','), 0, 0)
                           .toInt();
    // The sum of the levels of the last n sweeps tells the level of each of them.
    std::vector<double> before(static_cast<std::size_t>(points), 0.0);
    std::string text;
    for (int keep = 1; keep <= sweeps; ++keep) {
        const QStringList rows = cellsOf(keep);
        EXPECT_EQ(rows.size(), points + 1);
        std::string words;
        for (int point = 0; point < points; ++point) {
            const QStringList cells = rows[point + 1].split(QLatin1Char(','));
            const double sum = cells[2].toInt() == 0 ? 0.0 : cells[2].toInt() * cells[3].toDouble();
            double& old = before[static_cast<std::size_t>(point)];
            const long line = std::lround(old - sum);
            words +=
                (point == 0 ? "" : " ") + (line == 0 ? std::string("_") : std::to_string(line));
            old = sum;
        }
        text = words + (keep == 1 ? "" : "|") + text;
    }
    return text;
}

}  // namespace

TEST(Trace, findsTheBoundsOfSweepsThatLostHops) {
    const struct {
        const char* name;
        const char* lines;
        int points;
        const char* sweeps;
    } kRows[] = {
        {"first hop lost, a sweep per second", "a0 b0 c0 a1 b1 c1 b2 c2 a3 b3 c3", 3,
         "1 2 3|4 5 6|_ 7 8|9 10 11"},
        {"first hop lost, sweeps in less than a second", "a0.0 b0.0 a0.05 b0.05 b0.1 a0.15 b0.15",
         2, "1 2|3 4|_ 5|6 7"},
        {"last hop lost", "a0 b0 c0 a1 b1 a2 b2 c2", 3, "1 2 3|4 5 _|6 7 8"},
        {"all but the last lost, all but the first lost", "a0 b0 c0 c1 a2 a3 b3 c3", 3,
         "1 2 3|_ _ 4|5 _ _|6 7 8"},
        {"a second that rolls over within a sweep", "a0 b0 c0 a1 b1 c2 a2 b2 c2", 3,
         "1 2 3|4 5 6|7 8 9"},
        {"backwards at one time is a matter of order", "a0 b0 c0 c1 b1 a1 a2 b2 c2", 3,
         "1 2 3|6 5 4|7 8 9"},
        {"in the order of the first sweep", "b0 a0 c0 b1 a1 c1 a2 c2 b3 a3 c3", 3,
         "2 1 3|5 4 6|7 _ 8|10 9 11"},
        {"begins in the middle", "c0 a10 b10 c10 a20 b20 c20 b30 c30 a40 b40 c40", 3,
         "_ _ 1|2 3 4|5 6 7|_ 8 9|10 11 12"},
        {"begins in the middle, less than a second before",
         "b0.0 c0.0 a0.02 b0.02 c0.02 a0.04 c0.04", 3, "_ 1 2|3 4 5|6 _ 7"},
        {"begins in the middle and lost the hop that comes again first",
         "b0 c0 a10 c10 a20 b20 c20", 3, "_ 1 2|3 _ 4|5 6 7"},
        {"the order starts where sweeps do", "c0 a10 b10 c10 c10.5 a11 b11 c11", 3,
         "_ _ 1|2 3 4|_ _ 5|6 7 8"},
        {"the pause before the bound is none within sweeps",
         "c0 a10 b10 c10 a12 b14 c16 a18 b18 c18", 3, "_ _ 1|2 3 4|5 _ _|_ 6 _|_ _ 7|8 9 10"},
        {"begins in the middle, and the next sweep lost what came first", "c0 a10 b10 a10 b10 c10",
         3, "_ _ 1|2 3 _|4 5 6"},
        {"a new hop in front of all", "b0 c0 b1 c1 a2 b2 c2 a3 b3.1 c3.2", 3,
         "_ 1 2|_ 3 4|5 6 7|8 9 10"},
        {"equal steps are the receiver's", "a0 b7 c14 a21 b28 c35", 3, "1 2 3|4 5 6"},
        {"the first sweep lost a middle hop", "a0 c0 a1 b1 c1 a2 b2 c2", 3, "1 _ 2|3 4 5|6 7 8"},
        {"the first sweeps lost hops by turns",
         "b0 d0 a1 c1 d1 a2 b2 d2 a3 b3 c3 d3 b4 c4 a5 b5 c5 d5", 4,
         "_ 1 _ 2|3 _ 4 5|6 7 _ 8|9 10 11 12|_ 13 14 _|15 16 17 18"},
        {"a lost hop has its turn where it came", "a0 c0.1 a0.2 b0.3 c0.4 a0.5 b0.6 c0.7", 3,
         "1 _ 2|3 4 5|6 7 8"},
        {"a new hop after a pause begins a sweep", "a0 a10 b15", 2, "1 _|2 _|_ 3"},
        {"one sweep", "a0 b0 c0", 3, "1 2 3"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(sweepsOf(recording(row.lines), row.points), row.sweeps) << row.name;
    }
}

TEST(Trace, followsARecordingThatBeginsInTheMiddle) {
    expectCommands({good("the rest of a sweep is the first",
                         "--follow --marker 0 --marker 2 --keep 1 --format csv",
                         recording("c0 a10 b10 c10 a20 b20 c20"),
                         "sweep,time,marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
                         "1,2024-01-01 10:00:00,0,0,100,0,,,,dBm\n"
                         "1,2024-01-01 10:00:00,2,2,102,1,-1,-1,-1,dBm\n"
                         "2,2024-01-01 10:00:10,0,0,100,1,-2,-2,-2,dBm\n"
                         "2,2024-01-01 10:00:10,2,2,102,1,-4,-4,-4,dBm\n"
                         "3,2024-01-01 10:00:20,0,0,100,1,-5,-5,-5,dBm\n"
                         "3,2024-01-01 10:00:20,2,2,102,1,-7,-7,-7,dBm\n")});
}

TEST(Trace, readsInterleavedHopsOfFiveBins) {
    const std::string sweep =
        "2024-05-04, 14:02:11.308551, 2400000000, 2405000000, 1000000.00, 20, -64.72, -63.36, "
        "-60.91, -61.74, -58.58\n"
        "2024-05-04, 14:02:11.308551, 2410000000, 2415000000, 1000000.00, 20, -69.22, -60.67, "
        "-59.50, -61.81, -58.16\n"
        "2024-05-04, 14:02:11.309171, 2405000000, 2410000000, 1000000.00, 20, -61.19, -70.14, "
        "-60.10, -57.91, -61.97\n";
    expectCommands({good("in order of frequency", "--all-points --format csv", sweep,
                         "point,frequencyMHz,count,average,maximum,minimum,unit\n"
                         "0,2400,1,-64.72,-64.72,-64.72,dBm\n1,2401,1,-63.36,-63.36,-63.36,dBm\n"
                         "2,2402,1,-60.91,-60.91,-60.91,dBm\n3,2403,1,-61.74,-61.74,-61.74,dBm\n"
                         "4,2404,1,-58.58,-58.58,-58.58,dBm\n5,2405,1,-61.19,-61.19,-61.19,dBm\n"
                         "6,2406,1,-70.14,-70.14,-70.14,dBm\n7,2407,1,-60.1,-60.1,-60.1,dBm\n"
                         "8,2408,1,-57.91,-57.91,-57.91,dBm\n9,2409,1,-61.97,-61.97,-61.97,dBm\n"
                         "10,2410,1,-69.22,-69.22,-69.22,dBm\n11,2411,1,-60.67,-60.67,-60.67,dBm\n"
                         "12,2412,1,-59.5,-59.5,-59.5,dBm\n13,2413,1,-61.81,-61.81,-61.81,dBm\n"
                         "14,2414,1,-58.16,-58.16,-58.16,dBm\n")});
}

TEST(Trace, followsARecordingWhileItGrows) {
    expectCommands({
        good("text: one heading, columns as wide as needed", "--follow --marker 0 --limit -25",
             onePoint({"-20", "nan", "-30"}),
             "sweep  time                 marker  point  frequencyMHz  count    average    maximum"
             "    minimum  above\n"
             "    1  2024-01-01 10:00:10  0           0    100.000000      1  -20.0 dBm  -20.0 dBm"
             "  -20.0 dBm      1\n"
             "    2  2024-01-01 10:00:20  0           0    100.000000      1  -20.0 dBm  -20.0 dBm"
             "  -20.0 dBm      1\n"
             "    3  2024-01-01 10:00:30  0           0    100.000000      2  -25.0 dBm  -20.0 dBm"
             "  -30.0 dBm      1\n"),
        good("JSON: an array per sweep", "--follow --marker 0 --format json", "-1\n-2\n",
             "[\n"
             "  {\"sweep\": 1, \"time\": null, \"marker\": \"0\", \"point\": 0, "
             "\"frequencyMHz\": null, \"count\": 1, \"average\": -1, \"maximum\": -1, "
             "\"minimum\": -1, \"unit\": \"dBm\"}\n"
             "]\n"
             "[\n"
             "  {\"sweep\": 2, \"time\": null, \"marker\": \"0\", \"point\": 0, "
             "\"frequencyMHz\": null, \"count\": 2, \"average\": -1.5, \"maximum\": -1, "
             "\"minimum\": -2, \"unit\": \"dBm\"}\n"
             "]\n"),
        good("all points behind an empty line", "--follow --marker 0 --all-points", "-1\n",
             "sweep  time  marker  point  frequencyMHz  count   average   maximum   minimum\n"
             "    1  -     0           0  -                 1  -1.0 dBm  -1.0 dBm  -1.0 dBm\n"
             "\n"
             "point  frequencyMHz  count   average   maximum   minimum\n"
             "    0  -                 1  -1.0 dBm  -1.0 dBm  -1.0 dBm\n"),
        {"what was shown before a bad line stays", trace("--follow --marker 0 --format csv"),
         "-1\nx\n", 1,
         "sweep,time,marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
         "1,,0,0,,1,-1,-1,-1,dBm\n",
         "rfutils: -:2: \"x\" is not a level in dBm\n"},
    });
}

TEST(Trace, followsWithoutWaiting) {
    QProcess process;
    process.start(QStringLiteral(RFUTILS_COMMAND), trace("--follow --marker 1 --format csv"));
    ASSERT_TRUE(process.waitForStarted());
    std::string shown;
    const auto feed = [&](const std::string& lines) {
        process.write(lines.data(), static_cast<qint64>(lines.size()));
    };
    const auto waitFor = [&](const std::string& text) {
        while (shown.find(text) == std::string::npos && process.waitForReadyRead(30000)) {
            shown += process.readAllStandardOutput().toStdString();
        }
        return shown.find(text) != std::string::npos;
    };
    feed(hop('a', at("10:00:00"), "-1") + hop('b', at("10:00:00"), "-2"));
    feed(hop('b', at("10:00:10"), "-4"));  // only now the first sweep is known to be complete
    EXPECT_TRUE(waitFor("1,2024-01-01 10:00:00,1,1,101,1,-2,-2,-2,dBm\n")) << shown;
    feed(hop('a', at("10:00:10"), "-3"));  // all hops are there: nothing needs to follow
    EXPECT_TRUE(waitFor("2,2024-01-01 10:00:10,1,1,101,2,-3,-2,-4,dBm\n")) << shown;
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 0);
}

// Each level is the double that strtod() reads, however it is written and wherever it stands.
TEST(Trace, readsLevelsToTheLastBit) {
    rfu::test::Samples samples(71);
    std::vector<std::string> levels = {"-0.00", "0.0",  "-.5",    "5.",      "-007.50", "1e1",
                                       "-1E-2", "+3.5", "-51.23", "-5.4e+1", "998.9999"};
    while (levels.size() < 4000) {
        const std::string digits = std::to_string(samples.below(1000000000));
        std::string level = samples.below(3) == 0 ? "" : "-";
        level += digits.substr(0, 1 + samples.below(3));
        if (samples.below(8) != 0) {
            level += '.' + digits.substr(0, 1 + samples.below(digits.size()));
        }
        if (std::abs(rfu::test::decimalOf(level)) < 999.0) {
            levels.push_back(level);
        }
    }
    const std::string separators[] = {",", ", ", " ,\t", ","};
    std::string line;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        line += (i == 0 ? "" : separators[i % std::size(separators)]) + levels[i];
    }
    const std::string output =
        runCommand({"trace", "-", "--all-points", "--format", "csv"}, line + "\n").output;
    std::istringstream rows(output);
    std::string row;
    std::getline(rows, row);
    for (const std::string& level : levels) {
        ASSERT_TRUE(std::getline(rows, row)) << level;
        std::istringstream fields(row);
        std::string field;  // point,frequencyMHz,count,average,maximum,...
        for (int i = 0; i < 5; ++i) {
            std::getline(fields, field, ',');
        }
        EXPECT_TRUE(rfu::test::same(rfu::test::decimalOf(field), rfu::test::decimalOf(level)))
            << level << " is read as " << field;
    }
}

TEST(Trace, namesFileAndLineOfWhatIsWrong) {
    const std::string first = hop('a', at("10:00:00"), "-1");
    const std::string notALevel = "\" is not a level in dBm";
    expectCommands({
        bad("nothing", "", "", "-: holds no sweep"),
        bad("blank lines only", "", "\n  \n", "-: holds no sweep"),
        bad("text", "", "hello\n",
            "-:1: neither a line of a sweep (date, time, Hz low, Hz high, Hz step, samples, dB, "
            "...) nor a trace of levels in dBm"),
        bad("a word among levels", "", "-1\n-2x\n", "-:2: \"-2x" + notALevel),
        bad("a blank instead of a comma", "", "-1,-2 -3\n", "-:1: \"-2 -3" + notALevel),
        bad("a level no power can have", "", "-1\n999\n", "-:2: \"999" + notALevel),
        bad("a level below the mark of no measurement", "", "-1,-999.5\n",
            "-:1: \"-999.5" + notALevel),
        bad("a level beyond any double", "", "-1,1e999\n", "-:1: \"1e999" + notALevel),
        bad("two signs", "", "-1,+-2\n", "-:1: \"+-2" + notALevel),
        bad("two plus signs", "", "-1,++2\n", "-:1: \"++2" + notALevel),
        bad("a sign alone", "", "-1,+\n", "-:1: \"+" + notALevel),
        bad("date lost", "", first + "10:00:00, 1, 2, 1, 5, -1\n",
            "-:2: \"10:00:00\" is not a date (2024-05-04)"),
        bad("no such month", "", "2024-13-04, 10:00:00, 1, 2, 1, 5, -1\n",
            "-:1: \"2024-13-04\" is not a date (2024-05-04)"),
        bad("month 0", "", "2024-00-04, 10:00:00, 1, 2, 1, 5, -1\n",
            "-:1: \"2024-00-04\" is not a date (2024-05-04)"),
        bad("no such day", "", "2024-04-31, 10:00:00, 1, 2, 1, 5, -1\n",
            "-:1: \"2024-04-31\" is not a date (2024-05-04)"),
        bad("day 0", "", "2024-04-00, 10:00:00, 1, 2, 1, 5, -1\n",
            "-:1: \"2024-04-00\" is not a date (2024-05-04)"),
        bad("no leap year", "", "2100-02-29, 10:00:00, 1, 2, 1, 5, -1\n",
            "-:1: \"2100-02-29\" is not a date (2024-05-04)"),
        bad("no such hour", "", "2000-02-29, 24:00:00, 1, 2, 1, 5, -1\n",
            "-:1: \"24:00:00\" is not a time (21:15:00)"),
        bad("no such minute", "", "2024-02-29, 23:60:00, 1, 2, 1, 5, -1\n",
            "-:1: \"23:60:00\" is not a time (21:15:00)"),
        bad("no such second", "", "2024-12-31, 23:59:61, 1, 2, 1, 5, -1\n",
            "-:1: \"23:59:61\" is not a time (21:15:00)"),
        bad("a leap second is one", "", "2024-12-31, 23:59:60.5, 1, 2, 1, 5, x\n",
            "-:1: \"x" + notALevel),
        bad("time misspelt", "", "2024-01-01, 10h, 1, 2, 1, 5, -1\n",
            "-:1: \"10h\" is not a time (21:15:00)"),
        bad("point without decimals", "", "2024-01-01, 10:00:00., 1, 2, 1, 5, -1\n",
            "-:1: \"10:00:00.\" is not a time (21:15:00)"),
        bad("frequency misspelt", "", "2024-01-01, 10:00:00, 1e, 2, 1, 5, -1\n",
            "-:1: Hz low is \"1e\" instead of a number"),
        bad("cut behind the date", "", "2024-01-01\n", "-:1: \"\" is not a time (21:15:00)"),
        bad("cut behind Hz low", "", "2024-01-01, 10:00:00, 1\n",
            "-:1: the line ends before Hz high"),
        bad("cut behind Hz high", "", "2024-01-01, 10:00:00, 1, 2\n",
            "-:1: the line ends before Hz step"),
        bad("cut behind the step", "", "2024-01-01, 10:00:00, 1, 2, 1\n",
            "-:1: the line ends before the number of samples"),
        bad("cut behind the head", "", "2024-01-01, 10:00:00, 1, 2, 1, 5\n",
            "-:1: the line ends before the levels"),
        bad("cut within the levels", "",
            first + "2024-01-01, 10:00:10, 100000000, 104000000, 1000000, 5, -1, -2, -3\n",
            "-:2: the hop 100000000 to 104000000 Hz in steps of 1000000 Hz overlaps the hop "
            "100000000 to 101000000 Hz in steps of 1000000 Hz"),
        bad("fewer levels than fit", "", "2024-01-01, 10:00:00, 100, 104, 1, 5, -1, -2, -3\n",
            "-:1: 3 levels, while 4 fit between Hz low and Hz high"),
        bad("upside down", "", "2024-01-01, 10:00:00, 104, 100, 1, 5, -1\n",
            "-:1: Hz low, Hz high and Hz step do not fit together: 104 to 100 Hz in steps of 1 Hz"),
        bad("step of zero", "", "2024-01-01, 10:00:00, 100, 104, 0, 5, -1\n",
            "-:1: Hz low, Hz high and Hz step do not fit together: 100 to 104 Hz in steps of 0 Hz"),
        bad("step beyond the hop", "", "2024-01-01, 10:00:00, 100, 104, 9.5, 5, -1\n",
            "-:1: Hz low, Hz high and Hz step do not fit together: 100 to 104 Hz in steps of 9.5 "
            "Hz"),
        bad("more steps than a line can hold", "", "2024-01-01, 10:00:00, 0, 1e300, 1, 5, -1\n",
            "-:1: Hz low, Hz high and Hz step do not fit together: 0 to 1e+300 Hz in steps of 1 "
            "Hz"),
        bad("a hop that is new after four sweeps", "",
            first + hop('a', at("10:00:10"), "-1") + hop('a', at("10:00:20"), "-1") +
                hop('a', at("10:00:30"), "-1") + hop('b', at("10:00:40"), "-1"),
            "-:5: the hop 101000000 to 102000000 Hz in steps of 1000000 Hz is not one of the first "
            "4 sweeps"),
        bad("a hop with another step", "",
            first + "2024-01-01, 10:00:10, 100000000, 101000000, 500000, 5, -1, -2\n",
            "-:2: the hop 100000000 to 101000000 Hz in steps of 500000 Hz overlaps the hop "
            "100000000 to 101000000 Hz in steps of 1000000 Hz"),
        bad("overlapping from below", "",
            "2024-01-01, 10:00:00, 100, 104, 1, 5, -1, -2, -3, -4\n"
            "2024-01-01, 10:00:00, 98, 102, 1, 5, -1, -2, -3, -4\n",
            "-:2: the hop 98 to 102 Hz in steps of 1 Hz overlaps the hop 100 to 104 Hz in steps of "
            "1 Hz"),
        bad("two widths from one frequency on, the second within a bin of the first", "",
            "2024-01-01, 10:00:00, 100, 104, 4, 5, -1\n"
            "2024-01-01, 10:00:00, 100, 103, 1, 5, -1, -2, -3\n",
            "-:2: the hop 100 to 103 Hz in steps of 1 Hz overlaps the hop 100 to 104 Hz in steps "
            "of "
            "4 Hz"),
        bad("a line without end", "", std::string(1100000, '1'),
            "-:1: the line is longer than 1 MiB"),
        bad("unit unknown", "--unit dBx", kBand,
            "there is no unit \"dBx\"; the nearest are dBm, dBV or dBmV"),
    });
    expectCommands(
        {{"a hop that is new, while the recording is followed",
          trace("--follow --marker 0 --format csv"),
          first + hop('a', at("10:00:10"), "-1") + hop('b', at("10:00:10"), "-1"), 1,
          "sweep,time,marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
          "1,2024-01-01 10:00:00,0,0,100,1,-1,-1,-1,dBm\n"
          "2,2024-01-01 10:00:10,0,0,100,2,-1,-1,-1,dBm\n",
          "rfutils: -:3: the hop 101000000 to 102000000 Hz in steps of 1000000 Hz is not one of "
          "the first sweep\n"}});
    SampleFolder folder;
    folder.add("band.csv", first + "2024-01-01, 10:00:10, 100000000\n");
    expectCommands(
        {{"a file",
          {"trace", "band.csv"},
          "",
          1,
          "",
          "rfutils: band.csv:2: the line ends before Hz high\n"},
         {"missing",
          {"trace", "none.csv"},
          "",
          1,
          "",
          "rfutils: none.csv: No such file or directory\n"},
         {"a directory", {"trace", "."}, "", 1, "", "rfutils: .: Is a directory\n"},
         {"a picture that cannot be written",
          {"trace", "-", "--plot", "none/x.png", "--marker", "0", "--format", "csv"},
          "-1\n",
          1,
          "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n0,0,,1,-1,-1,-1,dBm\n",
          "rfutils: none/x.png: cannot be written: No such file or directory\n"}},
        folder);
}

TEST(Trace, survivesNoise) {
    std::mt19937 random(1);
    for (int run = 0; run < 40; ++run) {
        // every other run behind a good line, so that both readers get their share
        std::string noise = run % 2 == 0 ? "" : kBand;
        for (int i = 0; i < 3000; ++i) {
            noise +=
                run % 4 < 2 ? static_cast<char>(random()) : " ,.-0123456789e\n:n"[random() % 18];
        }
        const CommandResult result = runCommand(trace("--all-points --more --marker 0"), noise);
        EXPECT_EQ(result.exitStatus, 1) << run;
        EXPECT_EQ(result.output, "") << run;
        EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
        EXPECT_EQ(result.errors.compare(0, 11, "rfutils: -:"), 0) << result.errors;
    }
}

TEST(Trace, refusesWrongUsage) {
    expectCommands({
        misused("seven markers",
                "--marker 1 --marker 1 --marker 1 --marker 1 --marker 1 --marker 1 --marker 1",
                "--marker may be given 6 times at most"),
        misused("no frequency", "--marker abc",
                "--marker: \"abc\" is not a frequency such as 88.1MHz or the number of a point"),
        misused("negative point", "--marker=-1",
                "--marker: \"-1\" is not a frequency such as 88.1MHz or the number of a point"),
        misused("keeping nothing", "--keep 0", "--keep takes 1 to 1000000 sweeps"),
        misused("keeping too much", "--keep 1000001", "--keep takes 1 to 1000000 sweeps"),
        misused("following nothing", "--follow", "--follow and --more need a --marker"),
        misused("more of nothing", "--more --all-points", "--follow and --more need a --marker"),
        misused("two shapes in CSV", "--follow --marker 0 --all-points --format csv",
                "--follow together with --all-points prints text only"),
        misused("two shapes in JSON", "--follow --marker 0 --all-points --format json",
                "--follow together with --all-points prints text only"),
        misused("a limit of nothing", "--limit -50", "--limit needs a --marker or --all-points"),
        misused("a limit of a picture", "--limit -50 --plot x.png",
                "--limit needs a --marker or --all-points"),
        misused("a unit of nothing", "--unit V", "--unit needs a --marker, --all-points or --plot"),
        misused("an antenna for levels", "--marker 0 --center 100MHz",
                "--center needs a --unit that depends on the antenna, such as dBuV/m"),
        misused("an antenna for volts", "--marker 0 --unit V --gain 2",
                "--gain needs a --unit that depends on the antenna, such as dBuV/m"),
        misused("no number", "--limit x", "--limit: \"x\" is not a number"),
    });
    expectCommands(
        {{"field unit without any frequency", trace("--marker 0 --unit dBuV/m"), "-30\n", 2, "",
          "rfutils: dBuV/m needs the centre frequency of the antenna: --center (see "
          "rfutils trace --help)\n"}});
}

namespace {

QImage plotOf(const char* options, const std::string& input) {
    const SampleFolder folder;
    const CommandResult result =
        runCommand(trace(options) + QStringList{"--plot", "plot.png"}, input, folder);
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    QImage image;
    EXPECT_TRUE(image.load(folder.path() + QStringLiteral("/plot.png"), "PNG"));
    return image.convertToFormat(QImage::Format_RGB32);
}

int distance(QRgb a, QRgb b) {
    return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) +
           std::abs(qBlue(a) - qBlue(b));
}

/// Whether a colour is at a row of a column, or beside it: lines are 1 to 2 pixels wide.
bool shows(const QImage& image, int x, int y, QRgb color) {
    return distance(image.pixel(x, y - 1), color) < 100 ||
           distance(image.pixel(x, y), color) < 100 || distance(image.pixel(x, y + 1), color) < 100;
}

}  // namespace

TEST(Trace, plotsStatisticsAndMarkers) {
    // 0 dBm lies at row 74, -45 dBm at row 618, points 0 to 2 at columns 84 to 1252
    const QImage levels = plotOf("--keep 3", "0,0,0\n-2,-2,-2\n-23,-23,-23\n-42,-42,-42\n");
    EXPECT_EQ(levels.size(), QSize(1280, 680));
    EXPECT_TRUE(shows(levels, 400, 98, qRgb(0xc8, 0x55, 0x3d))) << "maximum";
    EXPECT_TRUE(shows(levels, 400, 344, qRgb(0x1f, 0x4e, 0x79))) << "average, -67 / 3";
    EXPECT_TRUE(shows(levels, 400, 582, qRgb(0x4f, 0x9d, 0x8f))) << "minimum";
    // The last bin ends at 104 MHz, at column 1252.
    const QImage marked = plotOf("--marker 103MHz", kBand);
    int rows = 0;
    for (int y = 300; y < 600; ++y) {
        rows += int{shows(marked, 960, y, qRgb(0x7a, 0x3e, 0x9d))};
    }
    EXPECT_GT(rows, 150);
    EXPECT_NE(marked, plotOf("--marker 103MHz --unit V", kBand));
}

TEST(Trace, examplesOfTheHelpRun) {
    const SampleFolder folder;
    for (const char* sample : {"fm_band.csv", "wifi_band.csv"}) {
        ASSERT_TRUE(QFile::copy(QStringLiteral(RFUTILS_SAMPLES "/") + QLatin1String(sample),
                                folder.path() + QLatin1Char('/') + QLatin1String(sample)));
    }
    const auto examples = examplesOf(runCommand({"trace", "--help"}).output);
    ASSERT_EQ(examples.size(), 6U);
    for (const std::string& example : examples) {
        const CommandResult result = runCommand(splitWords(example).mid(1), "", folder);
        EXPECT_EQ(result.exitStatus, 0) << example;
        EXPECT_EQ(result.errors, "") << example;
        EXPECT_NE(result.output, "") << example;
    }
    EXPECT_FALSE(QImage(folder.path() + QStringLiteral("/wifi.png")).isNull());
}

TEST(Trace, labelsWithoutTheirPrefixAreNoted) {
    // 60 and 90 dBm are 1 kW and 1 MW, their mean 75 dBm is 31.62 kW; 63 dBm are 316 V
    const std::string watts =
        ": from 1 kW the instrument shows kilowatts, from 1 MW megawatts, under the label W; "
        "--format csv has watts\n";
    const std::string volts =
        ": above 100 V the instrument shows kilovolts under the label V; --format csv has volts\n";
    const std::string twoSweeps = "60,30\n90,30\n";
    expectCommands({
        {"points", trace("--all-points --unit W"), twoSweeps, 0,
         "point  frequencyMHz  count  average  maximum  minimum\n"
         "    0  -                 2  31.62 W   1.00 W   1.00 W\n"
         "    1  -                 2   1.00 W   1.00 W   1.00 W\n",
         "rfutils: note: \"31.62 W\" means 31.62 kW" + watts},
        {"once for two tables", trace("--marker 1 --marker 0 --all-points --unit W"), twoSweeps, 0,
         "marker  point  frequencyMHz  count  average  maximum  minimum\n"
         "1           1  -                 2   1.00 W   1.00 W   1.00 W\n"
         "0           0  -                 2  31.62 W   1.00 W   1.00 W\n"
         "\n"
         "point  frequencyMHz  count  average  maximum  minimum\n"
         "    0  -                 2  31.62 W   1.00 W   1.00 W\n"
         "    1  -                 2   1.00 W   1.00 W   1.00 W\n",
         "rfutils: note: \"31.62 W\" means 31.62 kW" + watts},
        {"once while following", trace("--marker 0 --follow --unit V"), "63\n63\n", 0,
         "sweep  time  marker  point  frequencyMHz  count  average  maximum  minimum\n"
         "    1  -     0           0  -                 1   0.32 V   0.32 V   0.32 V\n"
         "    2  -     0           0  -                 2   0.32 V   0.32 V   0.32 V\n",
         "rfutils: note: \"0.32 V\" means 0.32 kV" + volts},
    });
    for (const char* format : {"csv", "json"}) {
        const std::string options = std::string("--all-points --unit W --format ") + format;
        const CommandResult inWatts = runCommand(trace(options.c_str()), "90\n");
        EXPECT_EQ(inWatts.exitStatus, 0);
        EXPECT_EQ(inWatts.errors, "") << format;
    }
}

TEST(Trace, readsTheSamples) {
    const QString samples = QStringLiteral(RFUTILS_SAMPLES "/");
    expectCommands({
        {"FM band",
         {"trace", samples + "fm_band.csv"},
         "",
         0,
         "sweeps     240\nkept       240\npoints     512\nfromMHz    88\ntoMHz      108\n"
         "firstTime  2024-05-04 21:15:00\nlastTime   2024-05-04 21:54:50\n",
         ""},
        {"Wi-Fi band",
         {"trace", samples + "wifi_band.csv"},
         "",
         0,
         "sweeps     60\nkept       60\npoints     100\nfromMHz    2400\ntoMHz      2500\n"
         "firstTime  2024-05-04 14:02:11.308551\nlastTime   2024-05-04 14:02:12.198056\n",
         ""},
    });
}
