#include <rfUtils/presentation/rfUtils.h>

#include <rfUtils/detail/fixedText.h>
#include <rfUtils/detail/saturate.h>

#include <QString>

#include <cmath>
#include <string>

using rfu::detail::FixedText;
using rfu::detail::toInt32;

namespace {

std::string fixedText(double value, int decimals, const char* unit) {
    return std::string(FixedText(value, decimals).view()) += unit;
}

QString shortText(double value, const char* unit) {
    return QString::number(value, 'g', 6) + QLatin1String(unit);
}

}  // namespace

std::string rfUtils::makeFrequencyUnit(double freqMHz) const {
    const double magnitude = std::fabs(freqMHz);
    if (magnitude > 1000.0) {
        return fixedText(freqMHz * 0.001, 9, " GHz");
    }
    if (magnitude > 1.0) {
        return fixedText(freqMHz, 6, " MHz");
    }
    if (magnitude > 0.001) {
        return fixedText(freqMHz * 1000.0, 3, " kHz");
    }
    return std::to_string(toInt32(freqMHz * 1000000.0)) + " Hz";
}

QString rfUtils::convertFreqWidthUnit(double widthMHz) const {
    if (widthMHz > 1000.0) {
        return shortText(widthMHz * 0.001, "GHz");
    }
    if (widthMHz > 1.0) {
        return shortText(widthMHz, "MHz");
    }
    // kHz from 100 Hz on: widths below 1 kHz are read in kHz, frequencies are not.
    if (widthMHz > 0.0001) {
        return shortText(widthMHz * 1000.0, "kHz");
    }
    return shortText(widthMHz * 1000000.0, "Hz");
}

int rfUtils::getOddtoStr(std::string text) const {
    // Of a text that is too short the position wraps beyond its end, which substr refuses.
    return std::stoi(text.substr(text.size() - 3, 2));
}
