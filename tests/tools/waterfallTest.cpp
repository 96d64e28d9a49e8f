#include <analysis/recordings/hopLines.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QProcess>

#include "runCommand.h"

using rfu::test::hopLine;

namespace {

/// Hops a and b of 1 MHz, every ten seconds; b is missing in the second sweep.
const std::string kBand = hopLine('a', "0", "-50") + hopLine('b', "0", "-60") +
                          hopLine('a', "10", "-70") + hopLine('a', "20", "-80") +
                          hopLine('b', "20", "-90") + hopLine('a', "50", "-51") +
                          hopLine('b', "50", "-61");

QStringList waterfall(const char* options) {
    return QStringList{QStringLiteral("waterfall"), QStringLiteral("band.csv")} +
           splitWords(options);
}

QImage picture(const SampleFolder& folder, const char* name) {
    return QImage(folder.path() + QLatin1Char('/') + QLatin1String(name))
        .convertToFormat(QImage::Format_ARGB32);
}

/// Drawn from kBand.
QImage drawn(const char* options) {
    const SampleFolder folder;
    folder.add("band.csv", kBand);
    const CommandResult result =
        runCommand(waterfall("--png out.png") + splitWords(options), "", folder);
    EXPECT_EQ(result.exitStatus, 0) << options;
    EXPECT_EQ(result.errors, "") << options;
    return picture(folder, "out.png");
}

CommandCase misused(const char* name, const char* options, const std::string& error) {
    return misuses(name, waterfall(options), error);
}

}  // namespace

TEST(Waterfall, tellsWhatItDrew) {
    const SampleFolder folder;
    folder.add("band.csv", kBand);
    folder.add("levels.csv", "-10,-20\n-30,\n");
    folder.add("silent.csv", "nan,-999\n");
    expectCommands(
        {
            shows("text", waterfall("--png a.png --width 400 --height 300"),
                  "sweeps     4\npoints     2\nfromMHz    100\ntoMHz      102\n"
                  "bands      100:102\nfirstTime  2024-01-01 10:00:00\n"
                  "lastTime   2024-01-01 10:00:50\nwidth      400\nheight     300\n"
                  "levelsMin  -90.00\nlevelsMax  -50.00\nunit       dBm\n"),
            shows("CSV, cells", waterfall("--png a.png --raw --unit dBuV --format csv"),
                  "sweeps,points,fromMHz,toMHz,bands,firstTime,lastTime,width,height,levelsMin,"
                  "levelsMax,unit\n"
                  "4,2,100,102,100:102,2024-01-01 10:00:00,2024-01-01 10:00:50,2,5,"
                  "16.9897,56.9897,dBuV\n"),
            shows("without frequencies", "waterfall levels.csv --png a.png --format json",
                  "{\"sweeps\": 2, \"points\": 2, \"fromMHz\": null, \"toMHz\": null, \"bands\": "
                  "null, \"firstTime\": null, \"lastTime\": null, \"width\": 1920, \"height\": "
                  "1080, \"levelsMin\": -30, \"levelsMax\": -10, \"unit\": \"dBm\"}\n"),
            shows("nothing measured", "waterfall silent.csv --png a.png --raw",
                  "sweeps     1\npoints     2\nfromMHz    -\ntoMHz      -\nbands      -\n"
                  "firstTime  -\nlastTime   -\nwidth      2\nheight     1\nlevelsMin  -\n"
                  "levelsMax  -\nunit       dBm\n"),
        },
        folder);
}

