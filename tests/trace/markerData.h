// The content of a marker ring, read through the public interface.
#pragma once

#include <rfUtils/trace/traceRssiBuffer.h>

#include <vector>

inline std::vector<double> markerData(const traceRssiBuffer& buffer, int marker) {
    std::vector<double> data;
    buffer.getDataMarkerPower(data, marker);
    return data;
}

/// The values of one point of all stored traces, oldest first.
inline std::vector<double> pointData(traceRssiBuffer& buffer, int pointIndex) {
    buffer.calcMarkerPower(0, pointIndex);
    return markerData(buffer, 0);
}
