// Commands on recordings finish with what was read when they are interrupted; trace has its own tests.
#include <gtest/gtest.h>

#include "liveCommand.h"
#include "runCommand.h"

namespace {

/// Two sweeps of a hop from 100 to 104 MHz, and the beginning of a third one.
const char* const kSweeps =
    "2024-01-01, 10:00:00, 100000000, 104000000, 1000000, 5, -90, -40, -90, -90\n"
    "2024-01-01, 10:00:10, 100000000, 104000000, 1000000, 5, -90, -40, -90, -90\n"
    "2024-01-01, 10:00:20, 100000000, 104000000, 10";

}  // namespace

TEST(InterruptedCommands, writeTheirStates) {
    for (const QStringList& words :
         {QStringList{"trace", "-"}, QStringList{"peaks", "-", "--above", "20"},
          QStringList{"power", "-", "--series", "--channel", "101:102"},
          QStringList{"occupancy", "-", "--limit", "-60"}}) {
        LiveCommand command(words + QStringList{"--state", "half.state"}, kSweeps);
        command.send(SIGTERM);
        const CommandResult result = command.result();
        EXPECT_EQ(result.exitStatus, 143) << result.errors;
        QStringList merge = {"merge", "half.state"};
        merge += words.contains(QStringLiteral("--above")) ? words.mid(2) : QStringList();
        EXPECT_EQ(runCommand(merge, {}, command.folder).output, result.output);
    }
}

TEST(InterruptedCommands, finishWithWhatWasRead) {
    const SampleFolder masks;
    masks.add("mask.csv", "100,-30,\n104,-30,\n");
    const struct {
        QStringList words;
        std::string output;
    } kRows[] = {
        {{"power", "-", "--channel", "101:102", "--format", "csv"},
         "fromMHz,toMHz,power,unit,occupiedFromMHz,occupiedToMHz,occupiedMHz\n"
         "101,102,-40,dBm,101.005,101.995,0.9900000000000091\n"},
        {{"power", "-", "--channel", "101:102", "--series", "--format", "csv"},
         "sweep,time,fromMHz,toMHz,power,unit,occupiedFromMHz,occupiedToMHz,occupiedMHz\n"
         "1,2024-01-01 10:00:00,101,102,-40,dBm,101.005,101.995,0.9900000000000091\n"
         "2,2024-01-01 10:00:10,101,102,-40,dBm,101.005,101.995,0.9900000000000091\n"},
        {{"mask", "-", "--mask", masks.path() + "/mask.csv", "--format", "csv"},
         "fromMHz,toMHz,frequencyMHz,level,limit,margin\n"},
        // The interval of two of two begins at 2 / 5.8416.
        {{"occupancy", "-", "--limit", "-60", "--channels", "101:1:1", "--format", "csv"},
         "fromMHz,toMHz,samples,occupied,occupancy,low,high\n"
         "101,102,2,2,1,0.3423719528896193,1\n"
         "\n"
         "fromMHz,toMHz,channels,samples,fbo,sro,threshold,unit\n"
         "101,102,1,2,1,1,-60,dBm\n"},
        // 12.5 dB below the maximum are a quarter of a point.
        {{"peaks", "-", "--above", "20", "--width-at", "12.5", "--format", "csv"},
         "frequencyMHz,widthMHz,maximum,average,floor,above,present,first,last,unit\n"
         "101,0.5,-40,-40,-90,50,1,"
         "2024-01-01 10:00:00,2024-01-01 10:00:10,dBm\n"},
    };
    for (const auto& row : kRows) {
        for (const SignalStatus& sent : kSignalStatus) {
            LiveCommand command(row.words, kSweeps);
            command.send(sent.signal);
            const CommandResult result = command.result();
            EXPECT_EQ(result.exitStatus, sent.exitStatus) << row.output;
            EXPECT_EQ(result.output, row.output);
            EXPECT_EQ(result.errors, "");

            LiveCommand early(row.words, "2024-01-01, 10:00:00, 1000");
            early.send(sent.signal);
            const CommandResult none = early.result();
            EXPECT_EQ(none.exitStatus, sent.exitStatus) << row.output;
            EXPECT_EQ(none.errors, "rfutils: -: interrupted before a sweep was complete\n");
        }
    }
}
