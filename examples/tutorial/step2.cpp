#include "choices.h"
#include "level.h"

int main(int count, char** arguments) {
    const std::optional<int> unit = chosenUnit(count, arguments);
    if (!unit) {
        return 1;
    }
    const Antenna antenna;
    std::printf("level  %s\n", levelText(-47.5, *unit, antenna).c_str());
    std::printf("range %s\n", rangeHint(-120.0, 10.0, *unit, antenna).c_str());
    return 0;
}
