#include "analysis/support/decimals.h"

#include <rfUtils/detail/numberPrefix.h>
#include <boost/multiprecision/cpp_int.hpp>
#include <cstddef>
#include <cstdlib>

#include "analysis/support/numbers.h"

namespace rfu {

namespace {

using boost::multiprecision::cpp_int;

/// digits * 10^power
struct Decimal {
    cpp_int digits;
    int power;
};

constexpr int kMaxPower = 400;  // all numbers that a double holds, and bounded work

std::optional<Decimal> decimalOf(std::string_view text) {
    if (!parseNumber(text)) {
        return std::nullopt;
    }
    text = withoutPlus(trimmed(text));
    const bool isNegative = text.front() == '-';
    text.remove_prefix(isNegative ? 1 : 0);
    std::string digits;
    std::size_t at = 0;
    std::size_t decimals = 0;
    for (bool isBehindPoint = false; at < text.size(); ++at) {
        if (detail::isDigit(text[at])) {
            digits += text[at];
            decimals += isBehindPoint ? 1 : 0;
        } else if (text[at] == '.') {
            isBehindPoint = true;
        } else {
            break;
        }
    }
    const auto exponent = at < text.size() ? parseInteger(withoutPlus(text.substr(at + 1))) : 0;
    if (!exponent || std::abs(static_cast<long long>(*exponent)) > kMaxPower ||
        digits.size() > kMaxPower) {
        return std::nullopt;
    }
    cpp_int number = 0;
    for (const char digit : digits) {
        number = number * 10 + (digit - '0');
    }
    return Decimal{isNegative ? -number : number, *exponent - static_cast<int>(decimals)};
}

/// Gives both the smaller power of ten.
void align(Decimal& a, Decimal& b) {
    for (Decimal* const number : {&a, &b}) {
        const int other = number == &a ? b.power : a.power;
        for (; number->power > other; --number->power) {
            number->digits *= 10;
        }
    }
}

/// Of a number from 0 on; cpp_int's own text has the separators of the locale.
std::string digitsOf(cpp_int number) {
    std::string digits;
    do {
        digits += static_cast<char>('0' + static_cast<int>(number % 10));
        number /= 10;
    } while (number != 0);
    return {digits.rbegin(), digits.rend()};
}

std::string textOf(const Decimal& number) {
    std::string digits = digitsOf(number.digits < 0 ? cpp_int(-number.digits) : number.digits);
    const auto decimals = static_cast<std::size_t>(number.power < 0 ? -number.power : 0);
    digits.append(static_cast<std::size_t>(number.power > 0 ? number.power : 0), '0');
    if (digits.size() <= decimals) {
        digits.insert(0, decimals + 1 - digits.size(), '0');
    }
    std::string text = digits.substr(0, digits.size() - decimals);
    std::string fraction = digits.substr(text.size());
    fraction.erase(fraction.find_last_not_of('0') + 1);
    text += fraction.empty() ? "" : '.' + fraction;
    return (number.digits < 0 ? "-" : "") + text;
}

}  // namespace

std::optional<std::string> minusHalf(std::string_view value, std::string_view whole) {
    auto number = decimalOf(value);
    auto half = decimalOf(whole);
    if (!number || !half) {
        return std::nullopt;
    }
    half->digits *= 5;  // times 5, by 10
    --half->power;
    align(*number, *half);
    number->digits -= half->digits;
    return number->digits == 0 ? "0" : textOf(*number);
}

bool isSameDecimal(std::string_view a, std::string_view b) {
    auto x = decimalOf(a);
    auto y = decimalOf(b);
    if (!x || !y) {
        return false;
    }
    align(*x, *y);
    return x->digits == y->digits;
}

}  // namespace rfu
