// Frequencies, widths and angles against tests/golden, whose rows come from the rules by way of exact
// arithmetic: every text and every number has to be the same.
#include <support/csvRows.h>
#include <support/samples.h>

#include <rfUtils/presentation/rfUtils.h>

#include <gtest/gtest.h>

namespace {

using rfu::test::csvRows;
using rfu::test::number;
using rfu::test::same;

std::vector<rfu::test::CsvRow> golden(const char* file, std::size_t rowCount) {
    auto rows = csvRows(std::string(RFUTILS_GOLDEN "/") + file);
    EXPECT_EQ(rows.size(), rowCount) << file;
    return rows;
}

TEST(GoldenPresentation, Frequencies) {
    rfUtils presentation;
    for (const auto& row : golden("frequencies.csv", 234)) {
        EXPECT_EQ(presentation.makeFrequencyUnit(number(row[0])), row[1]) << row[0];
    }
}

TEST(GoldenPresentation, Widths) {
    rfUtils presentation;
    for (const auto& row : golden("widths.csv", 228)) {
        EXPECT_EQ(presentation.convertFreqWidthUnit(number(row[0])).toStdString(), row[1])
            << row[0];
    }
}

TEST(GoldenPresentation, AnglesInParts) {
    for (const auto& row : golden("parts.csv", 716)) {
        short sign = 0;
        double degrees = 0.0;
        double minutes = 0.0;
        double seconds = 0.0;
        EXPECT_TRUE(rfUtils::convertDmsFromDd(number(row[0]), sign, degrees, minutes, seconds));
        EXPECT_EQ(sign, number(row[1])) << row[0];
        EXPECT_TRUE(same(degrees, number(row[2]))) << row[0] << ": " << degrees;
        EXPECT_TRUE(same(minutes, number(row[3]))) << row[0] << ": " << minutes;
        EXPECT_TRUE(same(seconds, number(row[4]))) << row[0] << ": " << seconds;
    }
}

TEST(GoldenPresentation, AnglesOfParts) {
    for (const auto& row : golden("angles.csv", 274)) {
        double angle = 0.0;
        EXPECT_TRUE(rfUtils::convertDdFromDms(static_cast<short>(number(row[0])), number(row[1]),
                                              number(row[2]), number(row[3]), angle));
        EXPECT_TRUE(same(angle, number(row[4])))
            << row[0] << ' ' << row[1] << ' ' << row[2] << ' ' << row[3] << ": " << angle;
    }
}

}  // namespace
