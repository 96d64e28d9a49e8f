#pragma once

#include <rfUtils/trace/traceRssiBuffer.h>

#include "level.h"

#include <cstdio>
#include <vector>

constexpr int kPoints = 201;        // from 88.3 MHz to 108.3 MHz, 0.1 MHz apart
constexpr int kCarrierPoint = 100;  // 98.3 MHz
constexpr int kTracesKept = 50;

/// Stands for a receiver: noise at -95 dBm, and a carrier that grows by 0.5 dB from sweep to sweep.
inline std::vector<double> receiveSweep(int number) {
    std::vector<double> levels(kPoints, -95.0);
    levels[kCarrierPoint] = -60.0 + 0.5 * number;
    return levels;
}

/// Keeps the most recent sweeps of a receiver that was watched for a while.
inline traceRssiBuffer keepTraces(int sweeps) {
    traceRssiBuffer traces(kTracesKept, kTracesKept, kPoints);
    for (int number = 0; number < sweeps; ++number) {
        std::vector<double> sweep = receiveSweep(number);
        if (number == 60) {  // one sweep was disturbed at the carrier
            sweep[kCarrierPoint] = traceRssiBuffer::kNoMeasurement;
        }
        traces.push_back(sweep);
    }
    return traces;
}

/// Prints the statistics of one point of the kept traces by the marker 0.
inline void printMarker(traceRssiBuffer& traces, int point, int typeCode, const Antenna& antenna) {
    double minimum = 0.0;
    double average = 0.0;
    double maximum = 0.0;
    int loud = 0;
    traces.calcMarkerPower(0, point);
    traces.getMinMarkerPower(0, &minimum);
    traces.getAverageMarkerPower(0, &average);
    traces.getMaxMarkerPower(0, &maximum);
    traces.getCountLimitMarkerPower(0, -30.0, &loud);
    std::printf("minimum  %s\n", levelText(minimum, typeCode, antenna).c_str());
    std::printf("average  %s\n", levelText(average, typeCode, antenna).c_str());
    std::printf("maximum  %s\n", levelText(maximum, typeCode, antenna).c_str());
    std::printf("above -30 dBm in %d of %d traces\n", loud, kTracesKept);
}
