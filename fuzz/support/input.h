#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

namespace rfu::fuzz {

/// The bytes of one run, read as the arguments of a sequence of operations. After the last byte all
/// numbers are 0 and all texts empty. Read one argument per statement: the evaluation order of a
/// call's arguments is unspecified, and an input must mean the same with every compiler.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size)
        : bytes_(reinterpret_cast<const char*>(data), size) {}

    bool atEnd() const { return bytes_.empty(); }
    std::string_view rest() const { return bytes_; }

    std::uint8_t byte() { return bits<std::uint8_t>(); }

    /// 0 to count - 1.
    int below(int count) { return byte() % count; }

    template <typename T>
    T bits() {
        T value{};
        const std::size_t taken = std::min(bytes_.size(), sizeof(T));
        if (taken > 0) {
            std::memcpy(&value, bytes_.data(), taken);
            bytes_.remove_prefix(taken);
        }
        return value;
    }

    template <typename T, std::size_t Size>
    const T& pick(const std::array<T, Size>& from) {
        return from[byte() % Size];
    }

    /// Often a small number, so that sizes, indexes and values repeat.
    int integer() {
        const int kind = byte();
        constexpr int kSmall = 240;
        return kind < kSmall ? kind % 16 - 4 : bits<int>();
    }

    /// Often one of a few numbers with special rules.
    double real() {
        using Limits = std::numeric_limits<double>;
        static constexpr std::array<double, 14> kSpecial = {
            -999.0, 999.0, 0.0, -0.0,          Limits::infinity(),   -Limits::infinity(),
            -30.0,  -40.5, 1e6, Limits::max(), Limits::denorm_min(), Limits::quiet_NaN(),
            -999.5, 1500.0};
        const std::size_t kind = byte();
        return kind < 200 ? kSpecial[kind % kSpecial.size()] : bits<double>();
    }

    /// Up to 31 bytes.
    std::string text() {
        const std::size_t wanted = byte() % 32;
        const std::size_t size = std::min(wanted, bytes_.size());
        std::string taken(bytes_.substr(0, size));
        bytes_.remove_prefix(size);
        return taken;
    }

private:
    std::string_view bytes_;
};

/// Bitwise equality; all NaN count as equal.
inline bool same(double a, double b) {
    return (a != a && b != b) || std::memcmp(&a, &b, sizeof a) == 0;
}

}  // namespace rfu::fuzz
