#include "choices.h"
#include "level.h"
#include "traces.h"

int main(int count, char** arguments) {
    const std::optional<int> unit = chosenUnit(count, arguments);
    if (!unit) {
        return 1;
    }
    const Antenna antenna;
    traceRssiBuffer traces = keepTraces(80);
    printMarker(traces, kCarrierPoint, *unit, antenna);
    std::printf("range   %s\n", rangeHint(-120.0, 10.0, *unit, antenna).c_str());
    return 0;
}
