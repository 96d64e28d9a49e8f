// The C library's printf, strtod and strtol in the C locale, whatever the process's locale is.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>

#include <locale.h>

namespace rfu::test {

/// Puts the calling thread into the C locale during its lifetime. Only for restatements: the library has to work
/// without it.
class CLocale {
public:
    CLocale() : before_(uselocale(c())) {}
    ~CLocale() { uselocale(before_); }
    CLocale(const CLocale&) = delete;
    CLocale& operator=(const CLocale&) = delete;

private:
    static locale_t c() {
        static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }

    locale_t before_;
};

inline std::string printed(double value, int decimals) {
    const CLocale scope;
    char text[1024];
    const int length = std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return {text, static_cast<std::size_t>(length)};
}

inline double decimalOf(const std::string& text) {
    const CLocale scope;
    return std::strtod(text.c_str(), nullptr);
}

/// Saturated to 32 bits.
inline std::int32_t integerOf(const std::string& text) {
    const CLocale scope;
    using Limits = std::numeric_limits<std::int32_t>;
    const long value = std::strtol(text.c_str(), nullptr, 10);
    return static_cast<std::int32_t>(std::clamp<long>(value, Limits::min(), Limits::max()));
}

}  // namespace rfu::test
