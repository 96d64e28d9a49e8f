#pragma once

#include <unistd.h>

/// Ends the test program when the scope lasts longer: for calls that could wait or read for ever.
class Deadline {
public:
    explicit Deadline(unsigned seconds = 60) { alarm(seconds); }
    ~Deadline() { alarm(0); }
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;
};
