#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <string>
#include <vector>

#include "trace/sweepReader.h"

/// A marker as the user names it: a frequency, or the number of a point.
struct MarkerRequest {
    std::string name;
    std::optional<double> frequency;  // MHz
    std::optional<int> point;         // counted from 0
};

/// A marker on a point of the recording.
struct Marker {
    std::string name;
    int point;
};

/// At most traceRssiBuffer::kMarkers of "88.1MHz", "2.4GHz", ... or whole numbers, which are
/// points.
/// @throw Failure on wrong usage
std::vector<MarkerRequest> parseMarkers(const QStringList& names);

/// Puts the markers on the points of a recording; a frequency gets the nearest one, the lower of
/// two equally near.
/// @param points number of points, also of a recording without frequencies
/// @throw Failure for a marker outside the recording
std::vector<Marker> placeMarkers(const std::vector<MarkerRequest>& requests,
                                 const SweepReader& recording, std::size_t points);
