#include "analysis/support/singles.h"

#include <QString>
#include <charconv>
#include <limits>

namespace rfu {

double decimalOf(float value) {
    char text[32];
    const auto written = std::to_chars(text, text + sizeof text, value);
    double result = 0.0;
    std::from_chars(text, written.ptr, result);
    return result;
}

std::string textOf(float value) {
    // The shortest text of 500000 is 5e+05, which is hard to read.
    constexpr int kDigits = std::numeric_limits<float>::max_digits10;
    return QString::number(decimalOf(value), 'g', kDigits).toStdString();
}

}  // namespace rfu
