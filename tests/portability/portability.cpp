// Prints the results of every operation over fixed arguments, to be compared between compilers, flags
// and processors. A line is
//
//     KIND operation(arguments) result
//
// with the bits of numbers in hexadecimal. KIND says what other builds may give:
//
//     same    the same bits or text: sums, products, comparisons and conversions
//     libm    1 ulp more or less: logarithms, powers and sines, which C libraries round differently
//
// Every NaN is "nan": its sign and payload depend on the processor.
#include <rfUtils/geo/veltaGEO.h>
#include <rfUtils/presentation/rfUtils.h>
#include <rfUtils/trace/traceRssiBuffer.h>
#include <rfUtils/units/HMath.h>
#include <rfUtils/units/calculateUnit.h>
#include <support/samples.h>

#include <QTemporaryDir>

#include <cinttypes>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <limits>
#include <memory>
#include <random>
#include <string>

using rfu::test::unsignedNan;

namespace {

constexpr int kCases = 400;

/// Arguments computed without rounding, so that they are the same everywhere.
class Arguments {
public:
    double pattern() {
        const std::uint64_t bits = random_();
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    double between(double low, double high) {
        return low + (high - low) * (static_cast<double>(random_() >> 11) * 0x1p-53);
    }

    /// Mostly in the range in use, sometimes any bit pattern.
    double number(double low, double high) {
        return random_() % 8 == 0 ? pattern() : between(low, high);
    }

    int integer(int low, int high) {
        return low + static_cast<int>(random_() % static_cast<std::uint64_t>(high - low + 1));
    }

private:
    std::mt19937_64 random_{20261120};
};

std::string bits(double value) {
    if (std::isnan(value)) {
        return "nan";
    }
    std::uint64_t pattern = 0;
    std::memcpy(&pattern, &value, sizeof value);
    char text[17];
    std::snprintf(text, sizeof text, "%016" PRIx64, pattern);
    return text;
}

std::string bits(float value) {
    if (std::isnan(value)) {
        return "nan";
    }
    std::uint32_t pattern = 0;
    std::memcpy(&pattern, &value, sizeof value);
    char text[9];
    std::snprintf(text, sizeof text, "%08" PRIx32, pattern);
    return text;
}

/// Saturates: converting a larger value is undefined.
float toSingle(double value) {
    constexpr double kMax = std::numeric_limits<float>::max();
    return static_cast<float>(value > kMax ? kMax : value < -kMax ? -kMax : value);
}

void print(const char* kind, const std::string& call, const std::string& result) {
    std::printf("%s %s %s\n", kind, call.c_str(), result.c_str());
}

template <typename... Values>
std::string call(const std::string& operation, Values... values) {
    std::string text = operation + '(';
    const char* separator = "";
    ((text += separator + bits(values), separator = ","), ...);
    return text + ')';
}

std::string text(const QString& value) {
    return unsignedNan(value.toStdString());
}

const char* const kLevelUnits[] = {"dBm", "dBV", "dBmV", "dBuV", "V",  "mV",
                                   "µV",  "W",   "mW",   "µW",   "nW", "none"};
const char* const kFieldUnits[] = {"dBuV/m",  "dBmV/m",  "dBV/m",  "V/m",    "mV/m",
                                   "uV/m",    "W/m^2",   "mW/m^2", "uW/m^2", "W/cm^2",
                                   "dBm/m^2", "dBW/m^2", "dBA/m",  "A/m",    "none"};

void levels(Arguments& arguments) {
    HMath math;
    for (const char* name : kLevelUnits) {
        const QString unit = QString::fromUtf8(name);
        const bool linear = name[0] != 'd';
        for (int i = 0; i < kCases; ++i) {
            const double level = arguments.number(-150.0, 60.0);
            print("same", call(std::string("getdBmToUnit ") + name, level),
                  text(math.getdBmToUnit(unit, level, true)));
            const double value = linear ? arguments.number(0.0, 10.0) : level;
            print(linear ? "libm" : "same", call(std::string("getUnitTodBm ") + name, value),
                  bits(math.getUnitTodBm(unit, value)));
        }
    }
    for (int i = 0; i < kCases; ++i) {
        const double level = arguments.number(-150.0, 60.0);
        const int digits = arguments.integer(-2, 8);
        print("same", call("getDBmToW", level), text(math.getDBmToW(level)));
        print("same", call("convertValUnit " + std::to_string(digits), level),
              text(math.convertValUnit(level, digits, QStringLiteral("dB"))));
        print("same", call("mathRoundOff " + std::to_string(digits), level),
              bits(math.mathRoundOff(level, digits)));
    }
}

void fields(Arguments& arguments) {
    HMath math;
    for (const char* name : kFieldUnits) {
        const QString unit = QString::fromUtf8(name);
        for (int i = 0; i < kCases; ++i) {
            const double level = arguments.number(-150.0, 60.0);
            const double center = arguments.number(0.01, 6000.0);
            const double gain = arguments.number(-20.0, 30.0);
            print("same", call(std::string("getdBmToField ") + name, level, center, gain),
                  text(math.getdBmToField(unit, level, center, gain, true)));
            const double value = arguments.number(0.0, 100.0);
            print("libm", call(std::string("getFieldTodBm ") + name, value, center, gain),
                  bits(math.getFieldTodBm(unit, value, center, gain)));
        }
    }
}

void scales(Arguments& arguments) {
    calculateUnit calculate;
    for (int scale = -1; scale <= 16; ++scale) {
        // Sums with a constant, without the antenna factor's logarithm.
        const bool sum = scale < 4 || scale == 9 || scale == 16;
        const char* const kind = sum ? "same" : "libm";
        const std::string name = std::to_string(scale);
        for (int i = 0; i < kCases; ++i) {
            const double value = arguments.number(-150.0, 60.0);
            const double frequency = arguments.number(0.01, 6000.0);
            const double gain = arguments.number(-20.0, 30.0);
            double result = 0.0;
            calculate.actdBm2OtherScale(value, frequency, scale, gain, result);
            print(kind, call("actdBm2OtherScale " + name, value, frequency, gain), bits(result));
            actOtherScale2dBm(std::fabs(value), frequency, scale, gain, result);
            print(kind, call("actOtherScale2dBm " + name, std::fabs(value), frequency, gain),
                  bits(result));
        }
    }
}

void presentation(Arguments& arguments) {
    rfUtils texts;
    for (int i = 0; i < 2 * kCases; ++i) {
        const double frequency = arguments.number(-10.0, 6000.0);
        print("same", call("makeFrequencyUnit", frequency),
              unsignedNan(texts.makeFrequencyUnit(frequency)));
        const double width = arguments.number(0.0, i % 2 == 0 ? 0.01 : 3000.0);
        print("same", call("convertFreqWidthUnit", width), text(texts.convertFreqWidthUnit(width)));
        const double low = arguments.number(-150.0, 60.0);
        const double high = arguments.number(-150.0, 60.0);
        texts.fCenter = arguments.between(0.01, 6000.0);
        const int type = arguments.integer(-1, 20);
        std::string message = unsignedNan(texts.makeBoundaryMsg(high, low, type));
        for (char& c : message) {
            c = c == '\n' ? ' ' : c;
        }
        print("same", call("makeBoundaryMsg " + std::to_string(type), high, low), message);

        const double degrees = arguments.number(-180.0, 180.0);
        short sign = 0;
        double parts[3] = {};
        rfUtils::convertDmsFromDd(degrees, sign, parts[0], parts[1], parts[2]);
        print("same", call("convertDmsFromDd", degrees),
              std::to_string(sign) + ' ' + bits(parts[0]) + ' ' + bits(parts[1]) + ' ' +
                  bits(parts[2]));
        double back = 0.0;
        rfUtils::convertDdFromDms(sign, parts[0], parts[1], parts[2], back);
        print("same", call("convertDdFromDms", parts[0], parts[1], parts[2]), bits(back));
    }
}

void markers(Arguments& arguments) {
    for (int i = 0; i < kCases; ++i) {
        const int capacity = arguments.integer(0, 40);
        traceRssiBuffer buffer(1, capacity, 1);
        const double first = arguments.between(-120.0, 20.0);
        for (int value = arguments.integer(0, 60); value > 0; --value) {
            buffer.appendMarkerPower(0, value == 1 ? first : arguments.between(-120.0, 20.0));
        }
        double average = 0.0;
        double maximum = 0.0;
        double minimum = 0.0;
        int count = 0;
        buffer.getAverageMarkerPower(0, &average);
        buffer.getMaxMarkerPower(0, &maximum);
        buffer.getMinMarkerPower(0, &minimum);
        buffer.getCountLimitMarkerPower(0, -60.0, &count);
        print("same", call("markers " + std::to_string(i), first),
              bits(average) + ' ' + bits(maximum) + ' ' + bits(minimum) + ' ' +
                  std::to_string(count));
    }
}

void maps(Arguments& arguments) {
    const auto map = std::make_unique<veltaGEO>();
    for (int i = 0; i < 2 * kCases; ++i) {
        const auto easting = toSingle(arguments.number(100000.0, 900000.0));
        const auto northing = toSingle(arguments.number(0.0, 10000000.0));
        const int zone = arguments.integer(-1, 61);
        const int south = arguments.integer(0, 1);
        float latitude = 0.0F;
        float longitude = 0.0F;
        map->utmToLatLng(easting, northing, zone, south, &latitude, &longitude);
        print("libm",
              call("utmToLatLng " + std::to_string(zone) + ' ' + std::to_string(south), easting,
                   northing),
              bits(latitude) + ' ' + bits(longitude));
        const auto degrees = toSingle(arguments.number(-200.0, 200.0));
        print("same", call("LatLngToUTMZone", degrees),
              std::to_string(map->LatLngToUTMZone(45.0F, degrees)));
    }

    const QTemporaryDir folder;
    const std::string path = folder.path().toStdString() + "/grid";
    {
        std::ofstream file(path + ".asc");
        file << "ncols 40\nnrows 20\nxllcorner 0.1\nyllcorner -7.7\ncellsize 0.3\nNODATA_value "
                "-9999\n";
        for (int cell = 0; cell < 800; ++cell) {
            const int digits = arguments.integer(1, 20);
            const double value = arguments.number(-9000.0, 9000.0);
            char number[64];
            std::snprintf(number, sizeof number, "%.*g", digits, value);
            file << number << (cell % 40 == 39 ? '\n' : ' ');
        }
    }
    map->loadASCFile(QString::fromStdString(path));
    print("same", "loadASCFile origin", bits(map->originX) + ' ' + bits(map->originY));
    for (int cell = 0; cell < 800; ++cell) {
        print("same", "loadASCFile " + std::to_string(cell), bits(map->grid[cell / 40][cell % 40]));
    }
}

}  // namespace

int main() {
    Arguments arguments;
    levels(arguments);
    fields(arguments);
    scales(arguments);
    presentation(arguments);
    markers(arguments);
    maps(arguments);
    return 0;
}
