#include <analysis/recordings/hopLines.h>
#include <gtest/gtest.h>

#include "runCommand.h"

using rfu::test::hopLines;

namespace {

const std::string kSix = hopLines("a0 b0 a1 b1 a2 b2 a3 b3 a4 b4 a5 b5");

}  // namespace

TEST(Window, isOfEveryCommandOnRecordings) {
    const SampleFolder folder;
    folder.add("six.csv", kSix);
    folder.add("mask.csv", "100,-5\n101.5,-5\n");
    const QString window = QStringLiteral(" six.csv --format csv --band 101:102 --from 10:00:02");
    const auto in = [&](const char* options) {
        return Words(splitWords((options + window).toStdString()));
    };
    expectCommands(
        {
            shows("trace", in("trace --last 2 --marker 0"),
                  "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
                  "0,0,101,2,-11,-10,-12,dBm\n"),
            shows("waterfall", in("waterfall --raw --png out.png --last 3 --every 2"),
                  "sweeps,points,fromMHz,toMHz,bands,firstTime,lastTime,width,height,levelsMin,"
                  "levelsMax,unit\n"
                  "2,1,101,102,101:102,2024-01-01 10:00:02,2024-01-01 10:00:04,1,2,-10,-6,dBm\n"),
            shows("power", in("power --channel 101:102 --series --every 3"),
                  "sweep,time,fromMHz,toMHz,power,unit,occupiedFromMHz,occupiedToMHz,occupiedMHz\n"
                  "1,2024-01-01 10:00:02,101,102,-6,dBm,101.005,101.995,0.9900000000000091\n"
                  "2,2024-01-01 10:00:05,101,102,-12,dBm,101.005,101.995,0.9900000000000091\n"),
            shows("peaks", in("peaks --last 1"),
                  "frequencyMHz,widthMHz,maximum,average,floor,above,present,first,last,unit\n"),
            {"mask", in("mask --mask mask.csv --last 2").list, "", 0,
             "fromMHz,toMHz,frequencyMHz,level,limit,margin\n", ""},
        },
        folder);
}

TEST(Window, countsFromTheEndOfFilesOnly) {
    const SampleFolder folder;
    folder.add("six.csv", kSix);
    const std::string head = "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n";
    expectCommands(
        {
            shows("a file", "trace six.csv --from -2s --marker 0 --format csv",
                  head + "0,0,100,3,-9,-7,-11,dBm\n"),
            fails("standard input", "trace - --from -2s",
                  "-: a time before the end needs a regular file, which is read twice")
                .given(kSix),
            shows("the last sweeps of standard input",
                  "power - --channel 101:102 --last 2 --series --format csv",
                  "sweep,time,fromMHz,toMHz,power,unit,occupiedFromMHz,occupiedToMHz,occupiedMHz\n"
                  "1,2024-01-01 10:00:04,101,102,-10,dBm,101.005,101.995,0.9900000000000091\n"
                  "2,2024-01-01 10:00:05,101,102,-12,dBm,101.005,101.995,0.9900000000000091\n")
                .given(kSix),
        },
        folder);
}

TEST(Window, saysWhatItLeavesOut) {
    const SampleFolder folder;
    folder.add("six.csv", kSix);
    folder.add("levels.txt", "-1,-2\n");
    expectCommands(
        {
            fails("no sweep", "peaks six.csv --to 09:00",
                  "six.csv: has no sweep between these times; it reaches from 2024-01-01 10:00:00 "
                  "to 2024-01-01 10:00:05"),
            fails("no point", "peaks six.csv --band 103:104 --band 200M:1G",
                  "six.csv: has no point in the band; it reaches from 100 MHz to 102 MHz"),
            fails("no frequencies", "trace levels.txt --band 1:2",
                  "levels.txt: holds no frequencies to choose points by"),
            fails("no times", "trace levels.txt --from 10:00",
                  "levels.txt: holds no times to choose sweeps by"),
            misuses("no time", "trace six.csv --from yesterday",
                    "--from: \"yesterday\" is not a time such as \"2024-05-04 21:15\", 21:15:30 "
                    "or, before the end, -10m"),
            misuses("no band", "trace six.csv --band 102:101",
                    "--band: \"102:101\" is not a frequency and a higher one such as "
                    "88MHz:108MHz"),
            misuses("every", "trace six.csv --every 0", "--every takes 1 or more"),
            misuses("last", "peaks six.csv --last -1", "--last takes 1 or more"),
            misuses("last of trace", "trace six.csv --last 1000001",
                    "--last takes 1 to 1000000 sweeps, or all"),
            misuses("two names", "trace six.csv --last 2 --keep 2",
                    "--keep and --last are the same; give one"),
            misuses("live", "trace six.csv --follow --marker 0 --to -1m",
                    "--follow has no end that --from and --to could count from"),
        },
        folder);
}

TEST(Window, isOfLiveSourcesToo) {
    expectCommands({
        shows("a window",
              "trace - --follow --marker 101M --from 10:00:01 --every 2 --band 101:102 "
              "--keep 2 --format csv",
              "sweep,time,marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
              "1,2024-01-01 10:00:01,101M,0,101,1,-4,-4,-4,dBm\n"
              "2,2024-01-01 10:00:03,101M,0,101,2,-6,-4,-8,dBm\n"
              "3,2024-01-01 10:00:05,101M,0,101,2,-10,-8,-12,dBm\n")
            .given(kSix),
    });
}
