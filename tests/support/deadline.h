#pragma once

#include <unistd.h>
#include <cstdlib>

/// Ends the program when its scope lasts longer: for calls that might never return. Waits ten times as long where
/// RFUTILS_SHORT_TESTS says that the processor is emulated.
class Deadline {
public:
    explicit Deadline(unsigned seconds = 60) {
        alarm(std::getenv("RFUTILS_SHORT_TESTS") == nullptr ? seconds : 10 * seconds);
    }
    ~Deadline() { alarm(0); }
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;
};
