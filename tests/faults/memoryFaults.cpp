#include "memoryFaults.h"

#include <cerrno>
#include <cstddef>
#include <limits>
#include <new>

// The replaced functions: the C library's, or those of a sanitizer, which has to see every block.
#if defined(__SANITIZE_ADDRESS__) || \
    defined(__SANITIZE_THREAD__)  // g++, for which Qt defines __has_feature as 0
#define RFUTILS_SANITIZED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || \
    __has_feature(leak_sanitizer)
#define RFUTILS_SANITIZED
#endif
#endif

#ifdef RFUTILS_SANITIZED
#define RFUTILS_SYSTEM(name) __interceptor_##name
#else
#define RFUTILS_SYSTEM(name) __libc_##name
#endif

extern "C" {
void* RFUTILS_SYSTEM(malloc)(std::size_t size);
void* RFUTILS_SYSTEM(calloc)(std::size_t count, std::size_t size);
void* RFUTILS_SYSTEM(realloc)(void* block, std::size_t size);
void* RFUTILS_SYSTEM(memalign)(std::size_t alignment, std::size_t size);
void RFUTILS_SYSTEM(free)(void* block);
}

namespace {

constexpr long kNever = std::numeric_limits<long>::max();

long heldBlocks = 0;
long allocations = 0;
long firstFailing = kNever;
long lastFailing = 0;
bool hasFailed = false;
int pauses = 0;

/// Whether this allocation fails.
bool fails() {
    if (firstFailing == kNever || pauses > 0) {
        return false;
    }
    ++allocations;
    if (allocations < firstFailing || allocations > lastFailing) {
        return false;
    }
    hasFailed = true;
    errno = ENOMEM;
    return true;
}

void* counted(void* block) {
    heldBlocks += block != nullptr ? 1 : 0;
    return block;
}

}  // namespace

MemoryFaults::MemoryFaults(long number, Kind kind) {
    allocations = 0;
    hasFailed = false;
    lastFailing = kind == Kind::Once ? number : kNever;
    firstFailing = number;
}

MemoryFaults::~MemoryFaults() {
    firstFailing = kNever;
}

bool MemoryFaults::happened() const {
    return hasFailed;
}

long MemoryFaults::held() {
    return heldBlocks;
}

MemoryFaults::Pause::Pause() {
    ++pauses;
}

MemoryFaults::Pause::~Pause() {
    --pauses;
}

extern "C" {

void* malloc(std::size_t size) {
    return fails() ? nullptr : counted(RFUTILS_SYSTEM(malloc)(size));
}

void* calloc(std::size_t count, std::size_t size) {
    return fails() ? nullptr : counted(RFUTILS_SYSTEM(calloc)(count, size));
}

void* realloc(void* block, std::size_t size) {
    if (fails()) {
        return nullptr;
    }
    void* const moved = RFUTILS_SYSTEM(realloc)(block, size);
    heldBlocks +=
        (moved != nullptr ? 1 : 0) - (block != nullptr && (moved != nullptr || size == 0) ? 1 : 0);
    return moved;
}

void* memalign(std::size_t alignment, std::size_t size) {
    return fails() ? nullptr : counted(RFUTILS_SYSTEM(memalign)(alignment, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
    void* const made = memalign(alignment, size);
    if (made == nullptr) {
        return ENOMEM;
    }
    *block = made;
    return 0;
}

void free(void* block) {
    heldBlocks -= block != nullptr ? 1 : 0;
    RFUTILS_SYSTEM(free)(block);
}

}  // extern "C"

// A sanitizer has operators of its own, which do not call malloc.

void* operator new(std::size_t size) {
    void* const block = malloc(size == 0 ? 1 : size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void* operator new[](std::size_t size) {
    return operator new(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return malloc(size == 0 ? 1 : size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return malloc(size == 0 ? 1 : size);
}

void operator delete(void* block) noexcept {
    free(block);
}

void operator delete[](void* block) noexcept {
    free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    free(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    free(block);
}
