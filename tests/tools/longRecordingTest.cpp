// What the commands take for a recording of 2 GB. It is made in the folder for temporary files, and only in a
// long run.
#include <gtest/gtest.h>
#include <support/samples.h>

#include <QDateTime>
#include <QFile>
#include <cstdio>
#include <string>
#include <vector>

#include "runCommand.h"

#include <sys/resource.h>

namespace {

constexpr qint64 kMegabyte = 1000000;
constexpr qint64 kLong = 2000 * kMegabyte;
constexpr qint64 kShort = 100 * kMegabyte;
constexpr long kMostMemory = 300000;  // KiB
// How much more than its length a long recording may cost: waterfall --raw reads it twice.
constexpr double kMostTimes = 2.2;

/// Noise in hops; the whole sweeps come again with running time stamps.
class Noise {
public:
    Noise() {
        rfu::test::Samples samples(11);
        for (std::string& levels : levels_) {
            for (int i = 0; i < kBins; ++i) {
                levels +=
                    ", " +
                    std::to_string(-9000 + static_cast<int>(samples.below(2000))).insert(3, ".");
            }
            levels += '\n';
        }
    }

    void writeTo(QFile& file, qint64 bytes) const {
        const QDateTime start(QDate(2024, 5, 4), QTime(21, 15), Qt::UTC);
        for (qint64 sweep = 0; file.pos() < bytes; ++sweep) {
            const std::string time = start.addSecs(sweep)
                                         .toString(QStringLiteral("yyyy-MM-dd, hh:mm:ss, "))
                                         .toStdString();
            std::string lines;
            for (qint64 hop = 0; hop < kHops; ++hop) {
                const qint64 low = 88000000 + hop * kBins * 5000;
                lines += time + std::to_string(low) + ", " + std::to_string(low + kBins * 5000) +
                         ", 5000.00, 1" + levels_[(3 * sweep + hop) % kVariants];
            }
            ASSERT_EQ(file.write(lines.data(), static_cast<qint64>(lines.size())),
                      static_cast<qint64>(lines.size()));
        }
    }

private:
    static constexpr qint64 kHops = 8;
    static constexpr int kBins = 512;
    static constexpr qint64 kVariants = 97;

    std::string levels_[kVariants];
};

void makeRecording(const SampleFolder& folder, const char* name, qint64 bytes) {
    QFile file(folder.path() + QLatin1Char('/') + QLatin1String(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    Noise().writeTo(file, bytes);
}

/// The most of all commands so far, in KiB.
long mostMemory() {
    rusage used = {};
    getrusage(RUSAGE_CHILDREN, &used);
    return used.ru_maxrss;
}

/// Of the processor, in seconds.
double timeOf(const QStringList& words, const SampleFolder& folder) {
    const double before = commandSeconds();
    const CommandResult result = runCommand(words, {}, folder);
    EXPECT_TRUE(result.exitStatus == 0 || result.exitStatus == 3) << result.errors;
    return commandSeconds() - before;
}

}  // namespace

TEST(LongRecording, TakesLittleMemoryAndTimeInProportion) {
    if (!rfu::test::isLongRun()) {
        GTEST_SKIP() << "RFUTILS_LONG_TESTS=1 makes a recording of 2 GB";
    }
    const SampleFolder folder;
    folder.add("mask.csv", "88,-75\n110,-75\n");
    makeRecording(folder, "short.csv", kShort);
    makeRecording(folder, "long.csv", kLong);
    const char* const kCommands[] = {
        "trace FILE --all-points --format csv",
        "trace FILE --all-points --keep all --format csv",
        "trace FILE --plot plot.png",
        "trace FILE --plot plot.png --keep all",
        "waterfall FILE --png waterfall.png",
        "waterfall FILE --png cells.png --raw",
        "peaks FILE --format csv",
        "occupancy FILE --above 10 --format csv",
        "occupancy FILE --limit -70 --by hour --format csv",
        "compare FILE FILE --of median --format csv",
        "power FILE --channel 90MHz:91MHz --format csv",
        "mask FILE --mask mask.csv --format csv",
    };
    for (const char* command : kCommands) {
        const auto words = [&](const char* file) {
            return splitWords(QString(QLatin1String(command))
                                  .replace(QLatin1String("FILE"), QLatin1String(file))
                                  .toStdString());
        };
        const double shortTime = timeOf(words("short.csv"), folder);
        const double longTime = timeOf(words("long.csv"), folder);
        const long memory = mostMemory();
        EXPECT_LT(memory, kMostMemory) << command;
        EXPECT_LT(longTime, kMostTimes * shortTime * kLong / kShort) << command;
        std::printf("%-50s %6.2f s %7.2f s %6.0f MB at most so far\n", command, shortTime, longTime,
                    static_cast<double>(memory) * 1024 / 1e6);
    }
}
