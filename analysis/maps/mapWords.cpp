#include "analysis/maps/mapWords.h"

#include <QString>
#include <string>

#include "analysis/maps/mapRules.h"
#include "analysis/support/words.h"

namespace rfu {

namespace {

/// Other words for a key.
struct OtherWord {
    std::string_view word;
    std::string_view key;
};

// clang-format off
constexpr OtherWord kOtherWords[] = {
    {"NODATA",       "NODATA_value"},
    {"NODATA_value", "NODATA"},
    {"xllcentre",    "xllcenter"},
    {"yllcentre",    "yllcenter"}};
// clang-format on

/// The letters of a word, all small: people write cell_size and NoDataValue.
QString folded(std::string_view word) {
    QString letters;
    for (const char c : word) {
        if (c != '_' && c != '-' && c != '.') {
            letters += QChar(QLatin1Char(c)).toLower();
        }
    }
    return letters;
}

constexpr int kMinLength = 5;  // of keys that one letter may be wrong in

int distance(const QString& word, std::string_view key) {
    const QString letters = folded(key);
    return word == letters ? 0 : letters.size() < kMinLength ? 2 : editDistance(word, letters);
}

}  // namespace

std::optional<MeantKey> meantKey(std::string_view word, const std::vector<std::string_view>& keys) {
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (isSameWord(word, keys[i])) {
            return MeantKey{i, true};
        }
    }
    const QString letters = folded(word);
    for (const OtherWord& other : kOtherWords) {
        for (std::size_t i = 0; i < keys.size(); ++i) {
            if (letters == folded(other.word) && keys[i] == other.key) {
                return MeantKey{i, false};
            }
        }
    }
    std::optional<MeantKey> nearest;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (distance(letters, keys[i]) <= 1) {
            if (nearest) {
                return std::nullopt;
            }
            nearest = MeantKey{i, false};
        }
    }
    return nearest;
}

std::string_view ruleOf(const MeantKey& meant) {
    return (meant.isSameWord ? map_rules::kKeyCase : map_rules::kKeyUnknown).name;
}

}  // namespace rfu
