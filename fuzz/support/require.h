#pragma once

#include <cstdio>
#include <cstdlib>

namespace rfu::fuzz {

[[noreturn]] inline void fail(const char* what, const char* file, int line) {
    std::fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, what);
    std::abort();
}

}  // namespace rfu::fuzz

/// Aborts if a property does not hold; the engine then keeps the input.
#define REQUIRE(condition) \
    ((condition) ? static_cast<void>(0) : rfu::fuzz::fail(#condition, __FILE__, __LINE__))
