#pragma once

#include <QStringList>
#include <vector>

#include "analysis/recordings/markers.h"

namespace rfu::command {

/// At most traceRssiBuffer::kMarkers of "88.1MHz", "2.4GHz", ... or whole numbers, which are
/// points.
/// @throw Failure on wrong usage
std::vector<MarkerRequest> parseMarkers(const QStringList& names);

}  // namespace rfu::command
