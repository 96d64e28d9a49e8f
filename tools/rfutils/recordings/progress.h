#pragma once

#include <cstdint>
#include <functional>

namespace rfu::command {

/// Shows how far a recording is read on standard error where that is a terminal, after the first second;
/// the line goes with the last copy. Empty where it is none.
std::function<void(std::int64_t read, std::int64_t all)> progress();

}  // namespace rfu::command
