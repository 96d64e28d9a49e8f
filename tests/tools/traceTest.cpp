#include <analysis/recordings/hopLines.h>
#include <gtest/gtest.h>
#include <support/svg.h>

#include <QImage>
#include <QProcess>
#include <cstdlib>
#include <utility>

#include "liveCommand.h"
#include "runCommand.h"

using rfu::test::hopLine;
using rfu::test::hopLines;

using namespace std::string_literals;

namespace {

#ifdef RFUTILS_HAS_SVG
constexpr bool kWritesSvg = true;
#else
constexpr bool kWritesSvg = false;
#endif

/// Two hops of two points; the second sweep has them the other way round, the third lacks one.
const char* const kBand =
    "2024-01-01, 10:00:00, 100000000, 102000000, 1000000.00, 5, -50.00, -60.00\n"
    "2024-01-01, 10:00:00, 102000000, 104000000, 1000000.00, 5, -70.00, -80.00\n"
    "2024-01-01, 10:00:10, 102000000, 104000000, 1000000.00, 5, -72.00, nan\n"
    "2024-01-01, 10:00:10, 100000000, 102000000, 1000000.00, 5, -52.00, -inf\n"
    "2024-01-01, 10:00:20, 100000000, 102000000, 1000000.00, 5, -54.00, -66.00\n";

/// A recording with one hop and one point per sweep, ten seconds apart.
std::string onePoint(const std::vector<const char*>& levels) {
    std::string lines;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        lines += hopLine('a', std::to_string(10 + 10 * (i % 5)), levels[i]);
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
        good("JSON, with a limit that one level equals",
             "--all-points --format json --limit -60dBm", kBand,
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
        // -60 dBm + 107
        good("a limit in another unit", "--all-points --format csv --limit 47dBuV --band 100:102",
             kBand,
             "point,frequencyMHz,count,average,maximum,minimum,unit,above\n"
             "0,100,3,-52,-50,-54,dBm,3\n"
             "1,101,2,-63,-60,-66,dBm,0\n"),
        // -30 dBm are 47.2 dBuV/m at 1 MHz: 107 - 29.8; 87.2 at 100 MHz
        good("a limit in a field", "--marker 0 --center 100M --limit 107.1dBuV/m --format csv",
             "-10,-9\n-10.2,-9\n",
             "marker,point,frequencyMHz,count,average,maximum,minimum,unit,above\n"
             "0,0,,2,-10.1,-10,-10.2,dBm,1\n"),
        good("a recording as precise as it was written", "--all-points --format csv",
             onePoint({"-50.125"}),
             "point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "0,100,1,-50.125,-50.125,-50.125,dBm\n"),
    });
}

TEST(Trace, showsMarkers) {
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
        good("markers before the points", "--marker 0 --all-points --format csv", onePoint({"-50"}),
             "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "0,0,100,1,-50,-50,-50,dBm\n"
             "\n"
             "point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "0,100,1,-50,-50,-50,dBm\n"),
        bad("below the recording", "--marker 99.9MHz", kBand,
            "-: marker 99.9MHz: the recording reaches from 100 MHz to 104 MHz"),
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
    });
}

