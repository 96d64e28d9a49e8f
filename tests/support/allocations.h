#pragma once

#include <cstddef>

/// Watches operator new of the whole program while it lives; one at a time.
class Allocations {
public:
    Allocations();
    /// After `allowed` allocations every further one throws std::bad_alloc.
    explicit Allocations(std::size_t allowed);
    ~Allocations();
    Allocations(const Allocations&) = delete;
    Allocations& operator=(const Allocations&) = delete;

    std::size_t count() const;
};
