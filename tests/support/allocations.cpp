#include <support/allocations.h>

#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();
bool watching = false;
std::size_t allocated = 0;
std::size_t limit = kUnlimited;

}  // namespace

Allocations::Allocations() : Allocations(kUnlimited) {}

Allocations::Allocations(std::size_t allowed) {
    allocated = 0;
    limit = allowed;
    watching = true;
}

Allocations::~Allocations() {
    watching = false;
}

std::size_t Allocations::count() const {
    return allocated;
}

void* operator new(std::size_t size) {
    if (watching && allocated++ >= limit) {
        throw std::bad_alloc();
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
