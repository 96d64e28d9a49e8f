#pragma once

#include <QString>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "analysis/recordings/sweepReader.h"

namespace rfu {

/// A marker as it was asked for: a frequency, or the number of a point.
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

/// Whether a marker names a point by a number that also is a frequency within the bands, in MHz.
bool isAlsoFrequency(const MarkerRequest& request, const FrequencyAxis& axis);

/// Puts the markers on the points of a recording; a frequency gets the nearest one of its band, the
/// lower of two equally near.
/// @param points number of points, also of a recording without frequencies
/// @param file   of the recording, for messages
/// @throw InputError for a marker outside the bands of the recording
std::vector<Marker> placeMarkers(const std::vector<MarkerRequest>& requests,
                                 const FrequencyAxis& axis, std::size_t points,
                                 const QString& file);

/// The markers on a recording whose axis has grown: those by frequency as placeMarkers() puts them,
/// those by number on the point that had it.
/// @param placed where they were
/// @param former of each point the number that it had before
std::vector<Marker> moveMarkers(const std::vector<MarkerRequest>& requests,
                                const std::vector<Marker>& placed, const FrequencyAxis& axis,
                                const std::vector<std::size_t>& former, const QString& file);

}  // namespace rfu
