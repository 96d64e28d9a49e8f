// The rules of the unit conversions, one after the other, without a table.
#pragma once

#include <support/cText.h>

#include <QString>

#include <cmath>
#include <cstddef>
#include <string>

namespace rfu::test {

/// What a conversion shows, and the unit that it leaves behind.
struct Shown {
    std::string text;
    std::string unit;
    bool stored;  ///< whether the unit was stored and its signal emitted
};

/// What the text would be with the unit's name behind it, if that is wanted.
inline Shown shown(const std::string& number, const std::string& unit, bool withUnit) {
    return {withUnit ? number + " " + unit : number, unit, true};
}

inline std::string qtFixed(double value, int decimals) {
    return QString().setNum(value, 'f', decimals).toStdString();
}

/// Toward zero, within 32 bits; NaN is 0.
inline double truncated(double value) {
    if (std::isnan(value)) {
        return 0.0;
    }
    if (value > 2147483647.0) {
        return 2147483647.0;
    }
    if (value < -2147483648.0) {
        return -2147483648.0;
    }
    return std::trunc(value) + 0.0;  // an integer has no negative zero
}

inline double roundedOff(double value, int digits) {
    for (int i = 0; i < digits; ++i) {
        value = value * 10.0;
    }
    value = truncated(value);
    for (int i = 0; i < digits; ++i) {
        value = value * 0.1;
    }
    return value;
}

inline Shown voltText(double dBm, bool withUnit) {
    const double level = (dBm + 46.9897) * 0.05;
    const double millivolts = std::exp(level * 2.302585092994046);
    if (!(millivolts >= 10.0)) {
        double x = std::exp((level + 3) * 2.302585092994046);
        if (x >= 10.0) {
            return shown(printed(x * 0.001, 2), "mV", withUnit);
        }
        x = std::exp((level + 6) * 2.302585092994046);
        if (x >= 10.0) {
            return shown(printed(x * 0.001, 2), "\xC2\xB5V", withUnit);
        }
        x = std::exp((level + 9) * 2.302585092994046);
        if (x >= 10.0) {
            return shown(printed(x * 0.001, 2), "nV", withUnit);
        }
        x = std::exp((level + 12) * 2.302585092994046);
        if (x >= 10.0) {
            return shown(printed(x * 0.001, 2), "pV", withUnit);
        }
        x = std::exp((level + 15) * 2.302585092994046);
        if (x >= 10.0) {
            return shown(printed(x * 0.001, 2), "fV", withUnit);
        }
    }
    double volts = millivolts * 0.001;
    if (millivolts > 100000.0) {
        volts = volts * 0.001;
    }
    return shown(printed(volts, 2), "V", withUnit);
}

inline Shown wattText(double dBm, bool withUnit) {
    const double level = (dBm - 30.0) * 0.1;
    const double watts = std::exp(level * 2.302585092994046);
    if (!(watts >= 0.01)) {
        const char* const names[] = {"mW", "\xC2\xB5W", "nW", "pW", "fW", "aW", "zW", "yW"};
        for (int i = 0; i < 8; ++i) {
            const double x = std::exp((level + 3 * (i + 1)) * 2.302585092994046);
            if (x >= 0.01) {
                return shown(printed(x, 2), names[i], withUnit);
            }
        }
    }
    if (watts >= 1e6) {
        return shown(printed(watts * 1e-6, 2), "W", withUnit);
    }
    if (watts >= 1000.0) {
        return shown(printed(watts * 0.001, 2), "W", withUnit);
    }
    return shown(printed(watts, 2), "W", withUnit);
}

inline std::string bareWattText(double dBm) {
    const double level = (dBm - 30.0) * 0.1;
    const double watts = std::exp(level * 2.302585092994046);
    if (watts < 0.01) {
        const std::string letters = "munpfazy";
        for (int i = 0; i < 8; ++i) {
            const double x = std::exp((level + 3 * (i + 1)) * 2.302585092994046);
            if (x >= 0.01) {
                return printed(x, 2) + " " + letters[static_cast<std::size_t>(i)];
            }
        }
    }
    if (watts >= 1e6) {
        return printed(watts * 1e-6, 2) + " M";
    }
    if (watts >= 1000.0) {
        return printed(watts * 0.001, 2) + " k";
    }
    return printed(watts, 2) + " ";
}

/// The number of a level in a unit that levels are shown in, with the antenna correction k.
inline double numberIn(const std::string& unit, double p, double k) {
    if (unit == "dBm") {
        return p;
    }
    if (unit == "dBV") {
        return p - 13.0103;
    }
    if (unit == "dBmV") {
        return p + 46.9897;
    }
    if (unit == "dBuV") {
        return p + 106.9897;
    }
    if (unit == "V") {
        return std::exp((p + 46.9897) * 0.1151292546497023) * 0.001;
    }
    if (unit == "W") {
        return std::exp((p - 30.0) * 0.2302585092994046);
    }
    if (unit == "dBuV/m") {
        return p + 107.0 + k;
    }
    if (unit == "dBmV/m") {
        return p + 47.0 + k;
    }
    if (unit == "dBV/m") {
        return p - 13.0 + k;
    }
    if (unit == "V/m") {
        return std::exp((p - 13.0 + k) * 0.1151292546497023);
    }
    if (unit == "W/m^2") {
        return std::exp((p - 13.0 + k) * 0.2302585092994046) * 0.0026525823848649226;
    }
    if (unit == "dBm/m^2") {
        return 10.0 * std::log10(numberIn("W/m^2", p, k)) + 30.0;
    }
    if (unit == "dBW/m^2") {
        return p - 38.75999999999999 + k;
    }
    if (unit == "A/m") {
        return std::exp((p + 107.0 + k) * 0.1151292546497023) * 2.652519893899204e-09;
    }
    if (unit == "dBA/m") {
        return p - 64.53 + k;
    }
    return std::exp((p - 13.0 + k) * 0.2302585092994046) * 2.6525823848649226e-07;  // W/cm^2
}

inline Shown levelText(const std::string& unit, double dBm, bool withUnit) {
    if (unit == "V") {
        return voltText(dBm, withUnit);
    }
    if (unit == "W") {
        return wattText(dBm, withUnit);
    }
    const bool isTaken = unit == "dBV" || unit == "dBmV" || unit == "dBuV";
    const std::string shownIn = isTaken ? unit : "dBm";
    return shown(qtFixed(numberIn(shownIn, dBm, 0.0), 1), shownIn, withUnit);
}

/// The text of a linear field value. Zero leaves everything as it is, unit and signal included.
inline Shown prefixedText(const std::string& unit, float value, bool withUnit) {
    float sign = 1.0F;
    if (value < 0.0F) {
        sign = -1.0F;
        value = -value;
    }
    if (value == 0.0F) {
        return {"", "", false};
    }
    const double wide = value;
    if (wide >= 0.01) {
        if (wide >= 1e9) {
            return shown(printed(sign * value * 1e-9F, 1), "G" + unit, withUnit);
        }
        if (wide >= 1e6) {
            return shown(printed(sign * value * 1e-6F, 1), "M" + unit, withUnit);
        }
        if (wide >= 1000.0) {
            return shown(printed(sign * value * 0.001F, 2), "k" + unit, withUnit);
        }
        return shown(printed(sign * value, 2), unit, withUnit);
    }
    const auto small = [&](double factor, const char* prefix) {
        return shown(printed(sign * static_cast<float>(wide * factor), 2), prefix + unit, withUnit);
    };
    if (wide >= 1e-5) {
        return small(1000.0, "m");
    }
    if (wide >= 1e-8) {
        return small(1e6, "u");
    }
    if (wide >= 1e-11) {
        return small(1e9, "n");
    }
    if (wide >= 1e-14) {
        return small(1e12, "p");
    }
    if (wide >= 1e-17) {
        return small(1e15, "f");
    }
    if (wide >= 1e-20) {
        return small(1e18, "a");
    }
    if (wide >= 1e-23) {
        return small(1e21, "z");
    }
    if (wide >= 1e-26) {
        return small(1e24, "y");
    }
    return shown("", "", withUnit);
}

inline Shown fieldText(const std::string& unit, double p, double fCenter, double fGain,
                       bool withUnit) {
    const double k = 20.0 * std::log10(fCenter) + (-29.8 - fGain);
    if (unit == "V/m" || unit == "W/m^2" || unit == "A/m" || unit == "W/cm^2") {
        return prefixedText(unit, static_cast<float>(numberIn(unit, p, k)), withUnit);
    }
    const bool isTaken = unit == "dBuV/m" || unit == "dBmV/m" || unit == "dBV/m" ||
                         unit == "dBm/m^2" || unit == "dBW/m^2" || unit == "dBA/m";
    return shown(qtFixed(isTaken ? numberIn(unit, p, k) : 0.0, 2), unit, withUnit);
}

inline double dBmOfVolt(const std::string& unit, double value) {
    double millivolts = value;
    if (unit == "V") {
        millivolts = value * 1000.0;
    } else if (unit == "\xC2\xB5V") {
        millivolts = value * 0.001;
    } else if (unit == "nV") {
        millivolts = value * 1e-06;
    } else if (unit == "pV") {
        millivolts = value * 1e-09;
    } else if (unit != "mV") {
        return 0.0;
    }
    return roundedOff(20.0 * std::log10(millivolts) - 46.9897, 3);
}

inline double dBmOfWatt(const std::string& unit, double value) {
    double watts = value;
    if (unit == "mW") {
        watts = value * 0.001;
    } else if (unit == "\xC2\xB5W") {
        watts = value * 1e-06;
    } else if (unit == "nW") {
        watts = value * 1e-09;
    } else if (unit == "pW") {
        watts = value * 1e-12;
    } else if (unit != "W") {
        return 0.0;
    }
    return roundedOff(10.0 * std::log10(watts) + 30.0, 3);
}

inline double dBmOfUnit(const std::string& unit, double value) {
    if (unit == "dBm") {
        return value;
    }
    if (unit == "dBV") {
        return value == 87.0 ? 100.0 : roundedOff(value + 13.0103, 3);
    }
    if (unit == "dBmV") {
        return value == 147.0 ? 100.0 : roundedOff(value - 46.9897, 3);
    }
    if (unit == "dBuV") {
        return value == 207.0 ? 100.0 : roundedOff(value - 106.9897, 3);
    }
    if (unit == "V" || unit == "mV" || unit == "\xC2\xB5V" || unit == "nV" || unit == "pV") {
        return dBmOfVolt(unit, value);
    }
    if (unit == "W" || unit == "mW" || unit == "\xC2\xB5W" || unit == "nW" || unit == "pW") {
        return dBmOfWatt(unit, value);
    }
    return -9999999.9;
}

inline double voltPerMetre(const std::string& unit, double value) {
    if (unit == "V/m") {
        return value;
    }
    if (unit == "mV/m") {
        return value * 0.001;
    }
    if (unit == "uV/m") {
        return value * 1e-06;
    }
    if (unit == "nV/m") {
        return value * 1e-09;
    }
    return unit == "pV/m" ? value * 1e-12 : 0.0;
}

inline double wattPerSquareMetre(const std::string& unit, double value) {
    if (unit == "W/m^2") {
        return value;
    }
    if (unit == "mW/m^2") {
        return value * 0.001;
    }
    if (unit == "uW/m^2") {
        return value * 1e-06;
    }
    if (unit == "nW/m^2") {
        return value * 1e-09;
    }
    return unit == "pW/m^2" ? value * 1e-12 : 0.0;
}

inline double dBmOfField(const std::string& unit, double v, double fCenter, double g) {
    const double d = 20.0 * std::log10(fCenter);
    if (unit == "dBuV/m") {
        return v - 77.2 + g - d;
    }
    if (unit == "dBmV/m") {
        return v - 17.2 + g - d;
    }
    if (unit == "dBV/m") {
        return v + 42.8 + g - d;
    }
    if (unit == "V/m" || unit == "mV/m" || unit == "uV/m" || unit == "nV/m" || unit == "pV/m") {
        return 20.0 * std::log10(voltPerMetre(unit, v)) + (g + 42.8 - d);
    }
    if (unit == "W/m^2" || unit == "mW/m^2" || unit == "uW/m^2" || unit == "nW/m^2" ||
        unit == "pW/m^2") {
        return 10.0 * std::log10(376.99111843077515 * wattPerSquareMetre(unit, v)) + (g + 42.8 - d);
    }
    if (unit == "dBm/m^2") {
        return v + 38.56331118741759 + g - d;
    }
    if (unit == "dBW/m^2") {
        return v + 68.55999999999999 + g - d;
    }
    if (unit == "A/m") {
        return 20.0 * std::log10(v * 377000000.0) + (g - 77.2 - d);
    }
    if (unit == "dBA/m") {
        return v + 94.33000000000001 + g - d;
    }
    if (unit == "w/cm^2") {
        return 10.0 * std::log10(v * 3769911.1843077512) + (g + 42.8 - d);
    }
    return -9999999.9;
}

}  // namespace rfu::test
