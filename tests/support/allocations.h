#pragma once

#include <cstddef>

/// Watches operator new of the whole program while it lives; one at a time.
class Allocations {
public:
    Allocations();
    ~Allocations();
    Allocations(const Allocations&) = delete;
    Allocations& operator=(const Allocations&) = delete;

    std::size_t count() const;
};
