#include <support/allocations.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

// Any thread allocates.
std::atomic<bool> watching = false;
std::atomic<std::size_t> allocations = 0;
std::atomic<std::size_t> allocatedBytes = 0;

[[maybe_unused]] void* allocate(std::size_t size) noexcept {
    if (watching) {
        ++allocations;
        allocatedBytes += size;
    }
    return std::malloc(size == 0 ? 1 : size);
}

}  // namespace

Allocations::Allocations() {
    allocations = 0;
    allocatedBytes = 0;
    watching = true;
}

Allocations::~Allocations() {
    watching = false;
}

std::size_t Allocations::count() const {
    return allocations;
}

std::size_t Allocations::bytes() const {
    return allocatedBytes;
}

// The thread sanitizer brings its own, by which it knows Qt's calls from ours: nothing is counted there.
#ifndef __SANITIZE_THREAD__

void* operator new(std::size_t size) {
    if (void* memory = allocate(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

#endif
