#include "choices.h"

int main(int count, char** arguments) {
    const std::optional<int> unit = chosenUnit(count, arguments);
    if (!unit) {
        return 1;
    }
    std::printf("the unit has the code %d\n", *unit);
    return 0;
}
