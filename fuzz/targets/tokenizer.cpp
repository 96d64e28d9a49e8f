// For any line:
// - makeToken() stores the first 1024 tokens of the model, each NUL-terminated, and changes neither
//   the rest of the record, nor a byte beside it, nor the line;
// - the loaders' tokenizer, which compacts in place, gives all tokens of the model.
#include "support/require.h"

#include <rfUtils/geo/detail/tokenizer.h>
#include <rfUtils/geo/veltaGEO.h>
#include <tests/support/mapModel.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

using namespace rfu::test;

namespace {

constexpr std::size_t kMaxTokens = 1024;

struct GuardedRecord {
    char front[64];
    stPaser record;
    char back[64];
};

void checkRecord(const veltaGEO& map, const std::string& line,
                 const std::vector<std::string>& tokens) {
    static GuardedRecord actual;
    static GuardedRecord expected;
    static std::size_t used = kMaxTokens;
    // Only the bytes that the previous run has changed.
    const std::size_t usedBytes =
        offsetof(GuardedRecord, record) + used * sizeof(stPaser::token[0]);
    for (GuardedRecord* guarded : {&actual, &expected}) {
        std::memset(static_cast<void*>(guarded), 0x5A, usedBytes);
        guarded->record.count = -1;
    }
    used = std::min(tokens.size(), kMaxTokens);
    for (std::size_t i = 0; i < used; ++i) {
        std::strcpy(expected.record.token[i], tokens[i].c_str());
    }
    expected.record.count = static_cast<std::int32_t>(used);

    map.makeToken(&actual.record, line.c_str());
    REQUIRE(std::memcmp(&actual, &expected, sizeof actual) == 0);
}

void checkTokenizer(std::string line, const std::vector<std::string>& tokens) {
    rfu::detail::Tokenizer tokenizer(line.data());
    for (const std::string& token : tokens) {
        REQUIRE(tokenizer.next() == token);
    }
    REQUIRE(tokenizer.next().empty());
    REQUIRE(tokenizer.next().empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto map = std::make_unique<veltaGEO>();
    std::string line(reinterpret_cast<const char*>(data), size);
    line.resize(std::min(line.find('\0'), line.size()));
    line.shrink_to_fit();
    const std::string before = line;
    const std::vector<std::string> tokens = tokensOf(line);
    checkRecord(*map, line, tokens);
    REQUIRE(line == before);
    checkTokenizer(line, tokens);
    return 0;
}
