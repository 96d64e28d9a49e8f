#include "analysis/support/numbers.h"

#include <rfUtils/detail/numberPrefix.h>

namespace rfu {

namespace {

/// std::from_chars also reads "inf" and "nan".
bool startsLikeNumber(std::string_view text) {
    if (!text.empty() && text[0] == '-') {
        text.remove_prefix(1);
    }
    return !text.empty() && (detail::isDigit(text[0]) || text[0] == '.');
}

}  // namespace

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && detail::isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && detail::isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::string_view withoutPlus(std::string_view text) {
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') {
        text.remove_prefix(1);
    }
    return text;
}

std::optional<SplitValue> splitValue(std::string_view text) {
    text = withoutPlus(trimmed(text));
    if (!startsLikeNumber(text)) {
        return std::nullopt;
    }
    double value = 0.0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc()) {
        return std::nullopt;
    }
    return SplitValue{value,
                      trimmed(text.substr(static_cast<std::size_t>(result.ptr - text.data())))};
}

std::optional<double> parseNumber(std::string_view text) {
    const auto quantity = splitValue(text);
    if (!quantity || !quantity->unit.empty()) {
        return std::nullopt;
    }
    return quantity->value;
}

std::optional<int> parseInteger(std::string_view text) {
    text = withoutPlus(trimmed(text));
    int value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

std::optional<double> parseFrequency(std::string_view text) {
    const auto quantity = splitValue(text);
    if (!quantity) {
        return std::nullopt;
    }
    // Divisions, because 1000 is exact in binary and 0.001 is not: 100kHz is 0.1 MHz to the bit.
    const std::string_view unit = quantity->unit;
    if (unit.empty() || unit == "MHz") {
        return quantity->value;
    }
    if (unit == "GHz") {
        return quantity->value * 1000.0;
    }
    if (unit == "kHz") {
        return quantity->value / 1000.0;
    }
    if (unit == "Hz") {
        return quantity->value / 1000000.0;
    }
    return std::nullopt;
}

std::string fixedText(double value, int decimals) {
    std::array<char, 400> buffer;  // the largest double has 309 digits before the point
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, decimals);
    return {buffer.data(), result.ptr};
}

}  // namespace rfu
