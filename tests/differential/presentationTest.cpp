#include <support/samples.h>
#include "unitRules.h"

#include <rfUtils/presentation/rfUtils.h>

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>
#include <string>

namespace {

using namespace rfu::test;

const Range kTextFrequencies = {-4000.0,
                                8000.0,
                                {1000.0, 1.0, 0.001, 0.0001, -1000.0, -1.0, -0.001, 1e-6, 0.0000019,
                                 2147.483647, 2147.483648, 0.0}};

std::string frequencyText(double f) {
    const double a = std::fabs(f);
    if (a > 1000.0) {
        return printed(f * 0.001, 9) + " GHz";
    }
    if (a > 1.0) {
        return printed(f, 6) + " MHz";
    }
    if (a > 0.001) {
        return printed(f * 1000.0, 3) + " kHz";
    }
    return std::to_string(static_cast<int>(truncated(f * 1000000.0))) + " Hz";
}

std::string widthText(double w) {
    if (w > 1000.0) {
        return (QString::number(w * 0.001, 'g', 6) + "GHz").toStdString();
    }
    if (w > 1.0) {
        return (QString::number(w, 'g', 6) + "MHz").toStdString();
    }
    if (w > 0.0001) {
        return (QString::number(w * 1000.0, 'g', 6) + "kHz").toStdString();
    }
    return (QString::number(w * 1000000.0, 'g', 6) + "Hz").toStdString();
}

std::string rangeText(int max, int min, int type) {
    std::string unit;
    switch (type) {
        case 23:
            return "";
        case 1:
            unit = "dB";
            break;
        case 4:
            unit = "\xC2\xB5s";
            break;
        case 6:
            unit = "Sec";
            break;
        case 7:
            unit = "ns";
            break;
        case 8:
            unit = "%";
            break;
        default:
            break;
    }
    return " {Min: " + std::to_string(min) + " " + unit + ", Max: " + std::to_string(max) + " " +
           unit + "} ";
}

/// The unit of the object after a message, and whether the message converts at all.
struct RangeUnit {
    std::string last;
    int emissions = 0;
};

std::string rangeText(double max, double min, int type, double fCenter, double fGain,
                      RangeUnit& unit) {
    const auto plain = [&](const char* suffix) {
        return " {Min: " + printed(min, 2) + " " + suffix + ", Max: " + printed(max, 2) + " " +
               suffix + "} ";
    };
    const auto note = [&unit](const Shown& limit) {
        if (limit.stored) {
            unit.last = limit.unit;
            ++unit.emissions;
        }
        return limit.text;
    };
    const auto level = [&](const char* name) {
        const std::string low = note(levelText(name, min, true));
        return " {Min: " + low + ", Max: " + note(levelText(name, max, true)) + "} ";
    };
    const auto field = [&](const char* name) {
        const std::string low = note(fieldText(name, min, fCenter, fGain, true));
        return " {Min: " + low + ", Max: " + note(fieldText(name, max, fCenter, fGain, true)) +
               "} ";
    };
    switch (type) {
        case 0:
            return " {Min: " + frequencyText(min) + ", Max: " + frequencyText(max) + "} ";
        case 1:
            return plain("dB");
        case 2:
            return plain("dBm");
        case 4:
            return plain("\xC2\xB5s");
        case 7:
            return plain("ns");
        case 8:
            return plain("%");
        case 9:
            return plain("dBi");
        case 11:
            return level("dBV");
        case 12:
            return level("dBmV");
        case 13:
            return level("dBuV");
        case 14:
            return level("V");
        case 15:
            return level("W");
        case 16:
            return field("dBuV/m");
        case 17:
            return field("dBmV/m");
        case 18:
            return field("dBV/m");
        case 19:
            return field("V/m");
        case 20:
            return field("W/m^2");
        case 21:
            return field("dBm/m^2");
        case 22:
            return plain("ppm");
        case 23:
            return "";
        default:
            return plain("");
    }
}

int randomType(Samples& samples) {
    return samples.below(20) == 0 ? samples.anyInteger() : static_cast<int>(samples.below(27)) - 2;
}

TEST(DifferentialPresentation, makeFrequencyUnit) {
    Samples samples(20240904);
    const rfUtils utils;
    for (int i = caseCount(); i > 0; --i) {
        const double f = samples.number(kTextFrequencies);
        ASSERT_EQ(unsignedNan(utils.makeFrequencyUnit(f)), unsignedNan(frequencyText(f)))
            << std::hexfloat << f;
    }
}

TEST(DifferentialPresentation, convertFreqWidthUnit) {
    Samples samples(20240905);
    const rfUtils utils;
    for (int i = caseCount(); i > 0; --i) {
        const double w = samples.number(kTextFrequencies);
        ASSERT_EQ(utils.convertFreqWidthUnit(w).toStdString(), widthText(w)) << std::hexfloat << w;
    }
}

TEST(DifferentialPresentation, makeBoundaryMsgOfIntegers) {
    Samples samples(20240906);
    rfUtils utils;
    for (int i = caseCount(); i > 0; --i) {
        const int max =
            samples.coin() ? samples.anyInteger() : static_cast<int>(samples.below(200));
        const int min =
            samples.coin() ? samples.anyInteger() : -static_cast<int>(samples.below(99));
        const int type = randomType(samples);
        ASSERT_EQ(utils.makeBoundaryMsg(max, min, type), rangeText(max, min, type)) << type;
    }
}

TEST(DifferentialPresentation, makeBoundaryMsgOfNumbers) {
    const Range limits{
        -150.0, 6000.0, {0.0, 1.0, 1000.0, 0.001, -50.0, -0.005, 0.125, 10.0, 53.0103}};
    Samples samples(20240907);
    rfUtils utils;
    int emissions = 0;
    QObject::connect(&utils.hMath, &HMath::unitChanged, [&emissions] { ++emissions; });
    for (int i = caseCount(); i > 0; --i) {
        const double max = samples.number(limits);
        const double min = samples.number(limits);
        const int type = randomType(samples);
        utils.fCenter = samples.coin() ? 100.0 : samples.number(kTextFrequencies);
        utils.fGain = samples.coin() ? 0.0 : samples.number({-20.0, 60.0, {}});
        RangeUnit unit{utils.hMath.unit().toStdString()};
        const std::string expected = rangeText(max, min, type, utils.fCenter, utils.fGain, unit);
        emissions = 0;
        ASSERT_EQ(unsignedNan(utils.makeBoundaryMsg(max, min, type)), unsignedNan(expected))
            << type << std::hexfloat << ' ' << max << ' ' << min;
        ASSERT_EQ(utils.hMath.unit().toStdString(), unit.last) << type;
        ASSERT_EQ(emissions, unit.emissions) << type;
    }
}

const Range kDegrees = {-360.0,
                        360.0,
                        {0.0, 180.0, 59.999999, 45.999999, 12.5, 151.2093, 1.0 / 60.0, 1.0 / 3600.0,
                         2147483647.0, -2147483648.0}};

TEST(DifferentialPresentation, convertDmsFromDd) {
    Samples samples(20240908);
    for (int i = caseCount(); i > 0; --i) {
        const double dd = samples.number(kDegrees);
        const double a = dd >= 0 ? dd : -dd;
        const double degrees = truncated(a);
        const double minutes = truncated((a - degrees) * 60.0);
        const double seconds =
            truncated(std::fma(-minutes, 0.016666666666666666, a - degrees) * 3600.0);
        short sign = 7;
        double d = 7.0;
        double m = 7.0;
        double s = 7.0;
        ASSERT_TRUE(rfUtils::convertDmsFromDd(dd, sign, d, m, s));
        ASSERT_EQ(sign, dd >= 0 ? 1 : -1) << std::hexfloat << dd;
        ASSERT_TRUE(same(d, degrees) && same(m, minutes) && same(s, seconds))
            << std::hexfloat << dd << ": " << d << ' ' << m << ' ' << s;
    }
}

TEST(DifferentialPresentation, convertDdFromDms) {
    Samples samples(20240909);
    const Range sixtieths{0.0, 60.0, {0.0, 59.0, 60.0}};
    for (int i = caseCount(); i > 0; --i) {
        const short sign =
            static_cast<short>(samples.coin() ? (samples.coin() ? 1 : -1) : samples.anyInteger());
        const double degrees = samples.number(kDegrees);
        const double minutes = samples.number(sixtieths);
        const double seconds = samples.number(sixtieths);
        double t = std::fma(minutes, 0.016666666666666666, degrees);
        t = std::fma(seconds, 0.0002777777777777778, t);
        double dd = 7.0;
        ASSERT_TRUE(rfUtils::convertDdFromDms(sign, degrees, minutes, seconds, dd));
        ASSERT_TRUE(same(dd, static_cast<double>(sign) * t))
            << std::hexfloat << sign << ' ' << degrees << ' ' << minutes << ' ' << seconds;
    }
}

/// The number in front of two characters; the exception's name where there is none.
std::string oddNumber(const std::string& text) {
    if (text.size() < 3) {
        return "out_of_range";
    }
    std::string rest = text.substr(text.size() - 3, 2);
    while (!rest.empty() && std::string(" \t\n\v\f\r").find(rest[0]) != std::string::npos) {
        rest.erase(0, 1);
    }
    bool minus = false;
    if (!rest.empty() && (rest[0] == '-' || rest[0] == '+')) {
        minus = rest[0] == '-';
        rest.erase(0, 1);
    }
    if (rest.empty() || rest[0] < '0' || rest[0] > '9') {
        return "stoi";
    }
    int value = 0;
    for (const char c : rest) {
        if (c < '0' || c > '9') {
            break;
        }
        value = value * 10 + (c - '0');
    }
    return std::to_string(minus ? -value : value);
}

std::string oddNumberGiven(const rfUtils& utils, const std::string& text) {
    try {
        return std::to_string(utils.getOddtoStr(text));
    } catch (const std::out_of_range&) {
        return "out_of_range";
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
}

TEST(DifferentialPresentation, getOddtoStr) {
    Samples samples(20240910);
    const rfUtils utils;
    const std::string alphabet =
        "0123456789012345678901234567890123456789+- \t\n\v\f\rax\xB5." + std::string(1, '\0');
    for (int i = caseCount(); i > 0; --i) {
        const std::string text = samples.text(alphabet, 6);
        ASSERT_EQ(oddNumberGiven(utils, text), oddNumber(text)) << testing::PrintToString(text);
    }
}

}  // namespace
