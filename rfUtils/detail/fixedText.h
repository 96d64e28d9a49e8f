// Private to the library: not installed, may change in any release.
#pragma once

#include <rfUtils/detail/exactDecimal.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <string_view>

namespace rfu::detail {

/// The text that C's printf gives for "%.<decimals>f", with a decimal point in every locale.
/// Exact ties round to even (0.125 with two decimals is "0.12"), unlike QString::setNum, which
/// rounds them away from zero. Infinities and NaN read "inf", "-inf", "nan", "-nan".
class FixedText {
public:
    static constexpr int kMaxDecimals = kMaxExactDecimals;
    /// Sign, the 309 digits of the largest doubles, point, decimals.
    static constexpr std::size_t kMaxLength = 1 + 309 + 1 + kMaxDecimals;

    /// @param decimals clamped to 0 to kMaxDecimals
    FixedText(double value, int decimals) noexcept {
        const int used = std::clamp(decimals, 0, kMaxDecimals);
        char* const end = buffer_.data() + buffer_.size();
        if (const char* const exact = writeExactDecimal(end, value, used, Ties::ToEven)) {
            text_ = {exact, static_cast<std::size_t>(end - exact)};
            return;
        }
        const auto result =
            std::to_chars(buffer_.data(), end, value, std::chars_format::fixed, used);
        text_ = {buffer_.data(), static_cast<std::size_t>(result.ptr - buffer_.data())};
    }
    FixedText(const FixedText&) = delete;
    FixedText& operator=(const FixedText&) = delete;

    std::string_view view() const noexcept { return text_; }

private:
    std::array<char, kMaxLength> buffer_;
    std::string_view text_;  // of buffer_
};

}  // namespace rfu::detail
