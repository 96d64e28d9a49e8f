#include "support/guardedMap.h"

#include "support/require.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>
#include <type_traits>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

namespace rfu::fuzz {

using namespace rfu::test;

namespace {

constexpr char kUntouched = 0x5A;
constexpr std::size_t kCells = std::extent_v<decltype(veltaGEO::grid), 1>;
constexpr std::size_t kRowBytes = kCells * sizeof(float);

std::size_t pageSize() {
    static const auto size = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return size;
}

std::size_t wholePages(std::size_t bytes) {
    return (bytes + pageSize() - 1) / pageSize() * pageSize();
}

void protect(void* begin, std::size_t size, int protection) {
    REQUIRE(mprotect(begin, size, protection) == 0);
}

bool isUntouched(const void* bytes, std::size_t size) {
    const char* const begin = static_cast<const char*>(bytes);
    return size == 0 || (*begin == kUntouched && std::memcmp(begin, begin + 1, size - 1) == 0);
}

bool sameBits(const std::vector<float>& a, const std::vector<float>& b) {
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0);
}

}  // namespace

bool sameCells(const Rows& a, const Rows& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
        return x.first == y.first && sameBits(x.second, y.second);
    });
}

GuardedMap::GuardedMap() {
    const std::size_t front = wholePages(kMapFieldBytes);
    const std::size_t back = wholePages(sizeof(veltaGEO) - kMapFieldBytes);
    const std::size_t size = pageSize() + front + back + pageSize();
    void* const memory = mmap(nullptr, size, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    REQUIRE(memory != MAP_FAILED);
    std::memset(memory, kUntouched, size);
    char* const begin = static_cast<char*>(memory);
    protect(begin, pageSize(), PROT_NONE);
    protect(begin + size - pageSize(), pageSize(), PROT_NONE);

    frontGuard_ = begin + pageSize();
    frontGuardSize_ = front - kMapFieldBytes;
    map_ = new (frontGuard_ + frontGuardSize_) veltaGEO;
    backGuard_ = reinterpret_cast<char*>(map_ + 1);
    backGuardSize_ = static_cast<std::size_t>(begin + size - pageSize() - backGuard_);

    std::memset(map_->grid, kUntouched, sizeof(map_->grid));
    if (kRowBytes % pageSize() == 0) {
        protect(map_->grid, sizeof(map_->grid), PROT_READ);
    }
}

void GuardedMap::open(const Rows& writable) {
    opened_ = writable;
    allow(PROT_READ | PROT_WRITE);
    resetFields(*map_);
}

Rows GuardedMap::take() {
    map_->errMsg.clear();  // leak checkers do not search mapped memory
    REQUIRE(isUntouched(frontGuard_, frontGuardSize_));
    REQUIRE(isUntouched(backGuard_, backGuardSize_));
    Rows cells;
    for (const auto& [row, expected] : opened_) {
        float* const begin = map_->grid[row];
        float* const end = begin + expected.size();
        REQUIRE(isUntouched(end, (kCells - expected.size()) * sizeof(float)));
        cells[row].assign(begin, end);
        std::memset(begin, kUntouched, expected.size() * sizeof(float));
    }
    allow(PROT_READ);
    return cells;
}

/// Sets the protection of the opened rows, with one call for adjacent ones. Where a page holds
/// several rows, all stay writable.
void GuardedMap::allow(int protection) {
    if (kRowBytes % pageSize() != 0) {
        return;
    }
    for (auto row = opened_.begin(); row != opened_.end();) {
        const int first = row->first;
        int behind = first;
        while (row != opened_.end() && row->first == behind) {
            ++behind;
            ++row;
        }
        protect(map_->grid[first], static_cast<std::size_t>(behind - first) * kRowBytes,
                protection);
    }
}

}  // namespace rfu::fuzz
