#include "analysis/support/numbers.h"

#include <rfUtils/detail/numberPrefix.h>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <system_error>

#include "analysis/support/words.h"

namespace rfu {

namespace {

/// std::from_chars also reads "inf" and "nan".
bool startsLikeNumber(std::string_view text) {
    if (!text.empty() && text[0] == '-') {
        text.remove_prefix(1);
    }
    return !text.empty() && (detail::isDigit(text[0]) || text[0] == '.');
}

/// A unit of frequencies and what is left of it in the settings of receivers, as 88.1M.
struct FrequencyUnit {
    std::string_view name;
    std::string_view suffix;
    double factor;  // of a number of MHz
    double divisor;
};

// clang-format off
// Divisors, because 1000 is exact in binary and 0.001 is not: 100kHz is 0.1 MHz to the bit.
constexpr FrequencyUnit kFrequencyUnits[] = {
    {"GHz", "G", 1000.0, 1.0},
    {"MHz", "M", 1.0,    1.0},
    {"kHz", "k", 1.0,    1000.0},
    {"Hz",  "",  1.0,    1000000.0}};
// clang-format on

/// In any letter case; but a small m stands for milli.
const FrequencyUnit* frequencyUnit(std::string_view text) {
    if (text == "m" || text == "mHz") {
        return nullptr;
    }
    const auto* const found = std::find_if(
        std::begin(kFrequencyUnits), std::end(kFrequencyUnits), [text](const FrequencyUnit& unit) {
            return isSameWord(text, unit.name) || isSameWord(text, unit.suffix);
        });
    return found == std::end(kFrequencyUnits) ? nullptr : found;
}

std::string formatted(double value, std::chars_format format, int precision) {
    std::array<char, 400> buffer;  // the largest double has 309 digits before the point
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format, precision);
    return {buffer.data(), result.ptr};
}

/// A decimal number, and what stands behind it.
struct LeadingNumber {
    double value;
    std::errc error;        // result_out_of_range: value is not known
    std::string_view text;  // from the number on
    std::string_view rest;
};

/// Nothing for a text that begins with no number, but for blanks and a plus sign.
std::optional<LeadingNumber> leadingNumber(std::string_view text) {
    text = withoutPlus(trimmed(text));
    if (!startsLikeNumber(text)) {
        return std::nullopt;
    }
    double value = 0.0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return LeadingNumber{value, result.ec, text,
                         text.substr(static_cast<std::size_t>(result.ptr - text.data()))};
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
    const auto number = leadingNumber(text);
    if (!number || number->error != std::errc()) {
        return std::nullopt;
    }
    return SplitValue{number->value, trimmed(number->rest)};
}

std::optional<double> parseNumber(std::string_view text) {
    return parseNumberOf("", text);
}

std::optional<double> parseNumberOf(std::string_view unit, std::string_view text) {
    const auto quantity = splitValue(text);
    if (!quantity || !(quantity->unit.empty() || quantity->unit == unit)) {
        return std::nullopt;
    }
    return quantity->value;
}

std::optional<double> parseNumberOfAnySize(std::string_view text) {
    const auto number = leadingNumber(text);
    if (!number || !number->rest.empty()) {
        return std::nullopt;
    }
    return number->error == std::errc() ? number->value : detail::decimalPrefix(number->text);
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
    if (quantity->unit.empty()) {
        return quantity->value;
    }
    const FrequencyUnit* const unit = frequencyUnit(quantity->unit);
    return unit == nullptr ? std::nullopt
                           : std::optional(quantity->value * unit->factor / unit->divisor);
}

std::string readableText(double value) {
    constexpr int kDigits = 6;
    constexpr double kSevenDigits = 1e6;
    constexpr double kSixteenDigits = 1e15;
    const double whole = std::round(std::abs(value));
    return whole >= kSevenDigits && whole < kSixteenDigits
               ? fixedText(value, 0)
               : formatted(value, std::chars_format::general, kDigits);
}

std::optional<FrequencyRange> parseFrequencyRange(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos) {
        return std::nullopt;
    }
    const auto low = parseFrequency(text.substr(0, colon));
    const auto high = parseFrequency(text.substr(colon + 1));
    const bool isRange = low && high && *low >= 0.0 && *high > *low && std::isfinite(*high);
    return isRange ? std::optional(FrequencyRange{*low, *high}) : std::nullopt;
}

std::string fixedText(double value, int decimals) {
    return formatted(value, std::chars_format::fixed, decimals);
}

}  // namespace rfu
