#pragma once

#include <cstddef>

/// Counts the calls of operator new in the whole program during its lifetime, and the bytes that they
/// give. One object at a time. Under the thread sanitizer it counts nothing.
class Allocations {
public:
    Allocations();
    ~Allocations();
    Allocations(const Allocations&) = delete;
    Allocations& operator=(const Allocations&) = delete;

    std::size_t count() const;
    std::size_t bytes() const;
};