TEST(Waterfall, drawsCells) {
    const QImage raw = drawn("--raw --levels -100:-40 --palette grey");
    ASSERT_EQ(raw.size(), QSize(2, 5));
    // Entries of 60 dB / 256: -50 dBm are entry 213, -90 dBm 42. Grey 213 is L* 83.5.
    EXPECT_EQ(qRed(raw.pixel(0, 0)), 208);
    EXPECT_EQ(qAlpha(raw.pixel(1, 1)), 0) << "a hop that is missing";
    EXPECT_EQ(qAlpha(raw.pixel(0, 1)), 255);
    EXPECT_EQ(qAlpha(raw.pixel(0, 3)), 0) << "a gap";
    EXPECT_GT(qRed(raw.pixel(0, 4)), qRed(raw.pixel(1, 4)));
    EXPECT_EQ(drawn("--raw --no-gaps").size(), QSize(2, 4));
    // 60 s along the picture, of which 20 are a gap
    const QImage scaled = drawn("--width 396 --height 324");
    ASSERT_EQ(scaled.size(), QSize(396, 324));
    EXPECT_EQ(qAlpha(scaled.pixel(150, 66 + 99)), 255);
    EXPECT_EQ(qAlpha(scaled.pixel(150, 66 + 101)), 0);
    EXPECT_EQ(qAlpha(scaled.pixel(150, 66 + 165)), 0);
    EXPECT_EQ(qAlpha(scaled.pixel(150, 66 + 167)), 255);
    EXPECT_EQ(qAlpha(scaled.pixel(250, 66 + 50)), 0) << "a hop that is missing";
}

TEST(Waterfall, obeysItsOptions) {
    const QImage plain = drawn("");
    for (const char* options :
         {"--palette magma", "--levels -80:-50", "--no-gaps", "--unit V", "--unit dBuV",
          "--unit dBuV/m", "--unit dBuV/m --center 2.4GHz", "--unit V/m --gain 3"}) {
        const QImage other = drawn(options);
        EXPECT_EQ(other.size(), QSize(1920, 1080)) << options;
        EXPECT_NE(other, plain) << options;
    }
    EXPECT_EQ(drawn("--unit dBuV --levels 6.9897:66.9897 --raw"), drawn("--levels -100:-40 --raw"));
    EXPECT_EQ(drawn("--unit W --levels 1e-13:1e-7 --raw"), drawn("--levels -100:-40 --raw"));
    EXPECT_EQ(drawn("--reduce max"), plain);
}

TEST(Waterfall, readsStandardInput) {
    const SampleFolder folder;
    folder.add("band.csv", kBand);
    for (const char* options : {"--png %.png", "--png %.png --raw"}) {
        const auto words = [&](const char* name) {
            return splitWords(QString(QLatin1String(options))
                                  .replace(QLatin1Char('%'), QLatin1String(name))
                                  .toStdString());
        };
        ASSERT_EQ(
            runCommand(QStringList{"waterfall", "band.csv"} + words("file"), "", folder).exitStatus,
            0);
        ASSERT_EQ(
            runCommand(QStringList{"waterfall", "-"} + words("input"), kBand, folder).exitStatus,
            0);
        const bool isRaw = QString(QLatin1String(options)).contains("raw");
        // The title differs.
        const QRect cells = isRaw ? QRect(0, 0, 2, 5) : QRect(0, 44, 1920, 1036);
        EXPECT_EQ(picture(folder, "input.png").copy(cells),
                  picture(folder, "file.png").copy(cells));
    }
}

