#include <rfUtils/presentation/rfUtils.h>
#include <support/limits.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

using rfu::test::kInf;
using rfu::test::kNan;

namespace {

double above(double value) {
    return std::nextafter(value, kInf);
}

double below(double value) {
    return std::nextafter(value, -kInf);
}

TEST(MakeFrequencyUnit, PrintsAFixedNumberOfDecimals) {
    const struct {
        const char* name;
        double freqMHz;
        const char* expected;
    } kCases[] = {
        {"gigahertz", 2400.0, "2.400000000 GHz"},
        {"megahertz", 88.1, "88.100000 MHz"},
        {"kilohertz", 0.5, "500.000 kHz"},
        {"hertz", 0.00041, "410 Hz"},
        {"negative gigahertz", -1500.0, "-1.500000000 GHz"},
        {"negative megahertz", -2.5, "-2.500000 MHz"},
        {"negative kilohertz", -0.5, "-500.000 kHz"},
        {"negative hertz", -0.00041, "-410 Hz"},
        {"zero", 0.0, "0 Hz"},
        {"negative zero", -0.0, "0 Hz"},

        {"1000 MHz is not above 1000", 1000.0, "1000.000000 MHz"},
        {"next above 1000", above(1000.0), "1.000000000 GHz"},
        {"next below 1000", below(1000.0), "1000.000000 MHz"},
        {"-1000 MHz", -1000.0, "-1000.000000 MHz"},
        {"next beyond -1000", below(-1000.0), "-1.000000000 GHz"},
        {"1 MHz is not above 1", 1.0, "1000.000 kHz"},
        {"next above 1", above(1.0), "1.000000 MHz"},
        {"next below 1", below(1.0), "1000.000 kHz"},
        {"-1 MHz", -1.0, "-1000.000 kHz"},
        {"next beyond -1", below(-1.0), "-1.000000 MHz"},
        {"0.001 MHz is not above 0.001", 0.001, "1000 Hz"},
        {"next above 0.001", above(0.001), "1.000 kHz"},
        {"next below 0.001", below(0.001), "999 Hz"},  // 999.9999999999998 is cut
        {"-0.001 MHz", -0.001, "-1000 Hz"},
        {"next beyond -0.001", below(-0.001), "-1.000 kHz"},

        {"hertz are cut", 0.0000019, "1 Hz"},
        {"negative hertz are cut toward zero", -0.0000019, "-1 Hz"},
        {"less than a hertz", 0.00000099, "0 Hz"},
        {"less than a negative hertz", -0.00000099, "0 Hz"},
        {"249 Hz becomes 248.99999999999997", 0.000249, "248 Hz"},
        // multiplied by 1000 twice they would fall short of the whole hertz
        {"21 Hz in one product", 0.000021, "21 Hz"},
        {"35 Hz in one product", 0.000035, "35 Hz"},
        // the product is 1.0085000000000002, divided by 0.001 it would be 1.0084999999999999
        {"multiplied by 1000, not divided by 0.001", 0.0010085, "1.009 kHz"},
        {"decimals are rounded in GHz", 1234.5678901239, "1.234567890 GHz"},
        {"decimals are rounded in MHz", 88.1234567, "88.123457 MHz"},
        {"decimals are rounded in kHz", 0.1234567, "123.457 kHz"},
        {"exact tie in MHz goes to even, down", 2.0078125, "2.007812 MHz"},
        {"exact tie in MHz goes to even, up", 2.0234375, "2.023438 MHz"},
        {"exact tie in kHz goes to even, down", 0.0078125, "7.812 kHz"},
        {"exact tie in kHz goes to even, up", 0.0234375, "23.438 kHz"},
        // divided by 1000 it would end in 1708984
        {"multiplied by 0.001, not divided", 1000000000000001.75, "1000000000000.001831055 GHz"},
        {"NaN", kNan, "0 Hz"},
        {"infinity", kInf, "inf GHz"},
        {"minus infinity", -kInf, "-inf GHz"},
        {"smallest", std::numeric_limits<double>::denorm_min(), "0 Hz"},
    };
    const rfUtils utils;
    for (const auto& row : kCases) {
        EXPECT_EQ(utils.makeFrequencyUnit(row.freqMHz), row.expected) << row.name;
    }
}

TEST(MakeFrequencyUnit, PrintsTheLargestNumberWhole) {
    const std::string text = rfUtils().makeFrequencyUnit(-std::numeric_limits<double>::max());
    EXPECT_EQ(text.size(), 1U + 306U + 1U + 9U + 4U);  // 1.797...e305: 306 digits
    EXPECT_EQ(text.substr(0, 18), "-17976931348623155");
    EXPECT_EQ(text.substr(text.size() - 23), "862798848.000000000 GHz");
}

TEST(ConvertFreqWidthUnit, PrintsAtMostSixDigits) {
    const struct {
        const char* name;
        double widthMHz;
        const char* expected;
    } kCases[] = {
        {"gigahertz", 1500.0, "1.5GHz"},
        {"megahertz", 20.0, "20MHz"},
        {"kilohertz", 0.03, "30kHz"},
        {"hertz", 0.00005, "50Hz"},
        {"zero", 0.0, "0Hz"},

        {"1000 MHz is not above 1000", 1000.0, "1000MHz"},
        {"next above 1000", above(1000.0), "1GHz"},
        {"next below 1000", below(1000.0), "1000MHz"},
        {"1 MHz is not above 1", 1.0, "1000kHz"},
        {"next above 1", above(1.0), "1MHz"},
        {"next below 1", below(1.0), "1000kHz"},
        {"500 Hz is shown in kHz", 0.0005, "0.5kHz"},
        {"1 kHz", 0.001, "1kHz"},
        {"100 Hz is not above 100 Hz", 0.0001, "100Hz"},
        {"next above 100 Hz", above(0.0001), "0.1kHz"},
        {"next below 100 Hz", below(0.0001), "100Hz"},

        {"negative megahertz in hertz", -1.0, "-1e+06Hz"},
        {"negative gigahertz in hertz", -1500.0, "-1.5e+09Hz"},
        {"negative kilohertz in hertz", -0.03, "-30000Hz"},
        {"smallest negative exponent form", -0.9999994, "-999999Hz"},

        // divided by 1000 it would be 1.0000149999999999
        {"multiplied by 0.001, not divided", 1000.015, "1.00002GHz"},
        // the product is 100.01050000000001, divided by 0.001 it would be 100.01049999999999
        {"multiplied by 1000, not divided by 0.001", 0.1000105, "100.011kHz"},
        // the product is -1.1000049999999999, multiplied by 1000 twice it would be
        // -1.1000050000000001
        {"hertz in one product", -1.100005e-06, "-1.1Hz"},
        {"six digits in GHz", 123456.7, "123.457GHz"},
        {"six digits in MHz", 123.4564, "123.456MHz"},
        {"six digits in kHz", 0.1234567, "123.457kHz"},
        {"rounding adds a digit", 999.9999, "1000MHz"},
        {"exact tie rounds away from zero", 100.0625, "100.063MHz"},
        {"exact tie rounds away from zero, odd digit", 100.1875, "100.188MHz"},
        {"six digits without exponent", 999999000.0, "999999GHz"},
        {"seven digits take an exponent", 1e9, "1e+06GHz"},
        {"exponent with decimals", 1.2345678e12, "1.23457e+09GHz"},
        {"hundredth of a hertz", 0.00000001, "0.01Hz"},
        {"four zeros without exponent", 1e-10, "0.0001Hz"},
        {"five zeros take an exponent", 1e-11, "1e-05Hz"},
        {"NaN", kNan, "nanHz"},
        {"infinity", kInf, "infGHz"},
        {"minus infinity", -kInf, "-infHz"},
    };
    const rfUtils utils;
    for (const auto& row : kCases) {
        EXPECT_EQ(utils.convertFreqWidthUnit(row.widthMHz).toStdString(), row.expected) << row.name;
    }
}

}  // namespace
