#pragma once

#include <unistd.h>
#include <cstdlib>

/// Ends the test program when the scope lasts longer: for calls that could wait or read for ever. Ten times
/// as patient where RFUTILS_SHORT_TESTS says that the processor is emulated.
class Deadline {
public:
    explicit Deadline(unsigned seconds = 60) {
        alarm(std::getenv("RFUTILS_SHORT_TESTS") == nullptr ? seconds : 10 * seconds);
    }
    ~Deadline() { alarm(0); }
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;
};
