#include "analysis/recordings/levelCorrection.h"

#include <gtest/gtest.h>
#include <support/tempFiles.h>

#include <string>

#include "analysis/support/inputError.h"

using rfu::LevelCorrection;

namespace {

constexpr double kNone = -999.0;

}  // namespace

TEST(LevelCorrection, IsStraightBetweenItsPoints) {
    const TempFiles files;
    const QString file =
        QString::fromStdString(files.write("cable.csv", "MHz,dB\n100,1\n200,3\n200,-5\n0.3G,0\n"));
    const LevelCorrection correction(10.0, file);
    const struct {
        double frequency;
        double decibels;
    } kRows[] = {{0, 11},  {99.9, 11}, {100, 11}, {150, 12},   {175, 12.5},
                 {200, 5}, {220, 6},   {300, 10}, {300.1, 10}, {1e9, 10}};
    for (const auto& row : kRows) {
        EXPECT_DOUBLE_EQ(correction.at(row.frequency), row.decibels) << row.frequency;
    }
    EXPECT_LT(correction.at(199.999999), 13.0) << "before the step";
    EXPECT_GT(correction.at(199.999999), 12.9999);
    EXPECT_EQ(correction.ofPoints({100, 150}, 2), (std::vector<double>{11, 12}));
    EXPECT_FALSE(correction.isNone());
    EXPECT_TRUE(correction.needsFrequencies());
    EXPECT_EQ(correction.file(), file);
}

TEST(LevelCorrection, OfAnOffsetAloneNeedsNoFrequencies) {
    EXPECT_TRUE(LevelCorrection().isNone());
    EXPECT_TRUE(LevelCorrection(0.0).isNone());
    const LevelCorrection correction(-2.5);
    EXPECT_FALSE(correction.isNone());
    EXPECT_FALSE(correction.needsFrequencies());
    EXPECT_EQ(correction.ofPoints({}, 2), (std::vector<double>{-2.5, -2.5}));
    EXPECT_EQ(correction.at(100), -2.5);
}

TEST(LevelCorrection, OfOnePointIsTheSameEverywhere) {
    const TempFiles files;
    const LevelCorrection correction(0.0,
                                     QString::fromStdString(files.write("one.csv", "100,0.5\n")));
    for (const double frequency : {0.0, 100.0, 1000.0}) {
        EXPECT_EQ(correction.at(frequency), 0.5) << frequency;
    }
}

TEST(LevelCorrection, KeepsLevelsWithinThoseOfARecording) {
    std::vector<double> levels = {-50, kNone, 990, -990, -0.5};
    rfu::correct(levels, {10, 10, 1e15, -9, 0});
    EXPECT_EQ(levels[0], -40);
    EXPECT_EQ(levels[1], kNone);
    EXPECT_LT(levels[2], 999);
    EXPECT_GT(levels[2], 998.9999);
    EXPECT_GT(levels[3], kNone) << "it was measured";
    EXPECT_LT(levels[3], -998.9999);
    EXPECT_EQ(levels[4], -0.5);
}
