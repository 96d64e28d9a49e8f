// Numbers that need a row of their own in most tables.
#pragma once

#include <limits>

namespace rfu::test {

inline constexpr double kInf = std::numeric_limits<double>::infinity();
inline constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
inline constexpr int kIntMax = std::numeric_limits<int>::max();
inline constexpr int kIntMin = std::numeric_limits<int>::min();

}  // namespace rfu::test