TEST(Trace, keepsTheMostRecentSweeps) {
    const std::string sweeps = onePoint({"-10", "-20", "-30", "-40"});
    expectCommands({
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

TEST(Trace, keepsAllSweeps) {
    std::vector<const char*> many(1001, "-50");
    many.front() = "-10";
    many.back() = "-20";
    // -48980 / 1001; the first and the last are above the limit
    const std::string all = "1001,-49.93006993006993,-10,-50,dBm,2\n";
    const std::string sweeps = onePoint(many);
    const std::string header = "count,average,maximum,minimum,unit,above\n";
    expectCommands({
        good("of a marker", "--keep all --marker 0 --limit -30 --format csv", sweeps,
             "marker,point,frequencyMHz," + header + "0,0,100," + all),
        good("of all points", "--keep all --all-points --limit -30 --format csv", sweeps,
             "point,frequencyMHz," + header + "0,100," + all),
        good("while it grows", "--follow --keep all --marker 0 --format csv", "-1\n-2\n",
             "sweep,time,marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "1,,0,0,,1,-1,-1,-1,dBm\n"
             "2,,0,0,,2,-1.5,-1,-2,dBm\n"),
        good("the summary", "--keep all --format csv", kBand,
             "sweeps,kept,points,fromMHz,toMHz,bands,firstTime,lastTime\n"
             "3,3,4,100,104,100:104,2024-01-01 10:00:00,2024-01-01 10:00:20\n"),
        // 10 lg((1e-7 + 2e-3) / 3) = -31.7607; squares 711.1 + 177.8 + 177.8, / 3
        good("more", "--keep all --marker 0 --more", onePoint({"-70", "-30", "-30"}),
             "marker  point  frequencyMHz  count    average    maximum    minimum  powerMean"
             "     median  deviationDb  maximumSweep  maximumTime\n"
             "0           0    100.000000      3  -43.3 dBm  -30.0 dBm  -70.0 dBm  -31.8 dBm"
             "  -30.0 dBm        18.86             2  2024-01-01 10:00:20\n"),
    });
}

TEST(Trace, tellsMoreOfEveryPoint) {
    for (const char* keep : {"3", "all"}) {
        const std::string options = std::string("--all-points --more --keep ") + keep;
        // 10 lg((0.1 + 0.01) / 2) = -12.596 and 10 lg((1e-3 + 1e-5) / 2) = -32.967
        expectCommands({good(
            keep, options.c_str(), "-10,\n-20,-30\n,-50\n",
            "point  frequencyMHz  count    average    maximum    minimum  powerMean     median"
            "  deviationDb  maximumSweep  maximumTime\n"
            "    0  -                 2  -15.0 dBm  -10.0 dBm  -20.0 dBm  -12.6 dBm  -15.0 dBm"
            "         5.00             1  -\n"
            "    1  -                 2  -40.0 dBm  -30.0 dBm  -50.0 dBm  -33.0 dBm  -40.0 dBm"
            "        10.00             2  -\n")});
    }
}

TEST(Trace, tellsMoreOfAMarker) {
    expectCommands({
        good("text", "--marker 0 --more --unit dBuV", onePoint({"-70", "-30", "-30"}),
             // 10 lg((1e-7 + 2e-3) / 3) = -31.7607; + 106.9897; squares 711.1 + 177.8 + 177.8
             "marker  point  frequencyMHz  count    average    maximum    minimum  powerMean"
             "     median  deviationDb  maximumSweep  maximumTime\n"
             "0           0    100.000000      3  63.7 dBuV  77.0 dBuV  37.0 dBuV  75.2 dBuV"
             "  77.0 dBuV        18.86             2  2024-01-01 10:00:20\n"),
        good("JSON, without a time", "--marker 0 --more --format json", "-30\n",
             "[\n"
             "  {\"marker\": \"0\", \"point\": 0, \"frequencyMHz\": null, \"count\": 1, "
             "\"average\": -30, \"maximum\": -30, \"minimum\": -30, \"powerMean\": -30, "
             "\"median\": -30, \"unit\": \"dBm\", \"deviationDb\": 0, \"maximumSweep\": 1, "
             "\"maximumTime\": null}\n"
             "]\n"),
    });
}

TEST(Trace, notesNumbersOfPointsThatAreFrequenciesToo) {
    // 100 points of 1 MHz from 1 MHz on: point 7 is at 8 MHz.
    std::string band = "2024-01-01, 10:00:00, 1000000, 101000000, 1000000, 5";
    for (int i = 0; i < 100; ++i) {
        band += ", -50";
    }
    const std::string head =
        "marker  point  frequencyMHz  count    average    maximum    minimum\n";
    const std::string levels = "      1  -50.0 dBm  -50.0 dBm  -50.0 dBm\n";
    expectCommands({
        good("noted", "--marker 7", band + "\n", head + "7           7      8.000000" + levels)
            .noting("marker 7 is the point of this number, at 8 MHz; the frequency is 7MHz"),
        good("the first point lies outside", "--marker 0", band + "\n",
             head + "0           0      1.000000" + levels),
        good("a frequency with a suffix", "--marker 7000k", band + "\n",
             head + "7000k       6      7.000000" + levels),
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
    });
}

TEST(Trace, skipsWhatHoldsNoData) {
    expectCommands({good(
        "mark, comment and header", "--marker 0 --format csv",
        "\xEF\xBB\xBF# gain 40\ndate,time,Hz low,Hz high,Hz step,samples,dB\n" + onePoint({"-50"}),
        "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
        "0,0,100,1,-50,-50,-50,dBm\n")});
}

TEST(Trace, readsCompressedRecordings) {
    // "-50", "-60" and "-70.5", each a line, as gzip -n, xz --check=crc32 and zstd --check write them.
    const struct {
        const char* name;
        std::string bytes;
    } kSamples[] = {
        {"gzip",
         "\x1F\x8B\x08\x00\x00\x00\x00\x00\x00\x03\xD3\x35\x35\xE0\xD2\x35\x03\x62\x73\x03"
         "\x3D\x53\x2E\x00\x6E\xB6\xEF\xA9\x0E\x00\x00\x00"s},
        {"xz",
         "\xFD\x37\x7A\x58\x5A\x00\x00\x01\x69\x22\xDE\x36\x02\x00\x21\x01\x16\x00\x00\x00"
         "\x74\x2F\xE5\xA3\x01\x00\x0D\x2D\x35\x30\x0A\x2D\x36\x30\x0A\x2D\x37\x30\x2E\x35"
         "\x0A\x00\x00\x00\x6E\xB6\xEF\xA9\x00\x01\x22\x0E\x0C\xDE\x8C\x60\x90\x42\x99\x0D"
         "\x01\x00\x00\x00\x00\x01\x59\x5A"s},
        {"zstd",
         "\x28\xB5\x2F\xFD\x24\x0E\x71\x00\x00\x2D\x35\x30\x0A\x2D\x36\x30\x0A\x2D\x37\x30"
         "\x2E\x35\x0A\x48\x63\x94\x8E"s},
    };
    const std::string header = "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n";
    for (const auto& sample : kSamples) {
        const std::string name = sample.name;
        SampleFolder folder;
        folder.add("night.csv.packed", sample.bytes);
        if (std::string(RFUTILS_UNPACKED).find(name + ' ') == std::string::npos) {
            expectCommands(
                {fails(sample.name, "trace night.csv.packed",
                       "night.csv.packed: is compressed; unpack it: " + name +
                           " -dc night.csv.packed | rfutils trace -"),
                 fails(sample.name, "trace -",
                       "-: is compressed; unpack it: " + name + " -dc - | rfutils trace -")
                     .given(sample.bytes),
                 fails(sample.name, "convert --to V",
                       "-: is compressed; unpack it: " + name + " -dc - | rfutils convert")
                     .given(sample.bytes)},
                folder);
            continue;
        }
        const std::string twice = sample.bytes + sample.bytes;
        expectCommands(
            {shows(sample.name, "trace night.csv.packed --marker 0 --format csv",
                   header + "0,0,,3,-60.166666666666664,-50,-70.5,dBm\n"),
             shows("standard input, cut within its second stream",
                   "trace - --marker 0 --format csv",
                   header + "0,0,,3,-60.166666666666664,-50,-70.5,dBm\n")
                 .given(twice.substr(0, sample.bytes.size() + 7))
                 .noting("-: the compressed data ends early; a line that it cuts is left out"),
             fails("damaged", "trace -", "-: the compressed data is damaged")
                 .given(sample.bytes + "text of other lines\n"),
             shows("values", "convert --to dBm", "-50.0 dBm\n-60.0 dBm\n-70.5 dBm\n")
                 .given(sample.bytes),
             fails("values that end early", "convert --to dBm", "-: the compressed data ends early")
                 .given(twice.substr(0, sample.bytes.size() + 7))
                 .after("-50.0 dBm\n-60.0 dBm\n-70.5 dBm\n")},
            folder);
    }
}

TEST(Trace, readsSeveralFilesAsOne) {
    SampleFolder folder;
    folder.add("late.csv", hopLine('a', "30", "-3") + hopLine('a', "40", "-4"));
    folder.add("early.csv", onePoint({"-1"}));
    const std::string both =
        "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
        "0,0,100,3,-2.6666666666666665,-1,-4,dBm\n";
    expectCommands(
        {shows("files", "trace late.csv early.csv --marker 0 --format csv", both),
         shows("one of them as standard input", "trace late.csv - --marker 0 --format csv", both)
             .given(onePoint({"-1"})),
         misuses("standard input twice", "trace - late.csv -",
                 "standard input, -, can be read only once"),
         misuses("live", "trace - late.csv --follow --marker 0", "--follow takes one FILE"),
         fails("the same time", "trace late.csv late.csv",
               "late.csv: begins at 2024-01-01 10:00:30, before late.csv ends at 2024-01-01 "
               "10:00:40")},
        folder);
}

TEST(Trace, skipsBrokenLinesUnlessItIsStrict) {
    expectCommands({
        good("skipped", "--marker 0 --format csv", "-1\n-2x\n-3\n-4x\n",
             "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "0,0,,2,-2,-1,-3,dBm\n")
            .noting("-:2: \"-2x\" is not a level in dBm; the line is skipped\n"
                    "rfutils: note: -: 2 lines in all made no sense and were skipped"),
        bad("strict", "--strict", "-1\n-2x\n", "-:2: \"-2x\" is not a level in dBm"),
        bad("no other line", "", "-2x\n",
            "-:1: neither a line of a sweep (date, time, Hz low, Hz "
            "high, Hz step, samples, dB, ...) nor a trace of levels in dBm"),
    });
}

TEST(Trace, notesALastLineThatMayBeCut) {
    const std::string note = ": the last line has no line end and may be cut; it is left out\n";
    expectCommands({
        {"cut", trace("--marker 0 --format csv"), "-50.25\n-59.75\n-5", 0,
         "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
         "0,0,,2,-55,-50.25,-59.75,dBm\n",
         "rfutils: note: -:3" + note},
        {"nothing else", trace(""), "-50.25,-5", 1, "",
         "rfutils: note: -:1" + note + "rfutils: -: holds no sweep\n"},
        good("whole", "--marker 0 --format csv", "-1\n-2",
             "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "0,0,,2,-1.5,-1,-2,dBm\n"),
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
             "bands      100:104\n"
             "firstTime  2024-01-01 10:00:00\n"
             "lastTime   2024-01-01 10:00:20\n"),
        good("what is kept", "--keep 1 --format json", kBand,
             "{\"sweeps\": 3, \"kept\": 1, \"points\": 4, \"fromMHz\": 100, \"toMHz\": 104, "
             "\"bands\": \"100:104\", "
             "\"firstTime\": \"2024-01-01 10:00:20\", \"lastTime\": \"2024-01-01 10:00:20\"}\n"),
        good("two bands", "--format csv", hopLines("a0 b0 d0"),
             "sweeps,kept,points,fromMHz,toMHz,bands,firstTime,lastTime\n"
             "1,1,3,100,104,100:102 103:104,2024-01-01 10:00:00,2024-01-01 10:00:00\n"),
        good("plain traces", "--format csv", "-1,-2\n-1,-2\n",
             "sweeps,kept,points,fromMHz,toMHz,bands,firstTime,lastTime\n"
             "2,2,2,,,,,\n"),
    });
}

TEST(Trace, followsARecordingThatBeginsInTheMiddle) {
    expectCommands({good("the rest of a sweep is the first",
                         "--follow --marker 0 --marker 2 --keep 1 --format csv",
                         hopLines("c0 a10 b10 c10 a20 b20 c20"),
                         "sweep,time,marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
                         "1,2024-01-01 10:00:00,0,0,100,0,,,,dBm\n"
                         "1,2024-01-01 10:00:00,2,2,102,1,-1,-1,-1,dBm\n"
                         "2,2024-01-01 10:00:10,0,0,100,1,-2,-2,-2,dBm\n"
                         "2,2024-01-01 10:00:10,2,2,102,1,-4,-4,-4,dBm\n"
                         "3,2024-01-01 10:00:20,0,0,100,1,-5,-5,-5,dBm\n"
                         "3,2024-01-01 10:00:20,2,2,102,1,-7,-7,-7,dBm\n")});
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
    });
}

TEST(Trace, followsThroughBrokenLines) {
    const std::string head =
        "sweep,time,marker,point,frequencyMHz,count,average,maximum,minimum,unit\n";
    const std::string first = head + "1,,0,0,,1,-1,-1,-1,dBm\n";
    expectCommands({
        good("one", "--follow --marker 0 --format csv", "-1\nx\n-3\n",
             first + "2,,0,0,,2,-2,-1,-3,dBm\n")
            .noting("-:2: \"x\" is not a level in dBm; the line is skipped"),
        good("three, counted at the end", "--follow --marker 0 --format csv", "-1\nx\ny\nz\n",
             first)
            .noting("-:2: \"x\" is not a level in dBm; the line is skipped\n"
                    "rfutils: note: -: 3 lines in all made no sense and were skipped"),
        {"no other", trace("--follow --marker 0 --format csv"), "-x\n", 1, "",
         "rfutils: note: -:1: neither a line of a sweep (date, time, Hz low, Hz high, Hz step, "
         "samples, dB, ...) nor a trace of levels in dBm; the line is skipped\n"
         "rfutils: -: holds no sweep\n"},
    });
}

TEST(Trace, followsASourceWhoseFirstSweepLostAHop) {
    const std::string note =
        "-: a sweep has hops that the first one lacked; their points are added";
    // 100 and 103 MHz, then 101 MHz between them, then 102 MHz
    const std::string sweeps = hopLines("a0 d0 a10 b10 d10 a20 b20 c20 d20 a30 b30 c30 d30");
    expectCommands({
        good("markers by frequency and by number",
             "--follow --marker 103MHz --marker 1 --format csv", sweeps,
             "sweep,time,marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "1,2024-01-01 10:00:00,103MHz,1,103,1,-2,-2,-2,dBm\n"
             "1,2024-01-01 10:00:00,1,1,103,1,-2,-2,-2,dBm\n"
             "2,2024-01-01 10:00:10,103MHz,2,103,2,-3.5,-2,-5,dBm\n"
             "2,2024-01-01 10:00:10,1,2,103,2,-3.5,-2,-5,dBm\n"
             "3,2024-01-01 10:00:20,103MHz,3,103,3,-5.333333333333333,-2,-9,dBm\n"
             "3,2024-01-01 10:00:20,1,3,103,3,-5.333333333333333,-2,-9,dBm\n"
             "4,2024-01-01 10:00:30,103MHz,3,103,4,-7.25,-2,-13,dBm\n"
             "4,2024-01-01 10:00:30,1,3,103,4,-7.25,-2,-13,dBm\n")
            .noting(note),
        // Hops of 1 MHz; 100.9 MHz is nearest to 101 MHz once that is there.
        good("a marker that gets a nearer point", "--follow --marker 100.9MHz --format csv",
             hopLines("a0 c0 a10 b10 c10 a20 b20 c20"),
             "sweep,time,marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
             "1,2024-01-01 10:00:00,100.9MHz,0,100,1,-1,-1,-1,dBm\n"
             "2,2024-01-01 10:00:10,100.9MHz,1,101,1,-4,-4,-4,dBm\n"
             "3,2024-01-01 10:00:20,100.9MHz,1,101,2,-5.5,-4,-7,dBm\n")
            .noting(note),
        {"all points at the end", trace("--follow --marker 103MHz --all-points --keep 2"), sweeps,
         0,
         "sweep  time                 marker  point  frequencyMHz  count   average   maximum   "
         "minimum\n"
         "    1  2024-01-01 10:00:00  103MHz      1    103.000000      1  -2.0 dBm  -2.0 dBm  -2.0 "
         "dBm\n"
         "    2  2024-01-01 10:00:10  103MHz      2    103.000000      2  -3.5 dBm  -2.0 dBm  -5.0 "
         "dBm\n"
         "    3  2024-01-01 10:00:20  103MHz      3    103.000000      2  -7.0 dBm  -5.0 dBm  -9.0 "
         "dBm\n"
         "    4  2024-01-01 10:00:30  103MHz      3    103.000000      2  -11.0 dBm  -9.0 dBm  "
         "-13.0 dBm\n"
         "\n"
         "point  frequencyMHz  count    average   maximum    minimum\n"
         "    0    100.000000      2   -8.0 dBm  -6.0 dBm  -10.0 dBm\n"
         "    1    101.000000      2   -9.0 dBm  -7.0 dBm  -11.0 dBm\n"
         "    2    102.000000      2  -10.0 dBm  -8.0 dBm  -12.0 dBm\n"
         "    3    103.000000      2  -11.0 dBm  -9.0 dBm  -13.0 dBm\n",
         "rfutils: note: " + note + "\n"},
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
    feed(hopLine('a', "0", "-1") + hopLine('b', "0", "-2"));
    feed(hopLine('b', "10", "-4"));  // only now the first sweep is known to be complete
    EXPECT_TRUE(waitFor("1,2024-01-01 10:00:00,1,1,101,1,-2,-2,-2,dBm\n")) << shown;
    feed(hopLine('a', "10", "-3"));  // all hops are there: nothing needs to follow
    EXPECT_TRUE(waitFor("2,2024-01-01 10:00:10,1,1,101,2,-3,-2,-4,dBm\n")) << shown;
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 0);
}

TEST(Trace, finishesWithWhatWasReadWhenItIsInterrupted) {
    const std::string header = "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n";
    for (const SignalStatus& row : kSignalStatus) {
        LiveCommand whole(trace("--marker 0 --format csv --plot plot.png"), "-1,-2\n-3,-4\n-9,-");
        whole.send(row.signal);
        const CommandResult shown = whole.result();
        EXPECT_EQ(shown.exitStatus, row.exitStatus);
        EXPECT_EQ(shown.output, header + "0,0,,2,-2,-1,-3,dBm\n");
        EXPECT_EQ(shown.errors, "");
        EXPECT_FALSE(QImage(whole.folder.path() + QStringLiteral("/plot.png")).isNull());

        LiveCommand followed(trace("--follow --marker 0 --format json --keep all"), "-1\n");
        followed.send(row.signal);
        const CommandResult rows = followed.result();
        EXPECT_EQ(rows.exitStatus, row.exitStatus);
        EXPECT_EQ(rows.output.substr(0, 2) + rows.output.substr(rows.output.size() - 2), "[\n]\n");

        LiveCommand early(trace(""), hopLine('a', "0", "-1").substr(0, 40));
        early.send(row.signal);
        const CommandResult none = early.result();
        EXPECT_EQ(none.exitStatus, row.exitStatus);
        EXPECT_EQ(none.errors, "rfutils: -: interrupted before a sweep was complete\n");

        const SampleFolder others;
        others.add("second.csv", hopLine('a', "0", "-1"));
        LiveCommand several(trace("") + QStringList(others.path() + "/second.csv"),
                            hopLine('a', "0", "-1").substr(0, 40));
        several.send(row.signal);
        EXPECT_EQ(several.result().exitStatus, row.exitStatus) << "while it looks into the files";
    }
}

TEST(Trace, endsAtOnceWithASecondSignal) {
    std::string sweeps;
    for (int i = 0; i < 10000; ++i) {
        sweeps += "-1,-2\n";
    }
    // Both print more than a pipe takes that nobody reads, one while it reads and one behind.
    const std::string manyPoints = "-1" + std::string(10000, ',') + "\n";
    const std::pair<const char*, std::string> kRuns[] = {{"--follow --marker 0", sweeps},
                                                         {"--all-points", manyPoints}};
    for (const auto& [options, lines] : kRuns) {
        const SampleFolder folder;
        const Fifo output(folder.path() + QStringLiteral("/output"));
        LiveCommand live(trace(options), lines, output.name);
        int sent = 0;
        do {
            live.send(SIGINT);
            ++sent;
        } while (!live.process.waitForFinished(500) && sent < 100);
        EXPECT_EQ(live.process.state(), QProcess::NotRunning);
        EXPECT_GE(sent, 2) << options;
        // Behind the reading a signal ends the command as it does others.
        EXPECT_EQ(live.process.exitCode(),
                  live.process.exitStatus() == QProcess::NormalExit ? 130 : SIGINT);
    }
}

TEST(Trace, saysWhatIsWrong) {
    const std::string first = hopLine('a', "0", "-1");
    expectCommands({
        bad("nothing", "", "", "-: holds no sweep"),
        bad("unit unknown", "--unit dbuv", kBand,
            "there is no unit \"dbuv\"; the nearest are dBuV, dBmV or dBV"),
    });
    SampleFolder folder;
    folder.add("band.csv", first + "2024-01-01, 10:00:10, 100000000\n");
    expectCommands(
        {{"a file",
          {"trace", "band.csv", "--strict"},
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

TEST(Trace, refusesWrongUsage) {
    expectCommands({
        misused("seven markers",
                "--marker 1 --marker 1 --marker 1 --marker 1 --marker 1 --marker 1 --marker 1",
                "--marker may be given 6 times at most"),
        misused("no frequency", "--marker abc",
                "--marker: \"abc\" is not a frequency such as 88.1MHz or the number of a point"),
        misused("negative point", "--marker=-1",
                "--marker: \"-1\" is not a frequency such as 88.1MHz or the number of a point"),
        misused("keeping nothing", "--keep 0", "--keep takes 1 to 1000000 sweeps, or all"),
        misused("keeping too much", "--keep 1000001", "--keep takes 1 to 1000000 sweeps, or all"),
        misused("keeping something else", "--keep most",
                "--keep takes 1 to 1000000 sweeps, or all"),
        misused("following nothing", "--follow", "--follow needs a --marker"),
        misused("more of nothing", "--more", "--more needs a --marker or --all-points"),
        misused("two shapes in CSV", "--follow --marker 0 --all-points --format csv",
                "--follow together with --all-points prints text only"),
        misused("two shapes in JSON", "--follow --marker 0 --all-points --format json",
                "--follow together with --all-points prints text only"),
        misused("a limit of nothing", "--limit -50",
                "--limit needs a --marker, --all-points, --plot or --state"),
        misused("a mask of nothing", "--mask mask.csv --marker 0", "--mask needs --plot"),
        misused("levels of nothing", "--levels -100:-50", "--levels needs --plot"),
        misused("a width of nothing", "--width 640", "--width needs --plot"),
        misused("a low picture", "--plot x.png --height 359", "--height takes 360 to 10000 pixels"),
        misused("a wide picture", "--plot x.png --width 10001",
                "--width takes 480 to 10000 pixels"),
        misused("levels that look the same", "--plot x.png --levels -60.0005:-60",
                "--levels: the two are too close together or too far apart"),
        misused("levels without a difference", "--plot x.png --levels -1e308:1e308",
                "--levels: the two are too close together or too far apart"),
        misused("a unit of nothing", "--unit V", "--unit needs a --marker, --all-points or --plot"),
        misused("an antenna for levels", "--marker 0 --center 100MHz",
                "--center needs a --unit that depends on the antenna, such as dBuV/m"),
        misused("an antenna for volts", "--marker 0 --unit V --gain 2",
                "--gain needs a --unit that depends on the antenna, such as dBuV/m"),
        misused("a limit in a field without an antenna", "--marker 0 --limit 47dBuV/m",
                "dBuV/m needs the centre frequency of the antenna: --center"),
        misused("a limit in an unknown unit", "--marker 0 --limit 47dBx",
                "--limit: there is no unit \"dBx\"; the nearest are dBm, dBV or dBmV"),
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
    // 100 to 103 and 107 to 110 MHz
    const QImage bands = plotOf("", hopLines("a0 b0 c0 h0 i0 j0"));
    const auto hasCurve = [&bands](int x) {
        bool found = false;
        for (int y = 75; y < 617; ++y) {
            found = found || shows(bands, x, y, qRgb(0x1f, 0x4e, 0x79));
        }
        return found;
    };
    EXPECT_TRUE(hasCurve(250) && hasCurve(1000));
    EXPECT_FALSE(hasCurve(668));
}

TEST(Trace, plotsLimitMaskAndLevelsOfMarkers) {
    SampleFolder folder;
    folder.add("band.csv", kBand);
    folder.add("mask.csv", "100,40\n104,40\n");
    folder.add("mask.png", "100,40\n");
    folder.add("plain.csv", "-1,-2\n");
    const QStringList plots = splitWords(
        "trace band.csv --marker 103MHz --limit -70 --mask mask.csv --levels 20:60 --width 900 "
        "--height 480 "
        "--unit dBuV --plot");
    for (const char* name : {"plot.PNG", "plot.SVG"}) {
        if (!kWritesSvg && name[5] == 'S') {
            continue;
        }
        const CommandResult result =
            runCommand(plots + QStringList{QLatin1String(name)}, "", folder);
        EXPECT_EQ(result.exitStatus, 0) << result.errors;
    }
    EXPECT_EQ(QImage(folder.path() + QStringLiteral("/plot.PNG"), "PNG").size(), QSize(900, 480));
    if (kWritesSvg) {
        const rfu::test::Svg svg(QByteArray::fromStdString(folder.read("plot.SVG")));
        EXPECT_EQ(svg.viewBox, "0 0 900 480");
        EXPECT_EQ(svg.title, "band.csv, 3 sweeps");
        for (const char* text :
             {"band.csv, 3 sweeps", "maximum", "average", "minimum", "limit", "mask", "20", "60",
              "level in dBuV", "frequency in MHz", "103MHz  27.0 dBuV"}) {
            EXPECT_TRUE(svg.hasText(text)) << text;
        }
        // The area reaches from 84,94 (60 dBuV) to 872,418 (20 dBuV); -70 dBm are 36.99 dBuV.
        EXPECT_EQ(svg.linesOf("#b8860b").back(), (rfu::test::Svg::Line{{84, 256}, {872, 256}}));
        EXPECT_NEAR(svg.linesOf("#2b333d").back().front().y(), 418 - 8.1 * 16.99, 0.1);
    }
    expectCommands(
        {fails("a picture of another kind", "trace band.csv --plot x.jpg",
               "x.jpg: cannot be written: plots are PNG or SVG and end in .png or .svg"),
         fails("a picture over its mask", "trace band.csv --plot mask.png --mask mask.png",
               "mask.png: cannot be written: it is the input mask.png"),
         fails("a mask without frequencies", "trace plain.csv --plot x.png --mask mask.csv",
               "plain.csv: holds no frequencies, so that no mask applies"),
         fails("no mask", "trace band.csv --plot x.png --mask none.csv",
               "none.csv: No such file or directory")},
        folder);
}

TEST(Trace, examplesOfTheHelpRun) {
    const SampleFolder folder;
    for (const char* sample : {"fm_band.csv", "wifi_band.csv"}) {
        ASSERT_TRUE(QFile::copy(QStringLiteral(RFUTILS_SAMPLES "/") + QLatin1String(sample),
                                folder.path() + QLatin1Char('/') + QLatin1String(sample)));
    }
    const auto examples = examplesOf(runCommand({"trace", "--help"}).output);
    ASSERT_EQ(examples.size(), 8U);
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
         "sweeps     240\nkept       240\npoints     512\nfromMHz    88\ntoMHz      108\nbands     "
         " 88:108\n"
         "firstTime  2024-05-04 21:15:00\nlastTime   2024-05-04 21:54:50\n",
         ""},
        {"Wi-Fi band",
         {"trace", samples + "wifi_band.csv"},
         "",
         0,
         "sweeps     60\nkept       60\npoints     100\nfromMHz    2400\ntoMHz      2500\nbands    "
         "  2400:2500\n"
         "firstTime  2024-05-04 14:02:11.308551\nlastTime   2024-05-04 14:02:12.198056\n",
         ""},
    });
}
