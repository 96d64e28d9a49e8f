#pragma once

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <vector>

namespace rfu {

/// The key that a word is meant to be.
struct MeantKey {
    std::size_t index;  // in the format's keys
    bool isSameWord;    // but for the case of its letters; else it is misspelt
};

/// @return nothing for a word that is near to none of the keys or to several
std::optional<MeantKey> meantKey(std::string_view word, const std::vector<std::string_view>& keys);

/// The rule that a key breaks which is not spelled as the loader knows it.
std::string_view ruleOf(const MeantKey& meant);

}  // namespace rfu