TEST(Waterfall, saysWhatIsWrong) {
    const SampleFolder folder;
    folder.add("band.csv", kBand);
    folder.add("cut.csv", kBand + "2024-01-01, 10:01");
    folder.add("empty.csv", "\n");
    folder.add("levels.csv", "-10,-20\n");
    folder.add("wide.csv", std::string(1000000, ',') + "-5\n");
    expectCommands(
        {
            misused("no picture", "", "--png OUT.png is missing"),
            misused("an unknown palette", "--png a.png --palette jet",
                    "--palette: \"jet\" is not viridis, magma, cividis, grey or turbo"),
            misused("an unknown reduction", "--png a.png --reduce median",
                    "--reduce: \"median\" is not max, mean or min"),
            misused("levels upside down", "--png a.png --levels -40:-100",
                    "--levels: \"-40:-100\" is not a number and a larger one such as -100:-30"),
            misused("one level", "--png a.png --levels -40",
                    "--levels: \"-40\" is not a number and a larger one such as -100:-30"),
            misused("levels too near", "--png a.png --levels -40:-39.95",
                    "--levels: the two are less than 0.1 dB apart"),
            misused("no voltage", "--png a.png --levels 0:1 --unit V",
                    "--levels: V begin above zero"),
            misused("too small", "--png a.png --width 319", "--width takes 320 to 10000 pixels"),
            misused("too large", "--png a.png --height 10001",
                    "--height takes 200 to 10000 pixels"),
            misused("the size of cells", "--png a.png --raw --height 500",
                    "--height and --raw exclude each other"),
            misused("the reduction of cells", "--reduce max --raw --png a.png",
                    "--reduce and --raw exclude each other"),
            misused("an antenna without need", "--png a.png --gain 3",
                    "--gain needs a --unit that depends on the antenna, such as dBuV/m"),
            misuses("a field without frequencies", "waterfall levels.csv --png a.png --unit dBuV/m",
                    "dBuV/m needs the centre frequency of the antenna: --center"),
            fails("another format, before the recording is read",
                  "waterfall missing.csv --png a.jpg",
                  "a.jpg: cannot be written: pictures are PNG and end in .png"),
            fails("the input itself", "waterfall band.csv --png band.csv",
                  "band.csv: cannot be written: pictures are PNG and end in .png"),
            fails("no file", "waterfall missing.csv --png a.png",
                  "missing.csv: No such file or directory"),
            fails("no sweep", "waterfall empty.csv --png a.png", "empty.csv: holds no sweep"),
            fails("too wide", "waterfall wide.csv --png a.png --raw",
                  "wide.csv: has too many points for --raw, 1000000 at most; without --raw they "
                  "share pixels"),
            shows("a line that is cut", "waterfall cut.csv --png a.png --raw --format csv",
                  runCommand(waterfall("--png a.png --raw --format csv"), "", folder).output)
                .noting("cut.csv:8: the last line has no line end and may be cut; it is left out"),
        },
        folder);
}

TEST(Waterfall, takesAsMuchMemoryForALongRecording) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer takes all memory";
#endif
    const SampleFolder folder;
    const auto draw = [&](int sweeps, int megabytes) {
        QProcess process;
        process.setWorkingDirectory(folder.path());
        const QString script =
            QStringLiteral(
                "awk 'BEGIN { while (n++ < 250) row = row \"-9,-8,-7,-6,\"; "
                "for (i = 0; i < %1; i++) print row \"-5\" }' | "
                "(ulimit -v %2 && exec \"$0\" waterfall - --png long.png --reduce mean)")
                .arg(sweeps)
                .arg(1024 * megabytes);
        process.start(QStringLiteral("/bin/sh"),
                      {QStringLiteral("-c"), script, QStringLiteral(RFUTILS_COMMAND)});
        return process.waitForFinished(120000) && process.exitCode() == 0;
    };
    int enough = 100;
    while (enough < 3000 && !draw(1, enough)) {
        enough += 50;
    }
    ASSERT_LT(enough, 3000);
    // 20 million cells: 160 MB as doubles and as cells of a mean, 30 MB where rows are merged.
    EXPECT_TRUE(draw(20000, enough + 80)) << enough;
    EXPECT_EQ(picture(folder, "long.png").size(), QSize(1920, 1080));
}

TEST(Waterfall, examplesOfTheHelpRun) {
    const SampleFolder folder;
    folder.addSamples();
    for (const std::string& example : examplesOf(runCommand({"waterfall", "--help"}).output)) {
        const CommandResult result = runCommand(splitWords(example).mid(1), "", folder);
        EXPECT_EQ(result.exitStatus, 0) << example;
        EXPECT_EQ(result.errors, "") << example;
    }
    EXPECT_EQ(picture(folder, "fm_waterfall.png").size(), QSize(1920, 1080));
    EXPECT_EQ(picture(folder, "wifi_cells.png").size(), QSize(100, 60));
}
