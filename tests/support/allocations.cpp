#include <support/allocations.h>

#include <cstdlib>
#include <new>

namespace {

bool watching = false;
std::size_t allocated = 0;

}  // namespace

Allocations::Allocations() {
    allocated = 0;
    watching = true;
}

Allocations::~Allocations() {
    watching = false;
}

std::size_t Allocations::count() const {
    return allocated;
}

void* operator new(std::size_t size) {
    allocated += watching ? 1 : 0;
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
