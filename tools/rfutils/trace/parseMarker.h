#pragma once

#include <optional>
#include <string_view>

#include "analysis/recordings/markers.h"

namespace rfu::command {

/// "88.1MHz", "2.4GHz", ... or a whole number from 0 on, which is a point.
std::optional<MarkerRequest> parseMarker(std::string_view text);

}  // namespace rfu::command
