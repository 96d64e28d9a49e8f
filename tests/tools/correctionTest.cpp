#include <analysis/recordings/hopLines.h>
#include <gtest/gtest.h>

#include "runCommand.h"

using rfu::test::hopLines;

TEST(Correction, isOfEveryCommandOnRecordings) {
    const SampleFolder folder;
    folder.add("two.csv", hopLines("a0 b0 a1 b1"));
    folder.add("cable.csv", "frequency,dB\n100M,10\n0.101G,20\n");
    folder.add("mask.csv", "100,8.5\n102,8.5\n");
    expectCommands(
        {
            shows("trace",
                  "trace two.csv --all-points --format csv --correction cable.csv --offset -0.5dB "
                  "--limit 17",
                  "point,frequencyMHz,count,average,maximum,minimum,unit,above\n"
                  "0,100,2,7.5,8.5,6.5,dBm,0\n"
                  "1,101,2,16.5,17.5,15.5,dBm,1\n"),
            shows("traces", "trace - --marker 0 --format csv --offset 3",
                  "marker,point,frequencyMHz,count,average,maximum,minimum,unit\n"
                  "0,0,,1,2,2,2,dBm\n")
                .given("-1,nan\n"),
            shows("waterfall", "waterfall two.csv --raw --png out.png --format csv --offset=-10",
                  "sweeps,points,fromMHz,toMHz,bands,firstTime,lastTime,width,height,levelsMin,"
                  "levelsMax,unit\n"
                  "2,2,100,102,100:102,2024-01-01 10:00:00,2024-01-01 10:00:01,2,2,-14,-11,dBm\n"),
            shows("power",
                  "power two.csv --channel 101:102 --series --format csv --correction cable.csv",
                  "sweep,time,fromMHz,toMHz,power,unit,occupiedFromMHz,occupiedToMHz,occupiedMHz\n"
                  "1,2024-01-01 10:00:00,101,102,18,dBm,101.005,101.995,0.9900000000000091\n"
                  "2,2024-01-01 10:00:01,101,102,16,dBm,101.005,101.995,0.9900000000000091\n"),
            {"mask", splitWords("mask two.csv --mask mask.csv --correction cable.csv --format csv"),
             "", 3, "fromMHz,toMHz,frequencyMHz,level,limit,margin\n100,102,101,18,8.5,-9.5\n", ""},
        },
        folder);
}

TEST(Correction, refusesWhatItCannotUse) {
    const SampleFolder folder;
    folder.add("two.csv", hopLines("a0 b0 a1 b1"));
    folder.add("cable.png", "100,1\n");
    folder.add("bad.csv", "100,1\n101\n");
    expectCommands(
        {
            fails("a line without a number", "trace two.csv --correction bad.csv",
                  "bad.csv:2: the line has no dB"),
            fails("no file", "peaks two.csv --correction none.csv",
                  "none.csv: No such file or directory"),
            fails("no frequencies", "trace - --correction cable.png",
                  "-: holds no frequencies to correct levels by")
                .given("-1\n"),
            misuses("no difference", "trace two.csv --offset 3dBm",
                    "--offset: \"3dBm\" is not a difference such as 6dB or a number of dB"),
            fails("a picture in its place",
                  "waterfall two.csv --correction cable.png --png cable.png",
                  "cable.png: cannot be written: it is the input cable.png"),
        },
        folder);
}
