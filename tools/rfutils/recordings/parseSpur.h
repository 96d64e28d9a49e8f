#pragma once

#include <optional>
#include <string_view>

#include "analysis/recordings/spurs.h"

namespace rfu::command {

/// "98.3MHz:50kHz", a middle and a width, or "hops:50kHz".
std::optional<Spur> parseSpur(std::string_view text);

}  // namespace rfu::command
