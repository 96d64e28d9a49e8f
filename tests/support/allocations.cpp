#include <support/allocations.h>

#include <cstdlib>
#include <new>

namespace {

bool watching = false;
std::size_t allocations = 0;
std::size_t allocatedBytes = 0;

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

void* operator new(std::size_t size) {
    if (watching) {
        ++allocations;
        allocatedBytes += size;
    }
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
