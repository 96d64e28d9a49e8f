#include "analysis/support/words.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace rfu {

namespace {

constexpr int kMaxLength = 30;  // beyond it nothing is near any word

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// @param distance between the two
bool isNear(const QString& wrong, const QString& known, int distance) {
    const bool goesOn = std::min(wrong.size(), known.size()) >= 2 &&
                        (known.startsWith(wrong) || wrong.startsWith(known));
    return goesOn || distance <= (wrong.size() + 2) / 3;
}

}  // namespace

bool isSameWord(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lowered(x) == lowered(y); });
}

std::string withEscapedQuotes(std::string_view text) {
    std::string result;
    for (const char c : text) {
        result.append(c == '"' || c == '\\' ? 1 : 0, '\\').append(1, c);
    }
    return result;
}

int editDistance(QStringView from, QStringView to) {
    std::vector<int> row(static_cast<std::size_t>(to.size()) + 1);
    for (std::size_t i = 0; i < row.size(); ++i) {
        row[i] = static_cast<int>(i);
    }
    for (const QChar character : from) {
        int diagonal = row[0]++;
        for (std::size_t i = 1; i < row.size(); ++i) {
            const bool same = to[static_cast<qsizetype>(i) - 1] == character;
            const int replaced = diagonal + int{!same};
            diagonal = row[i];
            row[i] = std::min({row[i] + 1, row[i - 1] + 1, replaced});
        }
    }
    return row.back();
}

int nearMiss(const QString& wrong, const std::vector<QString>& known) {
    const QString typed = wrong.left(kMaxLength).toLower();
    int nearest = -1;
    int smallest = kMaxLength;
    for (std::size_t i = 0; i < known.size(); ++i) {
        const QString other = known[i].left(kMaxLength).toLower();
        const int distance = editDistance(typed, other);
        if (distance < smallest && isNear(typed, other, distance)) {
            smallest = distance;
            nearest = static_cast<int>(i);
        }
    }
    return nearest;
}

}  // namespace rfu
