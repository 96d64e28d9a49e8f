#include <rfUtils/presentation/rfUtils.h>
#include <support/limits.h>

#include <QTextCodec>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

using rfu::test::kInf;
using rfu::test::kIntMax;
using rfu::test::kIntMin;
using rfu::test::kNan;

namespace {

using Strings = std::vector<std::string>;

TEST(IntegerBoundaryMessage, HasItsOwnSuffixes) {
    const struct {
        int type;
        const char* expected;
    } kCases[] = {
        {0, " {Min: -5 , Max: 10 } "},
        {1, " {Min: -5 dB, Max: 10 dB} "},
        {2, " {Min: -5 , Max: 10 } "},
        {3, " {Min: -5 , Max: 10 } "},
        {4, " {Min: -5 \xc2\xb5s, Max: 10 \xc2\xb5s} "},
        {5, " {Min: -5 , Max: 10 } "},
        {6, " {Min: -5 Sec, Max: 10 Sec} "},
        {7, " {Min: -5 ns, Max: 10 ns} "},
        {8, " {Min: -5 %, Max: 10 %} "},
        {23, ""},
    };
    rfUtils utils;
    for (const auto& row : kCases) {
        EXPECT_EQ(utils.makeBoundaryMsg(10, -5, row.type), row.expected) << row.type;
    }
}

TEST(IntegerBoundaryMessage, HasNoUnitForAnyOtherType) {
    rfUtils utils;
    for (int type = 9; type <= 300; ++type) {
        EXPECT_EQ(utils.makeBoundaryMsg(10, -5, type), type == 23 ? "" : " {Min: -5 , Max: 10 } ")
            << type;
    }
    for (const int type : {-1, -23, -255, kIntMin, kIntMax}) {
        EXPECT_EQ(utils.makeBoundaryMsg(10, -5, type), " {Min: -5 , Max: 10 } ") << type;
    }
}

TEST(IntegerBoundaryMessage, ShowsTheSecondArgumentFirstWhateverItsSize) {
    rfUtils utils;
    EXPECT_EQ(utils.makeBoundaryMsg(0, 100, 6), " {Min: 100 Sec, Max: 0 Sec} ");
    EXPECT_EQ(utils.makeBoundaryMsg(100, 0, 6), " {Min: 0 Sec, Max: 100 Sec} ");
    EXPECT_EQ(utils.makeBoundaryMsg(kIntMax, kIntMin, 1),
              " {Min: -2147483648 dB, Max: 2147483647 dB} ");
}

class BoundaryMessage : public testing::Test {
protected:
    BoundaryMessage() {
        utils.fCenter = 100.0;  // 20 log10(100) - 29.8 - 0 = 10.2 dB between dBm and the antenna
        QObject::connect(&utils.hMath, &HMath::unitChanged,
                         [this] { units.push_back(utils.hMath.unit().toStdString()); });
    }

