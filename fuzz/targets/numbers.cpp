// For any text up to its first NUL the leading decimal number is that of strtod in the C locale, to
// the bit, and the leading integer that of strtol, saturated at 32 bits.
#include "support/input.h"
#include "support/require.h"

#include <rfUtils/detail/numberPrefix.h>
#include <tests/support/cText.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

using namespace rfu::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Exactly as long as the text, so that the sanitizer detects reads behind it.
    const auto bytes = std::make_unique<char[]>(size);
    std::copy(data, data + size, bytes.get());
    const std::string_view text(bytes.get(), size);
    const std::string terminated(text);

    REQUIRE(same(rfu::detail::decimalPrefix(text), rfu::test::decimalOf(terminated)));
    REQUIRE(rfu::detail::integerPrefix(text) == rfu::test::integerOf(terminated));
    return 0;
}
