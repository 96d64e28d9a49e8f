#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace rfu {

// Reading and writing of numbers, the same in every locale.

/// Without the blanks around it.
std::string_view trimmed(std::string_view text);

/// Without a leading plus sign, which std::from_chars does not read; "+-1" keeps it.
std::string_view withoutPlus(std::string_view text);

/// A whole text as a finite decimal number: sign, digits with a decimal point, exponent; blanks
/// around it are allowed. Anything else, "inf", "nan", hexadecimal and numbers beyond the range of
/// a double give nothing.
std::optional<double> parseNumber(std::string_view text);

/// The same, where one too large for a double is infinite and one too near to zero is 0.
std::optional<double> parseNumberOfAnySize(std::string_view text);

/// What parseNumber() gives, with or without the one unit behind it.
std::optional<double> parseNumberOf(std::string_view unit, std::string_view text);

/// A whole text as a decimal integer that fits an int, with blanks allowed around it.
std::optional<int> parseInteger(std::string_view text);

/// A number with what follows it: "-30 dBm" gives -30 and "dBm", "5" gives 5 and an empty unit.
struct SplitValue {
    double value;
    std::string_view unit;  // part of the text that was split
};
std::optional<SplitValue> splitValue(std::string_view text);

/// A frequency as "88.1MHz", "2.4 GHz", "100kHz", "5Hz", a bare number of MHz, or as receivers take
/// it: "88.1M", "2.4G", "100k". Letter case does not matter, except that "m" and "mHz" are refused.
/// @return MHz
std::optional<double> parseFrequency(std::string_view text);

/// A range of frequencies.
struct FrequencyRange {
    double low;   // MHz
    double high;  // MHz
};

/// "88MHz:108MHz", two frequencies as parseFrequency() reads them, neither below 0; the second is
/// higher.
std::optional<FrequencyRange> parseFrequencyRange(std::string_view text);

/// The shortest text that reads back to the same number.
class ShortestText {
public:
    explicit ShortestText(double value) {
        size_ = static_cast<std::size_t>(
            std::to_chars(buffer_.data(), buffer_.data() + buffer_.size(), value).ptr -
            buffer_.data());
    }
    std::string_view view() const { return {buffer_.data(), size_}; }

private:
    std::array<char, 32> buffer_;  // the longest is "-2.2250738585072014e-308"
    std::size_t size_;
};

inline std::string shortest(double value) {
    return std::string(ShortestText(value).view());
}

/// A number for people: six significant digits, all digits of a whole number of up to 15, a power of
/// ten beyond them and below 0.0001.
std::string readableText(double value);

/// "88.1 MHz"
inline std::string megahertzText(double frequency) {
    return std::string(ShortestText(frequency).view()) + " MHz";
}

/// A number with a fixed count of decimals, rounded to nearest, ties to even.
std::string fixedText(double value, int decimals);

}  // namespace rfu