    rfUtils utils;
    Strings units;  // of hMath, one for each change signalled
};

// Upper limit -10, lower limit -30; as levels 100 uW and 1 uW.
TEST_F(BoundaryMessage, ShowsTheLimitsByType) {
    const struct {
        int type;
        const char* expected;
        Strings units;
    } kCases[] = {
        {0, " {Min: -30.000000 MHz, Max: -10.000000 MHz} ", {}},
        {1, " {Min: -30.00 dB, Max: -10.00 dB} ", {}},
        {2, " {Min: -30.00 dBm, Max: -10.00 dBm} ", {}},
        {3, " {Min: -30.00 , Max: -10.00 } ", {}},
        {4, " {Min: -30.00 \xc2\xb5s, Max: -10.00 \xc2\xb5s} ", {}},
        {5, " {Min: -30.00 , Max: -10.00 } ", {}},
        {6, " {Min: -30.00 , Max: -10.00 } ", {}},
        {7, " {Min: -30.00 ns, Max: -10.00 ns} ", {}},
        {8, " {Min: -30.00 %, Max: -10.00 %} ", {}},
        {9, " {Min: -30.00 dBi, Max: -10.00 dBi} ", {}},
        {10, " {Min: -30.00 , Max: -10.00 } ", {}},
        // - 13.0103
        {11, " {Min: -43.0 dBV, Max: -23.0 dBV} ", {"dBV", "dBV"}},
        // + 46.9897
        {12, " {Min: 17.0 dBmV, Max: 37.0 dBmV} ", {"dBmV", "dBmV"}},
        // + 106.9897
        {13, " {Min: 77.0 dBuV, Max: 97.0 dBuV} ", {"dBuV", "dBuV"}},
        // 7.07 mV and 70.7 mV, which is shown in volts from 10 mV on
        {14, " {Min: 7.07 mV, Max: 0.07 V} ", {"mV", "V"}},
        {15, " {Min: 1.00 \xc2\xb5W, Max: 0.10 mW} ", {"\xc2\xb5W", "mW"}},
        // + 107 + 10.2
        {16, " {Min: 87.20 dBuV/m, Max: 107.20 dBuV/m} ", {"dBuV/m", "dBuV/m"}},
        // + 47 + 10.2
        {17, " {Min: 27.20 dBmV/m, Max: 47.20 dBmV/m} ", {"dBmV/m", "dBmV/m"}},
        // - 13 + 10.2
        {18, " {Min: -32.80 dBV/m, Max: -12.80 dBV/m} ", {"dBV/m", "dBV/m"}},
        // 10^(-32.8 / 20) = 0.0229, 10^(-12.8 / 20) = 0.229
        {19, " {Min: 0.02 V/m, Max: 0.23 V/m} ", {"V/m", "V/m"}},
        // 0.0229^2 / 377 = 1.39e-6, 0.229^2 / 377 = 1.39e-4
        {20, " {Min: 1.39 uW/m^2, Max: 0.14 mW/m^2} ", {"uW/m^2", "mW/m^2"}},
        // 10 log10(1.39208e-6) + 30
        {21, " {Min: -28.56 dBm/m^2, Max: -8.56 dBm/m^2} ", {"dBm/m^2", "dBm/m^2"}},
        {22, " {Min: -30.00 ppm, Max: -10.00 ppm} ", {}},
        {23, "", {}},
        {24, " {Min: -30.00 , Max: -10.00 } ", {}},
        {99, " {Min: -30.00 , Max: -10.00 } ", {}},
        {256, " {Min: -30.00 , Max: -10.00 } ", {}},
        {kIntMax, " {Min: -30.00 , Max: -10.00 } ", {}},
        {-1, " {Min: -30.00 , Max: -10.00 } ", {}},
        {-13, " {Min: -30.00 , Max: -10.00 } ", {}},
        {-23, " {Min: -30.00 , Max: -10.00 } ", {}},
        {kIntMin, " {Min: -30.00 , Max: -10.00 } ", {}},
    };
    for (const auto& row : kCases) {
        units.clear();
        EXPECT_EQ(utils.makeBoundaryMsg(-10.0, -30.0, row.type), row.expected) << row.type;
        EXPECT_EQ(units, row.units) << row.type;  // the lower limit is converted first
        if (!row.units.empty()) {
            EXPECT_EQ(utils.hMath.unit().toStdString(), row.units.back()) << row.type;
        }
    }
    EXPECT_EQ(utils.fCenter, 100.0);
    EXPECT_EQ(utils.fGain, 0.0);
}

TEST_F(BoundaryMessage, LeavesTheUnitAloneWithoutAConversion) {
    utils.hMath.setUnit("kept");
    units.clear();
    for (const int type : {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 22, 23, 24}) {
        utils.makeBoundaryMsg(20.0, -10.0, type);
    }
    utils.makeBoundaryMsg(20, -10, 13);  // integers are never converted
    EXPECT_EQ(units, Strings{});
    EXPECT_EQ(utils.hMath.unit().toStdString(), "kept");
}

TEST_F(BoundaryMessage, PrintsTwoDecimalsAsCDoes) {
    const struct {
        const char* name;
        double limit;
        const char* text;
    } kCases[] = {
        {"exact tie goes to even, down", 0.125, "0.12"},
        {"exact tie goes to even, up", 0.375, "0.38"},
        {"negative exact tie", -0.125, "-0.12"},
        {"rounds to a whole number", 9.999, "10.00"},
        {"negative zero", -0.001, "-0.00"},
        {"large", 1e22, "10000000000000000000000.00"},
        {"infinity", kInf, "inf"},
        {"minus infinity", -kInf, "-inf"},
        {"NaN", kNan, "nan"},
    };
    for (const auto& row : kCases) {
        const std::string text = row.text;
        EXPECT_EQ(utils.makeBoundaryMsg(row.limit, 1.0, 2),
                  " {Min: 1.00 dBm, Max: " + text + " dBm} ")
            << row.name;
        EXPECT_EQ(utils.makeBoundaryMsg(1.0, row.limit, 5), " {Min: " + text + " , Max: 1.00 } ")
            << row.name;
    }
    const std::string longest = utils.makeBoundaryMsg(1.0, -std::numeric_limits<double>::max(), 3);
    EXPECT_EQ(longest.size(), std::string(" {Min: -.00 , Max: 1.00 } ").size() + 309);
}

TEST_F(BoundaryMessage, ShowsTheSecondArgumentFirstWhateverItsSize) {
    EXPECT_EQ(utils.makeBoundaryMsg(20.0, -10.0, 2), " {Min: -10.00 dBm, Max: 20.00 dBm} ");
    EXPECT_EQ(utils.makeBoundaryMsg(-10.0, 20.0, 2), " {Min: 20.00 dBm, Max: -10.00 dBm} ");
    EXPECT_EQ(utils.makeBoundaryMsg(2.0, 1.0, 4), " {Min: 1.00 \u00b5s, Max: 2.00 \u00b5s} ");
    EXPECT_EQ(utils.makeBoundaryMsg(-30.0, 0.0, 13), " {Min: 107.0 dBuV, Max: 77.0 dBuV} ");
    EXPECT_EQ(utils.makeBoundaryMsg(0.0, -30.0, 13), " {Min: 77.0 dBuV, Max: 107.0 dBuV} ");
}

TEST_F(BoundaryMessage, ShowsEachFrequencyInItsUnit) {
    EXPECT_EQ(utils.makeBoundaryMsg(6000.0, 0.009, 0), " {Min: 9.000 kHz, Max: 6.000000000 GHz} ");
    EXPECT_EQ(utils.makeBoundaryMsg(88.1, 0.0, 0), " {Min: 0 Hz, Max: 88.100000 MHz} ");
}

TEST_F(BoundaryMessage, ConvertsFieldsWithTheAntennaOfTheMoment) {
    utils.fGain = 3.0;
    EXPECT_EQ(utils.makeBoundaryMsg(-10.0, -30.0, 16), " {Min: 84.20 dBuV/m, Max: 104.20 dBuV/m} ");
    utils.fCenter = 1000.0;
    EXPECT_EQ(utils.makeBoundaryMsg(-10.0, -30.0, 16),
              " {Min: 104.20 dBuV/m, Max: 124.20 dBuV/m} ");
    // Levels at the connector do not depend on the antenna.
    EXPECT_EQ(utils.makeBoundaryMsg(-10.0, -30.0, 13), " {Min: 77.0 dBuV, Max: 97.0 dBuV} ");
}

TEST_F(BoundaryMessage, IsUtf8WhateverTheTextCodecOfTheLocale) {
    const struct RestoredCodec {
        QTextCodec* const before = QTextCodec::codecForLocale();
        ~RestoredCodec() { QTextCodec::setCodecForLocale(before); }
    } restored;
    for (const char* const name : {"ISO 8859-1", "UTF-16", "UTF-8"}) {
        QTextCodec* const codec = QTextCodec::codecForName(name);
        ASSERT_NE(codec, nullptr) << name;
        QTextCodec::setCodecForLocale(codec);
        // 10^((-100 + 46.9897) / 20) mV = 2.2361 uV, 10^((-120 + 46.9897) / 20) mV = 0.2236 uV
        EXPECT_EQ(utils.makeBoundaryMsg(-100.0, -120.0, 14),
                  " {Min: 0.22 \xc2\xb5V, Max: 2.24 \xc2\xb5V} ")
            << name;
        EXPECT_EQ(utils.makeBoundaryMsg(2.0, 1.0, 4),
                  " {Min: 1.00 \xc2\xb5s, Max: 2.00 \xc2\xb5s} ")
            << name;
        EXPECT_EQ(utils.makeBoundaryMsg(2, 1, 4), " {Min: 1 \xc2\xb5s, Max: 2 \xc2\xb5s} ") << name;
    }
}

TEST_F(BoundaryMessage, ShowsInfiniteFieldsWithoutACentreFrequency) {
    utils.fCenter = 0.0;
    const struct {
        int type;
        const char* expected;
        Strings units;
    } kCases[] = {
        {16, " {Min: -inf dBuV/m, Max: -inf dBuV/m} ", {"dBuV/m", "dBuV/m"}},
        {17, " {Min: -inf dBmV/m, Max: -inf dBmV/m} ", {"dBmV/m", "dBmV/m"}},
        {18, " {Min: -inf dBV/m, Max: -inf dBV/m} ", {"dBV/m", "dBV/m"}},
        {19, " {Min: , Max: } ", {}},  // a field of exactly zero has no text and no unit
        {20, " {Min: , Max: } ", {}},
        {21, " {Min: -inf dBm/m^2, Max: -inf dBm/m^2} ", {"dBm/m^2", "dBm/m^2"}},
    };
    for (const auto& row : kCases) {
        utils.hMath.setUnit("kept");
        units.clear();
        EXPECT_EQ(utils.makeBoundaryMsg(-10.0, -30.0, row.type), row.expected) << row.type;
        EXPECT_EQ(units, row.units) << row.type;
        EXPECT_EQ(utils.hMath.unit().toStdString(), row.units.empty() ? "kept" : row.units.back());
    }
}

TEST_F(BoundaryMessage, ShowsNoNumberAtANegativeCentreFrequency) {
    utils.fCenter = -100.0;
    const struct {
        int type;
        const char* expected;
        Strings units;
    } kCases[] = {
        {16, " {Min: nan dBuV/m, Max: nan dBuV/m} ", {"dBuV/m", "dBuV/m"}},
        {17, " {Min: nan dBmV/m, Max: nan dBmV/m} ", {"dBmV/m", "dBmV/m"}},
        {18, " {Min: nan dBV/m, Max: nan dBV/m} ", {"dBV/m", "dBV/m"}},
        // neither a number nor a unit, only the blank that stands between them
        {19, " {Min:  , Max:  } ", {"", ""}},
        {20, " {Min:  , Max:  } ", {"", ""}},
        {21, " {Min: nan dBm/m^2, Max: nan dBm/m^2} ", {"dBm/m^2", "dBm/m^2"}},
    };
    for (const auto& row : kCases) {
        utils.hMath.setUnit("replaced");
        units.clear();
        EXPECT_EQ(utils.makeBoundaryMsg(-10.0, -30.0, row.type), row.expected) << row.type;
        EXPECT_EQ(units, row.units) << row.type;
        EXPECT_EQ(utils.hMath.unit().toStdString(), row.units.back()) << row.type;
    }
}

}  // namespace
